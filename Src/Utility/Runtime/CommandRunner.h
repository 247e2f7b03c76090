#ifndef UTILITY_RUNTIME_COMMANDRUNNER_H
#define UTILITY_RUNTIME_COMMANDRUNNER_H

/** @file
 * Runs a shell command in the background and notes its start and its end in the log. */

#include <pthread.h>

#include "../UtilityExport.h"

/** Starts `command` with the shell (`sh -c`) and returns at once, always 1. How the command ends is not
 * reported.
 *
 * `command` is NUL-terminated and must not be null; an empty one is given to the shell as well. `mutex` is
 * not used.
 *
 * The log of the day gets the command with " start!", then the same with " start! End!" before this returns,
 * **and that line once more when the command has ended**. The last-error message is set to the same texts, so
 * that after the call it ends in " start! End!", whether the log is switched on or not. Where no process can
 * be made, "error in fork!" goes to the error log and "error in fork! End!" to the ordinary one, and the
 * latter is the last-error message.
 *
 * The command is run by a grandchild of the caller, which waits for it, writes the last line and ends with
 * _exit; the child in between ends at once and is waited for. So no zombie is left to the caller (the
 * grandchild falls to init, or to what stands for it in a container), and a handler of SIGCHLD sees one child
 * end. Neither process goes back into the caller's code, runs its exit or signal handlers, or writes what the
 * caller has in its buffers (standard output, where the line goes when the log cannot be written, is flushed
 * first). Open files, environment, directory and ignored signals are those of the caller, and `g_bLog` and
 * `g_sLogPath` count as they are at the time of the call.
 *
 * Any thread may call at any time as long as none assigns the settings; the last-error message is that of the
 * call that wrote last. What a host with threads may expect: the new processes have the calling thread only,
 * and whatever another thread had locked at that moment stays locked in them. They take no lock but those of
 * memory and streams, which the C library sets free in a forked process, and the one inside system(), so that
 * where other threads call system() themselves, a command may once in a while not start, and its last line
 * stay out. They do not ask for the local time, which takes a lock as well: the last line is stamped with
 * that of the start and the seconds gone by since, an hour off if the clocks were put forward or back
 * meanwhile. Functions registered with pthread_atfork run.
 *
 * Should memory run out, std::bad_alloc is thrown, in the caller alone. */
// NOLINTNEXTLINE(cert-fio38-c,misc-non-copyable-objects): hosts pass it so; only its address is taken
UTILITY_API int system_run(char const* command, pthread_mutex_t mutex);

#endif
