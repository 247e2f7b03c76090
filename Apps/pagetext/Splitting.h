#ifndef PAGETEXT_SPLITTING_H
#define PAGETEXT_SPLITTING_H

// Sentences, tokens and e-mail addresses of UTF-8 text.

#include <string>
#include <string_view>
#include <vector>

namespace pagetext {

// Sentences in text order, as views into `utf8_text`, without blanks at their ends. A sentence ends behind 。！？!? and
// the closing quotes and brackets that follow, behind a full stop that a blank or the end follows, and at a line end.
std::vector<std::string_view> Sentences(std::string_view utf8_text);

// The pieces between blanks and punctuation, ASCII and Chinese. A full stop or comma inside a number stays.
std::vector<std::string> Tokens(std::string_view utf8_text);

// The e-mail addresses in text order, "user@domain" in lower-case letters; repeated ones stay.
std::vector<std::string> EmailAddresses(std::string_view utf8_text);

}  // namespace pagetext

#endif
