#ifndef UTILITY_RUNTIME_LOGWRITER_H
#define UTILITY_RUNTIME_LOGWRITER_H

/** @file
 * The log: time-stamped lines appended to one file a day and kind.
 *
 * Lines go to DIRECTORY/20240305.log, error lines to DIRECTORY/20240305.err, and read "[2024-03-05
 * 14:07:09]\tmessage\n". Day and time are local; a host that changes the environment variable TZ must call tzset for it
 * to count.
 *
 * Messages are bytes in whatever encoding the caller uses, written as they are up to the first NUL; line feeds in them
 * make one entry of several lines. Nothing here reports an error, sets the last-error message or throws, short of
 * exhausted memory. Any thread may call at any time as long as none assigns the settings. The line of each call to a
 * file of the log is written as a whole, so neither threads nor processes mix their lines (on a local file system); the
 * form with a stream hands it to the stream whole, which is enough among the threads of one process. */

#include <cstdio>
#include <string>

#include "../UtilityExport.h"

/** Directory of the log files, without the separator, which is always added. Initially empty; the first call that
 * needs it and finds it empty sets it to the working directory, and so it stays. (Where that directory cannot be read,
 * or its name is longer than 999 bytes, it stays empty, and the file lies in the root directory.) */
extern UTILITY_API std::string g_sLogPath;

/** Appends `message` to the day's log file, or its error file if `is_error`, unless `g_bLog` is false.
 *
 * The file lies in `directory`, to which "/" is added unless it ends in "/" or "\" (bytes, so a GBK name whose last
 * trail byte is 5C counts as ending in one; an empty name means the root directory), or in `g_sLogPath` if `directory`
 * is null. It is opened, appended to and closed in every call, so that it may be moved or deleted at any time;
 * directories are never created. If it cannot be opened or written, the line "[stamp] message" and the line "Cannot
 * write log file NAME!" (ending in CR LF) go to standard output, which is flushed. */
UTILITY_API void WriteLog(std::string message, char const* directory, bool is_error);

/** The same as `WriteLog(message, directory, true)`. */
UTILITY_API void WriteError(std::string message, char const* directory);

/** Writes "[stamp] message\n" (a blank here, not a tab) to the open `stream`, whatever `g_bLog` says, and neither
 * flushes nor closes it. If `stream` is null, that line and "Cannot write log file!" (ending in CR LF) go to standard
 * output, which is flushed. */
UTILITY_API void WriteLog(std::FILE* stream, std::string message);

#endif
