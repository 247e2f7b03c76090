#ifndef UTILITY_FILES_FILECOPYING_H
#define UTILITY_FILES_FILECOPYING_H

/** @file
 * Copying files, and byte ranges of open streams, through a buffer of bounded size.
 *
 * Offsets, sizes and limits are in bytes. A read or write error ends a copy as the end of the source
 * does. Streams must be open, for binary reading and writing, and source and destination must not be the
 * same file. What was written may still lie in the buffer of the destination's stream.
 *
 * **Several threads may append to one destination** if they pass the same mutex (a plain pthread mutex,
 * which must not be held) in every copy to it: each copy then stands there in one piece. A copy without a
 * mutex (null) must have both streams to itself. */

#include <pthread.h>

#include <cstddef>
#include <cstdio>

#include "../UtilityExport.h"

/** Copies the file `source_path` to `destination_path`, which is replaced, and returns whether both could
 * be opened.
 *
 * **True does not say that the copy is complete**: the disk may be full, and a `buffer_size` of 0 leaves
 * an empty file. The paths must not be null and must not name the same file, which would be emptied. If
 * the source cannot be opened, the destination stays untouched, and "Error read file" and its path are
 * written to the error log as two lines; "Error write file" and its path, if the destination cannot be
 * opened. */
UTILITY_API bool FileCopy(char const* source_path, char const* destination_path, std::size_t buffer_size);

/** Appends all of `source`, from its beginning, or its first `limit` bytes if that is not 0, to the end of
 * `destination`, and returns the length of `destination` afterwards.
 *
 * -1: the size of the source could not be found out. -2: `destination` did not grow by the size of the
 * source, or by `limit`; so the source was shorter than `limit`, something failed, or one of the two is a
 * pipe. Bytes may have been appended in both cases. A `buffer_size` of 0 appends nothing: -2. No more
 * than 1 MiB of it is used.
 *
 * `mutex`, if not null, is held while the streams are positioned, read and written, **but not while the
 * length is taken**: if another thread appends just then, the result is -2 though the copy is complete. */
UTILITY_API long FileCopy(std::FILE* source, std::FILE* destination, std::size_t buffer_size, pthread_mutex_t* mutex,
                          std::size_t limit);

/** Copies the bytes of `source` from offset `start` up to, and not including, `end` to where `destination`
 * stands, and returns how many bytes were written: fewer than end - start if the source ends first or
 * something fails.
 *
 * `buffer` is the caller's and has `buffer_size` bytes. Nothing is copied, and the result is 0, if that
 * is 0, if `end` is not beyond `start`, or if the source cannot be positioned. `mutex`, if not null, is
 * held during all of it. */
UTILITY_API std::size_t FileCopy(std::FILE* source, std::FILE* destination, std::size_t start, std::size_t end,
                                 unsigned char* buffer, std::size_t buffer_size, pthread_mutex_t* mutex);

#endif
