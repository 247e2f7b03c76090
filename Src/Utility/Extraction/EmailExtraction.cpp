#include "Utility/Extraction/EmailExtraction.h"

#include <cstddef>
#include <cstring>
#include <string_view>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterListIndex.h"
#include "Internal/EncodedList.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::CharacterListIndex;
using utility::internal::IsAscii;
using utility::internal::ToAsciiLower;
using utility::internal::ToByte;
using utility::internal::ToChar;
using utility::internal::Utf8;

constexpr ByteSet LettersDigitsAnd(const char* more) {
    ByteSet bytes(more);
    for (const char* c = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"; *c != '\0'; ++c) {
        bytes.Add(ToByte(*c));
    }
    return bytes;
}

constexpr ByteSet kAddressBytes = LettersDigitsAnd("-._");
constexpr ByteSet kBehindAddress(">;,\r\n \t");
constexpr ByteSet kBetweenAddressAndName("<\" \t");
// Holds all that may stand between name and prefix as well (quotes, blanks, tabs): the name takes it in.
constexpr ByteSet kNameBytes = LettersDigitsAnd("\", -._\t");
constexpr ByteSet kTrimmedFromName(", -\t");
constexpr ByteSet kPrefixDelimiters(":;,");

constexpr auto kFullWidthDelimiters = Utf8("：。，");
static_assert(kFullWidthDelimiters.size() == 9);
constexpr CharacterListIndex kFullWidthDelimiterIndex(kFullWidthDelimiters);

constexpr auto kReceiverLabel = Utf8("收");
constexpr auto kCopyLabel = Utf8("抄");
constexpr auto kSecretLabel = Utf8("密");
static_assert(kReceiverLabel.size() == 3 && kCopyLabel.size() == 3 && kSecretLabel.size() == 3);

// The kind of a header line, from what stands in front of its first at sign.
const char* LineKind(std::string_view head) {
    const auto contains = [head](std::string_view label) { return head.find(label) != std::string_view::npos; };
    if (contains(kReceiverLabel.view())) return "recv";
    if (contains(kCopyLabel.view())) return "copy_to";
    if (contains(kSecretLabel.view())) return "secret_to";
    return "send";
}

const char* SkipForward(const char* pos, const ByteSet& bytes) {
    while (bytes.Contains(*pos)) ++pos;  // no set holds the NUL
    return pos;
}

const char* SkipBackward(const char* begin, const char* end, const ByteSet& bytes) {
    while (end > begin && bytes.Contains(end[-1])) --end;
    return end;
}

// Where the prefix that ends at `end` begins, in a region that begins at `begin`.
const char* PrefixBegin(const char* begin, const char* end) {
    while (end > begin) {
        const bool is_single = IsAscii(ToByte(end[-1]));
        if (!is_single && end - begin == 1) break;
        const char* const unit = end - (is_single ? 1 : 2);
        if (kPrefixDelimiters.Contains(*unit)) break;
        if (!is_single && kFullWidthDelimiterIndex.FindPair(ToByte(unit[0]), ToByte(unit[1])) >= 0) break;
        end = unit;
    }
    return end;
}

void AssignLowerCase(const char* begin, const char* end, std::string& text) {
    text.assign(begin, end);
    for (char& c : text) c = ToChar(ToAsciiLower(ToByte(c)));
}

// The part of a record that stands in front of its at sign, in a region that begins at `begin`.
void ReadBackward(const char* begin, const char* at, _email& email) {
    const char* const user = SkipBackward(begin, at, kAddressBytes);
    AssignLowerCase(user, at, email.user);
    const char* const name_end = SkipBackward(begin, user, kBetweenAddressAndName);
    const char* const name = SkipBackward(begin, name_end, kNameBytes);
    email.name.assign(name, SkipBackward(name, name_end, kTrimmedFromName));
    email.prefix.assign(PrefixBegin(begin, name), name);
}

// Behind the address whose domain ends at `domain_end`, where the region of the next one begins.
const char* AddressEnd(const char* domain_end) {
    if (*domain_end == '"') {
        const char* const close = std::strchr(domain_end, '>');
        if (close == nullptr) return domain_end + std::strlen(domain_end);
        domain_end = close;
    }
    return SkipForward(domain_end, kBehindAddress);
}

}  // namespace

void ExtractEmail(const char* text, std::vector<_email>& emails) {
    emails.clear();
    const char* at = std::strchr(text, '@');
    if (at == nullptr) return;
    const char* const kind = LineKind({text, static_cast<std::size_t>(at - text)});
    for (const char* region = text; at != nullptr; at = std::strchr(region, '@')) {
        _email& email = emails.emplace_back();
        ReadBackward(region, at, email);
        const char* const domain_end = SkipForward(at + 1, kAddressBytes);
        AssignLowerCase(at + 1, domain_end, email.domain);
        email.type = kind;
        region = AddressEnd(domain_end);
    }
}
