#ifndef UTILITY_GLOBAL_H
#define UTILITY_GLOBAL_H

/** @file
 * The process-wide settings, and the message of the last failure. The directory of the log, `g_sLogPath`, is declared
 * with the log writer (Runtime/LogWriter.h).
 *
 * These are plain variables that the host assigns, guarded by no lock: set them before starting threads that call the
 * library. They are constructed before any function of the library runs, also one called by an initialiser of the
 * host's own static objects: the shared library initialises itself before the program that links it, and in the
 * static library they are given the earliest initialisation that a program may ask for. The strings are destroyed at
 * the end of the process, after such objects of the host. */

#include <string>

#include "UtilityExport.h"

class CBufferManager;

/** Description of the last failure, in GBK; empty until something fails. Functions whose comment says that they set
 * the last-error message replace it (the string form of `ReadFile`, for instance); most report by their result alone.
 * No success clears it.
 *
 * Library functions that fail at the same time in several threads write it one after the other, and the last one
 * stays. Nothing guards a host that reads the variable itself while another thread is inside the library. */
extern UTILITY_API std::string g_sLastErrorMessage;

/** Encoding in which the host wants text handed out: 1 means UTF-8, every other value GBK. Initially 0; the library
 * never assigns it. */
extern UTILITY_API int g_nEncodeType;

/** Language of the text being processed, read when strings are normalised. Initially 1; the library never assigns
 * it. */
extern UTILITY_API int g_nLangType;

/** Whether the log is written. Initially true; the library never assigns it. */
extern UTILITY_API bool g_bLog;

/** Default directory. Initially empty; `GetDefaultPath` fills it. */
extern UTILITY_API std::string g_sDefaultDir;

/** The manager that takes over every text that `GetLastErrorMsg` hands out, or null (the initial value) where the
 * caller frees those texts. The host creates the manager, and clears this pointer before destroying it; the library
 * never assigns it. */
extern UTILITY_API CBufferManager* g_pBufManager;

#endif
