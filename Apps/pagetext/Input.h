#ifndef PAGETEXT_INPUT_H
#define PAGETEXT_INPUT_H

#include <string>

namespace pagetext {

// Reads a whole file, or standard input when the name is "-", into `bytes`. Returns an empty text on success, otherwise
// the system's reason.
std::string ReadPage(const std::string& name, std::string& bytes);

}  // namespace pagetext

#endif
