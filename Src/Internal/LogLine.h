#ifndef UTILITY_INTERNAL_LOGLINE_H
#define UTILITY_INTERNAL_LOGLINE_H

// One line of the log, written as WriteLog writes it but for a time that the caller gives, into a directory
// whose name ends in its separator. Reads no setting and takes no lock of the library's or of the time
// zone's, so that also a process forked off a host with threads may call it.

#include <ctime>
#include <string>

namespace utility::internal {

void WriteLogLine(const std::string& message, const std::string& directory, bool is_error, const std::tm& time);

}  // namespace utility::internal

#endif
