#ifndef UTILITY_INTERNAL_LASTERROR_H
#define UTILITY_INTERNAL_LASTERROR_H

// How the library itself writes and reads g_sLastErrorMessage: one at a time, so that failures in several threads
// overwrite each other's message and nothing else.

#include <string>

namespace utility::internal {

void SetLastErrorMessage(std::string gbk_message);
std::string LastErrorMessage();

}  // namespace utility::internal

#endif
