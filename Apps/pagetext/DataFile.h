#ifndef PAGETEXT_DATAFILE_H
#define PAGETEXT_DATAFILE_H

#include <string>

namespace pagetext {

// Path of the code-map data file: the environment variable UTILITY_CODEMAPS, else the first that exists of: beside the
// program (`argv0` tells where it is where the system does not), the places relative to it where an installation and a build put it, and where it was to be
// installed. Empty when there is none.
std::string FindDataFile(const char* argv0);

}  // namespace pagetext

#endif
