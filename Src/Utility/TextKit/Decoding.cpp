#include <algorithm>
#include <cstring>

#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/CodeMapTables.h"
#include "Utility/TextKit/Encodings.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF", kUtf16LeMark = "\xFF\xFE";
constexpr std::uint32_t kReplacementCharacter = 0xFFFD;

// Text is written through a buffer of this many input bytes, each of which makes three bytes at most.
constexpr std::ptrdiff_t kBlock = 2048;

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

void CountReplacement(Decoded& out, const char* place, std::string_view bytes) {
    if (out.replaced++ == 0) out.first_replaced = static_cast<std::size_t>(place - bytes.data());
}

char* CopyAscii(const char*& pos, const char* end, char* out) {
    const char* const run_end = SkipAscii(pos, end);
    const auto length = static_cast<std::size_t>(run_end - pos);
    std::memcpy(out, pos, length);
    pos = run_end;
    return out + length;
}

// Runs `step(pos, end_of_block, out)` over blocks of the bytes. A step may read on to the end of the text, by three bytes
// past its block at most.
template <typename Step>
void DecodeBlocks(std::string_view bytes, std::string& text, Step step) {
    char buffer[3 * (kBlock + 4)];
    const char *pos = bytes.data(), *const end = pos + bytes.size();
    while (pos < end) {
        const char* const block_end = pos + std::min(kBlock, end - pos);
        char* out = buffer;
        while (pos < block_end) step(pos, block_end, out);
        text.append(buffer, static_cast<std::size_t>(out - buffer));
    }
}

// Codes of Big5 that stand for a letter and a combining mark, which no table of single code points holds.
const char* Big5Pair(unsigned code) {
    switch (code) {
        case 0x8862:
            return "\u00CA\u0304";
        case 0x8864:
            return "\u00CA\u030C";
        case 0x88A3:
            return "\u00EA\u0304";
        case 0x88A5:
            return "\u00EA\u030C";
        default:
            return nullptr;
    }
}

bool IsGb18030FourByte(const char* pos, const char* end) {
    const auto is_lead = [](char c) { return ToByte(c) >= 0x81 && ToByte(c) <= 0xFE; };
    return end - pos >= 4 && is_lead(pos[0]) && IsAsciiDigit(ToByte(pos[1])) && is_lead(pos[2]) &&
           IsAsciiDigit(ToByte(pos[3]));
}

class DoubleByteDecoder {
public:
    DoubleByteDecoder(std::string_view bytes, const std::uint16_t* grid, bool gbk, Decoded& decoded)
        : bytes_(bytes), grid_(grid), gbk_(gbk), decoded_(decoded) {}

    void Run() {
        const char* const end = bytes_.data() + bytes_.size();
        DecodeBlocks(bytes_, decoded_.text, [this, end](const char*& pos, const char* block_end, char*& out) {
            if (IsAscii(ToByte(*pos))) {
                out = CopyAscii(pos, block_end, out);
                return;
            }
            const unsigned row = ToByte(*pos) - kFirstGbkLead;
            const unsigned cell = pos + 1 < end ? ToByte(pos[1]) - kFirstGbkTrail : kGbkTrails;
            const std::uint32_t code_point = row < kGbkLeads && cell < kGbkTrails ? grid_[row * kGbkTrails + cell] : 0;
            if (code_point != 0) {
                out = WriteUtf8(code_point, out);
                pos += 2;
            } else {
                DecodeRare(pos, end, out);
            }
        });
    }

private:
    // A high byte that starts no pair of the grid.
    void DecodeRare(const char*& pos, const char* end, char*& out) {
        const unsigned char lead = ToByte(*pos);
        if (gbk_ && lead == 0x80) {
            out = WriteUtf8(0x20AC, out);
            ++pos;
            return;
        }
        const char* const pair = !gbk_ && end - pos > 1 ? Big5Pair(TwoByteCode(lead, ToByte(pos[1]))) : nullptr;
        if (pair != nullptr) {
            std::memcpy(out, pair, 4);
            out += 4;
            pos += 2;
            return;
        }
        CountReplacement(decoded_, pos, bytes_);
        out = WriteUtf8(kReplacementCharacter, out);
        if (gbk_ && IsGb18030FourByte(pos, end)) {
            ++decoded_.gb18030_four_byte;
            pos += 4;
            return;
        }
        // A lead byte takes a trail byte with it that is not ASCII.
        const bool takes_trail = lead != 0x80 && lead != 0xFF && end - pos > 1 && !IsAscii(ToByte(pos[1]));
        pos += takes_trail ? 2 : 1;
    }

    std::string_view bytes_;
    const std::uint16_t* grid_;
    bool gbk_;
    Decoded& decoded_;
};

void DecodeUtf8(std::string_view bytes, Decoded& decoded) {
    const char *pos = bytes.data(), *const end = pos + bytes.size();
    if (StartsWith(bytes, kUtf8Mark)) pos += kUtf8Mark.size();
    while (pos < end) {
        const char* const valid_end = SkipValidUtf8(pos, end);
        decoded.text.append(pos, static_cast<std::size_t>(valid_end - pos));
        pos = valid_end;
        if (pos == end) break;
        CountReplacement(decoded, pos, bytes);
        decoded.text += kUtf8Replacement;
        pos += ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos)).length;
    }
}

void DecodeUtf16Le(std::string_view bytes, Decoded& decoded) {
    const std::string_view content = StartsWith(bytes, kUtf16LeMark) ? bytes.substr(kUtf16LeMark.size()) : bytes;
    const char* const end = content.data() + content.size();
    const auto is_surrogate = [](unsigned unit, unsigned first) { return (unit & 0xFC00) == first; };
    DecodeBlocks(content, decoded.text, [&](const char*& pos, const char*, char*& out) {
        const unsigned unit = end - pos > 1 ? LoadUcs2(pos) : 0;
        const unsigned next = end - pos > 3 ? LoadUcs2(pos + 2) : 0;
        const bool high = is_surrogate(unit, 0xD800);
        if (high && is_surrogate(next, 0xDC00)) {
            out = WriteUtf8(0x10000 + ((unit & 0x3FF) << 10 | (next & 0x3FF)), out);
            pos += 4;
        } else if (end - pos == 1 || high || is_surrogate(unit, 0xDC00)) {
            CountReplacement(decoded, pos, bytes);
            out = WriteUtf8(kReplacementCharacter, out);
            // A last byte behind half a pair is part of the same malformed sequence.
            pos += high && end - pos == 3 ? 3 : std::min<std::ptrdiff_t>(2, end - pos);
        } else {
            out = WriteUtf8(unit, out);
            pos += 2;
        }
    });
}

Encoding EncodingOfCode(int code) {
    switch (code) {
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

bool IsAsciiWithoutNul(std::string_view bytes) {
    const char* const end = bytes.data() + bytes.size();
    return SkipAscii(bytes.data(), end) == end &&
           (bytes.empty() || std::memchr(bytes.data(), '\0', bytes.size()) == nullptr);
}

}  // namespace

Detection Detect(std::string_view bytes, const CodeMaps& maps) {
    using namespace std::string_view_literals;
    if (StartsWith(bytes, kUtf8Mark)) return {Encoding::kUtf8, 1};
    for (const std::string_view foreign : {"\xFF\xFE\0\0"sv, "\0\0\xFE\xFF"sv, "\xFE\xFF"sv})
        if (StartsWith(bytes, foreign)) return {};
    if (StartsWith(bytes, kUtf16LeMark)) return {Encoding::kUtf16Le, 1};
    if (IsAsciiWithoutNul(bytes)) return {Encoding::kUtf8, 1};

    const DetectionResult found = DetectEncoding(maps.tables().detector, bytes.data(), bytes.size());
    const Encoding encoding = EncodingOfCode(found.encoding);
    if (encoding == Encoding::kUnknown) return {};
    constexpr double kHalfSureLead = 20;
    const auto lead = static_cast<double>(found.lead);
    return {encoding, found.declared ? 1 : lead / (lead + kHalfSureLead)};
}

Decoded Decode(std::string_view bytes, Encoding encoding, const CodeMaps& maps) {
    if (encoding == Encoding::kUnknown) encoding = Detect(bytes, maps).encoding;
    if (encoding == Encoding::kUnknown) encoding = IsValidUtf8(bytes) ? Encoding::kUtf8 : Encoding::kGbk;
    const bool grows = encoding == Encoding::kGbk || encoding == Encoding::kBig5;
    Decoded decoded;
    decoded.text.reserve(bytes.size() + (grows ? bytes.size() / 2 : 0));
    switch (encoding) {
        case Encoding::kGbk:
            DoubleByteDecoder(bytes, maps.tables().gbk.to_unicode, true, decoded).Run();
            break;
        case Encoding::kBig5:
            DoubleByteDecoder(bytes, maps.tables().big5.to_unicode, false, decoded).Run();
            break;
        case Encoding::kUtf16Le:
            DecodeUtf16Le(bytes, decoded);
            break;
        default:
            DecodeUtf8(bytes, decoded);
    }
    return decoded;
}

bool IsValidUtf8(std::string_view bytes) {
    const char* const end = bytes.data() + bytes.size();
    return SkipValidUtf8(bytes.data(), end) == end;
}

}  // namespace textkit
