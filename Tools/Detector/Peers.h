#ifndef UTILITY_TOOLS_PEERS_H
#define UTILITY_TOOLS_PEERS_H

// The library's detector and others that the build found, asked in one way.

#include <functional>
#include <string>
#include <vector>

namespace tools {

struct Detector {
    std::string name;
    // The code of the encoding, of EncodingCodes.h. Supersets of GBK are GBK, and so is ASCII; 0 for all that is none.
    std::function<int(const std::string&)> detect;
};

// CodeTrans_CodeDetect with the tables loaded last.
Detector OurDetector(std::string name);

// uchardet and ICU, where there.
std::vector<Detector> Peers();

}  // namespace tools

#endif
