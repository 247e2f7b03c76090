#include "Decoding.h"

#include <STLCodeTrans.h>

#include <algorithm>
#include <cctype>
#include <cstdint>

namespace pagetext {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

unsigned char ByteAt(std::string_view bytes, std::size_t pos) {
    return pos < bytes.size() ? static_cast<unsigned char>(bytes[pos]) : 0;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Big-endian UTF-16 shows itself by a NUL before every ASCII character, with which markup begins.
bool LooksLikeUtf16Be(std::string_view bytes) {
    constexpr std::size_t kProbe = 64;
    const std::size_t pairs = std::min(bytes.size(), kProbe) / 2;
    std::size_t ascii_pairs = 0;
    for (std::size_t i = 0; i < pairs; ++i)
        ascii_pairs += bytes[2 * i] == '\0' && ByteAt(bytes, 2 * i + 1) - 1u < 0x7F;
    return pairs >= 2 && ascii_pairs * 4 >= pairs * 3;
}

Encoding FromMark(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (StartsWith(bytes, kUtf8Mark)) return Encoding::kUtf8;
    if (StartsWith(bytes, "\xFF\xFE\0\0"sv) || StartsWith(bytes, "\0\0\xFE\xFF"sv)) return Encoding::kUtf32;
    if (StartsWith(bytes, "\xFF\xFE"sv)) return Encoding::kUtf16Le;
    if (StartsWith(bytes, "\xFE\xFF"sv) || LooksLikeUtf16Be(bytes)) return Encoding::kUtf16Be;
    return Encoding::kUnknown;
}

Encoding FromDetector(std::string_view bytes) {
    switch (CodeTrans_CodeDetect(bytes.data(), bytes.size())) {
        case ENCODE_UTF8:
            return Encoding::kUtf8;
        case ENCODE_GBK:
            return Encoding::kGbk;
        case ENCODE_BIG5:
            return Encoding::kBig5;
        case ENCODE_UNICODE:
            return Encoding::kUtf16Le;
        default:
            return Encoding::kUnknown;
    }
}

Encoding FromLabel(std::string_view label) {
    struct Label {
        std::string_view name;
        Encoding encoding;
    };
    constexpr Label kLabels[] = {
        {"utf-8", Encoding::kUtf8},       {"utf8", Encoding::kUtf8},       {"gbk", Encoding::kGbk},
        {"gb2312", Encoding::kGbk},       {"gb_2312-80", Encoding::kGbk},  {"x-gbk", Encoding::kGbk},
        {"cp936", Encoding::kGbk},        {"gb18030", Encoding::kGbk},     {"big5", Encoding::kBig5},
        {"big5-hkscs", Encoding::kBig5},  {"x-x-big5", Encoding::kBig5},   {"cp950", Encoding::kBig5},
        {"utf-16le", Encoding::kUtf16Le}, {"utf-16be", Encoding::kUtf16Be}};
    for (const Label& known : kLabels) {
        if (label == known.name) return known.encoding;
    }
    return Encoding::kUnknown;
}

// The first known name behind "charset" or "encoding" and "=" among the first bytes of a page, where documents declare it.
Encoding FromDeclaration(std::string_view bytes) {
    constexpr std::size_t kDeclarationBytes = 4096;
    std::string head(bytes.substr(0, kDeclarationBytes));
    for (char& c : head) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (std::size_t pos = head.find('='); pos != std::string::npos; pos = head.find('=', pos + 1)) {
        const std::size_t key_end = head.find_last_not_of(' ', pos - 1) + 1;
        const std::string_view before(head.data(), pos == 0 ? 0 : key_end);
        const auto ends_with = [&](std::string_view key) {
            return before.size() >= key.size() && before.substr(before.size() - key.size()) == key;
        };
        if (!ends_with("charset") && !ends_with("encoding")) continue;
        const std::size_t start = std::min(head.find_first_not_of("\"' ", pos + 1), head.size());
        const std::size_t end = std::min(head.find_first_of("\"' />;\r\n", start), head.size());
        const Encoding encoding = FromLabel(std::string_view(head).substr(start, end - start));
        if (encoding != Encoding::kUnknown) return encoding;
    }
    return Encoding::kUnknown;
}

// What a verdict for UTF-16 without a mark is worth: the detector gives no weight to ASCII, so a single odd byte can make
// it of an English page; and it knows no big-endian text.
Encoding CheckUtf16(std::string_view bytes) {
    std::size_t pairs = 0, ascii_pairs = 0, high_first = 0, high_second = 0;
    const auto is_text = [](unsigned char byte) {
        return byte == '\t' || byte == '\r' || byte == '\n' || byte - 0x20u < 0x5F;
    };
    // The upper halves of most units of Chinese text and markup.
    const auto is_upper = [](unsigned char b) {
        return b == 0 || b == 0x30 || (b >= 0x4E && b <= 0x9F) || b == 0xFF;
    };
    for (std::size_t pos = 0; pos + 1 < bytes.size(); pos += 2, ++pairs) {
        const unsigned char first = ByteAt(bytes, pos), second = ByteAt(bytes, pos + 1);
        ascii_pairs += is_text(first) && is_text(second);
        high_first += is_upper(first);
        high_second += is_upper(second);
    }
    if (ascii_pairs * 2 > pairs) return Encoding::kUnknown;
    return high_first > high_second + pairs / 4 ? Encoding::kUtf16Be : Encoding::kUtf16Le;
}

void Replace(Decoded& out) {
    out.text += kReplacement;
    ++out.replaced;
}

// Whether the bytes at `pos` are a four-byte character of GB18030.
bool IsFourByteGb18030(std::string_view bytes, std::size_t pos) {
    const auto lead = [&](std::size_t i) {
        return ByteAt(bytes, pos + i) >= 0x81 && ByteAt(bytes, pos + i) <= 0xFE;
    };
    const auto digit = [&](std::size_t i) {
        return ByteAt(bytes, pos + i) >= '0' && ByteAt(bytes, pos + i) <= '9';
    };
    return lead(0) && digit(1) && lead(2) && digit(3);
}

// Converts a run of ASCII bytes and of lead bytes with a possible trail byte. Only here does the code map decide which
// pairs have a character: an ASCII trail byte of a pair without one is text again.
void DecodeRun(int code, std::string_view run, Decoded& out) {
    std::string units(run.size() * 2, '\0');
    unsigned long length = units.size();
    GBKBig5_ToUnicode(code, run.data(), run.size(), units.data(), length);
    std::size_t byte_pos = 0;
    for (std::size_t unit_pos = 0; unit_pos < length; unit_pos += 2) {
        const unsigned unit = ByteAt(units, unit_pos) | static_cast<unsigned>(ByteAt(units, unit_pos + 1))
                                                            << 8;
        const bool pair = ByteAt(run, byte_pos) >= 0x80;
        if (pair && unit == 0) {
            Replace(out);
            const char trail = run[byte_pos + 1];
            if (static_cast<unsigned char>(trail) < 0x80) out.text += trail;
        } else {
            AppendCodePoint(out.text, unit);
        }
        byte_pos += pair ? 2 : 1;
    }
}

Decoded DecodeDoubleByte(int code, std::string_view bytes) {
    Decoded out;
    out.text.reserve(bytes.size() + bytes.size() / 2);
    std::size_t run_start = 0, pos = 0;
    const auto end_run = [&](std::size_t skipped) {
        DecodeRun(code, bytes.substr(run_start, pos - run_start), out);
        pos += skipped;
        run_start = pos;
    };
    while (pos < bytes.size()) {
        const unsigned char byte = ByteAt(bytes, pos), trail = ByteAt(bytes, pos + 1);
        if (byte < 0x80) {
            ++pos;
        } else if (byte >= 0x81 && byte <= 0xFE && trail >= 0x40 && trail <= 0xFE && trail != 0x7F) {
            pos += 2;
        } else if (code == ENCODE_GBK && byte == 0x80) {
            end_run(1);
            out.text += "€";
        } else if (code == ENCODE_GBK && IsFourByteGb18030(bytes, pos)) {
            end_run(4);
            Replace(out);
            ++out.gb18030_four;
        } else {
            end_run(1);
            Replace(out);
        }
    }
    end_run(0);
    return out;
}

Decoded DecodeUtf8(std::string_view bytes) {
    Decoded out;
    if (StartsWith(bytes, kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    out.text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::size_t valid = 0;
        for (std::size_t step = 1; step != 0; valid += step) step = Utf8SequenceLength(bytes.substr(valid));
        out.text += bytes.substr(0, valid);
        bytes.remove_prefix(valid);
        if (bytes.empty()) break;
        // One mark for the longest start of a sequence that could have gone on.
        std::size_t bad = 1;
        std::string start(bytes.substr(0, 1));
        while (bad < bytes.size() && bad < 4 && (ByteAt(bytes, bad) & 0xC0) == 0x80) {
            start += bytes[bad];
            std::string completed = start;
            completed.resize(bytes[0] < '\xF0' ? 3 : 4, '\x80');
            if (start.size() >= completed.size() || Utf8SequenceLength(completed) == 0) break;
            ++bad;
        }
        Replace(out);
        bytes.remove_prefix(bad);
    }
    return out;
}

Decoded DecodeUtf16Le(std::string_view bytes) {
    Decoded out;
    if (StartsWith(bytes, "\xFF\xFE")) bytes.remove_prefix(2);
    const auto unit_at = [&](std::size_t pos) {
        return ByteAt(bytes, pos) | static_cast<unsigned>(ByteAt(bytes, pos + 1)) << 8;
    };
    std::size_t pos = 0;
    for (; pos + 1 < bytes.size(); pos += 2) {
        const unsigned unit = unit_at(pos);
        const unsigned next = pos + 3 < bytes.size() ? unit_at(pos + 2) : 0;
        if ((unit & 0xF800) != 0xD800) {
            AppendCodePoint(out.text, unit);
        } else if (unit < 0xDC00 && (next & 0xFC00) == 0xDC00) {
            AppendCodePoint(out.text, 0x10000 + ((unit & 0x3FFu) << 10 | (next & 0x3FFu)));
            pos += 2;
        } else {
            Replace(out);
        }
    }
    if (pos < bytes.size()) Replace(out);
    return out;
}

}  // namespace

const char* NameOf(Encoding encoding) {
    switch (encoding) {
        case Encoding::kAscii:
            return "ascii";
        case Encoding::kUtf8:
            return "utf-8";
        case Encoding::kGbk:
            return "gbk";
        case Encoding::kBig5:
            return "big5";
        case Encoding::kUtf16Le:
            return "utf-16le";
        case Encoding::kUtf16Be:
            return "utf-16be";
        case Encoding::kUtf32:
            return "utf-32";
        case Encoding::kUnknown:
            break;
    }
    return "unknown";
}

bool IsSupported(Encoding encoding) {
    return encoding != Encoding::kUtf16Be && encoding != Encoding::kUtf32;
}

Encoding DetectEncoding(std::string_view bytes) {
    const Encoding marked = FromMark(bytes);
    if (marked != Encoding::kUnknown) return marked;
    const bool ascii =
        std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) > 0; });
    if (ascii) return Encoding::kAscii;
    Encoding detected = FromDetector(bytes);
    if (detected == Encoding::kUtf16Le) detected = CheckUtf16(bytes);
    return detected != Encoding::kUnknown ? detected : FromDeclaration(bytes);
}

Decoded Decode(std::string_view bytes, Encoding encoding) {
    switch (encoding) {
        case Encoding::kBig5:
            return DecodeDoubleByte(ENCODE_BIG5, bytes);
        case Encoding::kGbk:
            return DecodeDoubleByte(ENCODE_GBK, bytes);
        case Encoding::kUtf16Le:
            return DecodeUtf16Le(bytes);
        case Encoding::kUnknown:
            if (!IsValidUtf8(bytes)) return DecodeDoubleByte(ENCODE_GBK, bytes);
            [[fallthrough]];
        default:
            return DecodeUtf8(bytes);
    }
}

std::size_t Utf8SequenceLength(std::string_view text) {
    const unsigned char lead = ByteAt(text, 0), second = ByteAt(text, 1);
    if (text.empty()) return 0;
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() < length) return 0;
    // Overlong forms, surrogates and values beyond U+10FFFF show in the second byte.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (second < lowest || second > highest) return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if ((ByteAt(text, i) & 0xC0) != 0x80) return 0;
    }
    return length;
}

bool IsValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = Utf8SequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string EncodeGbk(std::string_view utf8_text, std::size_t& references) {
    std::string gbk;
    gbk.reserve(utf8_text.size());
    while (!utf8_text.empty()) {
        const std::size_t length = std::max<std::size_t>(Utf8SequenceLength(utf8_text), 1);
        unsigned long code_point =
            length == 1 ? ByteAt(utf8_text, 0) : ByteAt(utf8_text, 0) & (0x7Fu >> length);
        for (std::size_t i = 1; i < length; ++i)
            code_point = code_point << 6 | (ByteAt(utf8_text, i) & 0x3Fu);
        utf8_text.remove_prefix(length);
        const unsigned code = code_point <= 0xFFFF ? CodeTable[code_point] : 0;
        if (code > 0xFF) gbk += static_cast<char>(code >> 8);
        if (code != 0 || code_point == 0) {
            gbk += static_cast<char>(code & 0xFF);
        } else {
            gbk += "&#" + std::to_string(code_point) + ";";
            ++references;
        }
    }
    return gbk;
}

void AppendCodePoint(std::string& utf8_text, unsigned long code_point) {
    if (code_point < 0x80) {
        utf8_text += static_cast<char>(code_point);
        return;
    }
    unsigned char bytes[6];
    const int length = unicode_to_utf8_one(code_point, bytes, sizeof bytes);
    utf8_text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

}  // namespace pagetext
