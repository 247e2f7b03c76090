#include <algorithm>
#include <cstring>

#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Internal/DoubleByteRuns.h"
#include "Internal/Utf8Encoding.h"
#include "Internal/Utf8Sequences.h"
#include "Internal/Words.h"
#include "Utility/TextKit/CodeMapTables.h"
#include "Utility/TextKit/Encodings.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF", kUtf16LeMark = "\xFF\xFE", kUtf16BeMark = "\xFE\xFF";
constexpr std::uint32_t kReplacementCharacter = 0xFFFD;

// Text is written through a buffer of this many input bytes, each of which makes three bytes at most.
constexpr std::ptrdiff_t kBlock = 2048;

void CountReplacement(Decoded& out, const char* place, std::string_view bytes) {
    if (out.replaced++ == 0) out.first_replaced = static_cast<std::size_t>(place - bytes.data());
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
    // `plane_2`: whether the codes of Big5 for plane 2 are known.
    DoubleByteDecoder(std::string_view bytes, const PairTable<std::uint32_t>& table, bool gbk, bool plane_2,
                      Decoded& decoded)
        : bytes_(bytes), table_(table), gbk_(gbk), plane_2_(plane_2), decoded_(decoded) {}

    void Run() {
        const char *pos = bytes_.data(), *const end = pos + bytes_.size();
        while (pos != end) {
            char block[kBlock + Utf8PairWriter::kSlack];
            Utf8PairWriter writer(table_, block, block + kBlock);
            const auto decode_rare = [&](const char*& place) {
                DecodeRare(place, end, writer.out());
                return true;
            };
            pos = ReadDoubleByteRuns(pos, end, writer, decode_rare);
            // The last bytes.
            while (pos != end && writer.HasRoom()) {
                if (end - pos >= 8 && ReadEightAlike(pos, writer)) continue;
                const std::uint32_t known = end - pos > 1 ? table_[PairIndex(ToByte(pos[0]), ToByte(pos[1]))] : 0;
                if (IsAscii(ToByte(*pos))) {
                    writer.One(ToByte(*pos++));
                } else if (known != 0) {
                    StoreWord(known, writer.out());
                    writer.out() += known >> 24;
                    pos += 2;
                } else {
                    decode_rare(pos);
                }
            }
            decoded_.text.append(block, writer.out());
        }
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
        const std::uint32_t beyond = plane_2_ && end - pos > 1 ? Big5ToPlane2(TwoByteCode(lead, ToByte(pos[1]))) : 0;
        if (beyond != 0) {
            out = WriteUtf8(beyond, out);
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
    const PairTable<std::uint32_t>& table_;
    bool gbk_, plane_2_;
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

// Reads a unit of UTF-16, of two bytes in one order or the other.
using LoadUnit = unsigned(const char*);

// Writes the units in front of the first surrogate as UTF-8 and returns their number. Few at a time, as surrogates may be many.
template <LoadUnit* kLoad>
std::size_t EncodePlainUnits(const char* pos, const char* end, char*& out) {
    constexpr std::size_t kMostUnits = 128;
    wchar_t units[kMostUnits];
    std::size_t count = std::min(kMostUnits, static_cast<std::size_t>(end - pos) / 2);
    wchar_t surrogates = 0;  // counted without a branch, so that the compiler can do it in vectors
    for (std::size_t i = 0; i < count; ++i) {
        units[i] = static_cast<wchar_t>(kLoad(pos + 2 * i));
        surrogates += (units[i] & 0xF800) == 0xD800;
    }
    const auto is_surrogate = [](wchar_t unit) { return (unit & 0xF800) == 0xD800; };
    if (surrogates > 0) count = static_cast<std::size_t>(std::find_if(units, units + count, is_surrogate) - units);
    out = EncodeBmp(units, units + count, out);
    return count;
}

template <LoadUnit* kLoad>
void DecodeUtf16(std::string_view bytes, std::string_view mark, Decoded& decoded) {
    const std::string_view content = StartsWith(bytes, mark) ? bytes.substr(mark.size()) : bytes;
    const char* const end = content.data() + content.size();
    const auto is_surrogate = [](unsigned unit, unsigned first) { return (unit & 0xFC00) == first; };
    DecodeBlocks(content, decoded.text, [&](const char*& pos, const char* block_end, char*& out) {
        const std::size_t plain_units = EncodePlainUnits<kLoad>(pos, block_end, out);
        if (plain_units > 0) {
            pos += 2 * plain_units;
            return;
        }
        const unsigned unit = end - pos > 1 ? kLoad(pos) : 0;
        const unsigned next = end - pos > 3 ? kLoad(pos + 2) : 0;
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

unsigned LoadUnitLowFirst(const char* bytes) {
    return LoadWord<std::uint16_t>(bytes);
}
unsigned LoadUnitHighFirst(const char* bytes) {
    return __builtin_bswap16(LoadWord<std::uint16_t>(bytes));
}

// Big-endian UTF-16 shows itself by a NUL in front of every ASCII character, with which markup begins: the number of such
// pairs at the beginning where they are three of four, else 0.
int LeadingBigEndianAscii(std::string_view bytes) {
    constexpr std::size_t kProbe = 64;
    const std::size_t pairs = std::min(bytes.size(), kProbe) / 2;
    int ascii_pairs = 0;
    for (std::size_t i = 0; i < pairs; ++i) ascii_pairs += bytes[2 * i] == '\0' && ToByte(bytes[2 * i + 1]) - 1u < 0x7F;
    return pairs >= 2 && static_cast<std::size_t>(ascii_pairs) * 4 >= pairs * 3 ? ascii_pairs : 0;
}

// What a verdict for UTF-16 without a mark is worth: the detector gives no weight to ASCII, so a single odd byte can make
// it of an English page; and it knows no big-endian text.
Encoding CheckUtf16(std::string_view bytes) {
    std::size_t pairs = 0, ascii_pairs = 0, high_first = 0, high_second = 0;
    const auto is_text = [](unsigned char byte) {
        return byte == '\t' || byte == '\r' || byte == '\n' || byte - 0x20u < 0x5F;
    };
    // The upper halves of most units of Chinese text and markup.
    const auto is_upper = [](unsigned char b) { return b == 0 || b == 0x30 || (b >= 0x4E && b <= 0x9F) || b == 0xFF; };
    for (std::size_t pos = 0; pos + 1 < bytes.size(); pos += 2, ++pairs) {
        const unsigned char first = ToByte(bytes[pos]), second = ToByte(bytes[pos + 1]);
        ascii_pairs += is_text(first) && is_text(second);
        high_first += is_upper(first);
        high_second += is_upper(second);
    }
    if (ascii_pairs * 2 > pairs) return Encoding::kUnknown;
    return high_first > high_second + pairs / 4 ? Encoding::kUtf16Be : Encoding::kUtf16Le;
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
    if (StartsWith(bytes, "\xFF\xFE\0\0"sv) || StartsWith(bytes, "\0\0\xFE\xFF"sv)) return {};  // UTF-32
    if (StartsWith(bytes, kUtf16LeMark)) return {Encoding::kUtf16Le, 1};
    if (StartsWith(bytes, kUtf16BeMark)) return {Encoding::kUtf16Be, 1};
    if (IsAsciiWithoutNul(bytes)) return {Encoding::kUtf8, 1};

    const auto confidence = [](std::int64_t lead) {
        constexpr double kHalfSureLead = 12;
        return static_cast<double>(lead) / (static_cast<double>(lead) + kHalfSureLead);
    };
    if (const int pairs = LeadingBigEndianAscii(bytes)) return {Encoding::kUtf16Be, confidence(pairs)};
    const DetectionResult found = DetectEncoding(DetectorOf(maps.tables()), bytes.data(), bytes.size());
    Encoding encoding = EncodingOfCode(found.encoding);
    if (encoding == Encoding::kUtf16Le && !found.declared) encoding = CheckUtf16(bytes);
    if (encoding == Encoding::kUnknown) return {};
    return {encoding, found.declared ? 1 : confidence(found.lead)};
}

Decoded Decode(std::string_view bytes, Encoding encoding, const CodeMaps& maps) {
    if (encoding == Encoding::kUnknown) encoding = Detect(bytes, maps).encoding;
    if (encoding == Encoding::kUnknown) encoding = IsValidUtf8(bytes) ? Encoding::kUtf8 : Encoding::kGbk;
    const bool grows = encoding == Encoding::kGbk || encoding == Encoding::kBig5;
    Decoded decoded;
    decoded.text.reserve(bytes.size() + (grows ? bytes.size() / 2 : 0));
    switch (encoding) {
        case Encoding::kGbk:
            DoubleByteDecoder(bytes, *maps.tables().gbk.to_utf8, true, false, decoded).Run();
            break;
        case Encoding::kBig5:
            DoubleByteDecoder(bytes, *maps.tables().big5.to_utf8, false, maps.tables().big5_plane_2, decoded).Run();
            break;
        case Encoding::kUtf16Le:
            DecodeUtf16<LoadUnitLowFirst>(bytes, kUtf16LeMark, decoded);
            break;
        case Encoding::kUtf16Be:
            DecodeUtf16<LoadUnitHighFirst>(bytes, kUtf16BeMark, decoded);
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
