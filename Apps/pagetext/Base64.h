#ifndef PAGETEXT_BASE64_H
#define PAGETEXT_BASE64_H

#include <optional>
#include <string>
#include <string_view>

namespace pagetext {

// The bytes that base64 (RFC 4648, section 4) stands for; the "=" at its end may be missing. None where anything else
// stands there, blanks too, or where bits are left over.
std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace pagetext

#endif
