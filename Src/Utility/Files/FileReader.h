#ifndef UTILITY_FILES_FILEREADER_H
#define UTILITY_FILES_FILEREADER_H

/** @file
 * Reading a whole file, or a range of its bytes, into memory.
 *
 * The four `ReadFile` forms share their arguments. `file_name` must not be null. `offset` is the position of the first
 * byte to read, counted in bytes from the beginning of the file. `count` is the number of bytes to read; 0 means the
 * size of the file if `whole_file` is true (the offset is not subtracted from it), and otherwise nothing. The usual
 * call is `ReadFile(name, …, 0, 0, true)`. Files are opened with mode "rb", and no text is converted.
 *
 * **The result is the count that was asked for, not the count that was there.** A range that runs past the end of
 * the file (or lies beyond it, or starts below 0, or hits a read error, or belongs to a directory) is filled up with
 * zero bytes. What cannot be positioned, such as a pipe, is read from where it stands; its size is 0, and that of a
 * directory whatever the file system says.
 *
 * Buffer forms: a buffer of count + 1 bytes, allocated with `new char[]`, is stored in `*buffer` and holds the bytes
 * and a NUL. The caller frees it with `delete[]`, **also when the result is 0** because the count is 0. When the file
 * cannot be opened, or a buffer of that size cannot be had, the result is 0 and `*buffer` is left as it was: set it to
 * null before the call. Buffers that the memory of the machine could not hold are refused where the file is too small
 * to fill them.
 *
 * String forms: the bytes without any NUL among them (so those filled up vanish as well) replace `text`, and the result
 * is their number. On failure, or if the count is 0, `text` is empty, the result 0, and "Error read file " with the
 * name becomes the last-error message and an error line of the log. What `text` held is
 * freed once the bytes are read.
 *
 * A file that cannot be opened is noted in the ordinary log as "Failed open file  " with the name. errno then says
 * why. */

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <string>

#include "../UtilityExport.h"

/** A reader that keeps the file of its last read open, so that the next read of the same file costs a seek and a read
 * and no opening.
 *
 * Names that differ only in letter case (strcasecmp) count as the same file, so "Data.TXT" after "data.txt" reads
 * the file that is held. A read of another name replaces the held file once that other file is open; a failed open
 * leaves it held and readable. The size of the held file is that of the moment when it was opened.
 *
 * Any number of threads may share a reader, for one file or for many: name, size and stream are held under one lock for
 * as long as a read needs them, so no read sees another file's bytes. Reads thus take turns, but the opening of a
 * file keeps nobody waiting. The fields are for looking at, the two atomic ones at any time, the others under
 * `m_mutexRead`. Not copyable. */
class UTILITY_API CReadFile {
public:
    /** Holds no file. A read of the empty name now finds no file: result 0 and a buffer with an empty string. */
    CReadFile();
    /** Closes the held file. No other thread may be using the reader any more. */
    ~CReadFile();
    CReadFile(const CReadFile&) = delete;
    CReadFile& operator=(const CReadFile&) = delete;

    /** Reads into a new buffer; see above. */
    std::size_t ReadFile(char const* file_name, char** buffer, long offset, std::size_t count, bool whole_file);
    /** Reads into a string; see above. */
    std::size_t ReadFile(char const* file_name, std::string& text, long offset, std::size_t count, bool whole_file);

    std::string m_sFileName;       /**< name of the held file; empty if none */
    std::FILE* m_fpFileRead;       /**< its stream, null exactly if no file is held */
    pthread_mutex_t m_mutexRead;   /**< guards the held file: name, stream, position and size */
    std::atomic<int> m_nReadCount; /**< number of reads going on */
    std::atomic<bool> m_bOpening;  /**< whether the held file is being replaced */
    long m_nFileSize;              /**< size in bytes of the held file; 0 if it could not be found out */
};

/** Reads into a new buffer with a reader of its own; see above. */
UTILITY_API std::size_t ReadFile(char const* file_name, char** buffer, long offset, std::size_t count, bool whole_file);
/** Reads into a string with a reader of its own; see above. */
UTILITY_API std::size_t ReadFile(char const* file_name, std::string& text, long offset, std::size_t count,
                                 bool whole_file);

#endif
