#include <algorithm>
#include <charconv>
#include <cstring>

#include "Internal/Utf8Runs.h"
#include "Internal/Utf8Sequences.h"
#include "Internal/Words.h"
#include "Utility/TextKit/CodeMapTables.h"
#include "Utility/TextKit/Encodings.h"

namespace textkit {

namespace {

using namespace utility::internal;

// Bytes are written through a buffer of this many input bytes. A malformed byte grows most, to "&#65533;".
constexpr std::ptrdiff_t kBlock = 2048;
constexpr std::size_t kMostPerByte = sizeof "&#65533;" - 1;

// What ReadUtf8Runs writes of the characters that are frequent in the target, two bytes each; One(code point) writes any, and
// says whether the target has it. This one is for GBK and Big5.
struct DoubleByteWriter {
    const std::uint16_t* codes;  // of each code point up to FFFF, lead byte highest; 0 for none
    bool plane_2;                // whether the codes of Big5 for plane 2 are known
    char* out = nullptr;

    unsigned Four(CodePoints4 code_points) {
        unsigned known = 4;
        for (unsigned i = 4; i-- > 0;) {
            const unsigned code = codes[code_points[i]];
            StoreWord(static_cast<std::uint16_t>(code << 8 | code >> 8), out + 2 * i);
            known = code > 0xFF ? known : i;
        }
        return known;
    }
    void Took(unsigned count) { out += 2 * count; }
    void Ascii8(const char* bytes) { std::memcpy(out, bytes, 8); }
    void TookAscii(unsigned count) { out += count; }
    bool One(std::uint32_t code_point) {
        const unsigned code = code_point < 0x80      ? code_point
                              : code_point <= 0xFFFF ? codes[code_point]
                              : plane_2              ? Plane2ToBig5(code_point)
                                                     : 0;
        if (code == 0 && code_point != 0) return false;
        if (code > 0xFF) *out++ = ToChar(code >> 8);
        *out++ = ToChar(code & 0xFF);
        return true;
    }
};

template <bool kHighByteFirst>
struct Utf16Writer {
    char* out = nullptr;

    static constexpr std::uint16_t InOrder(unsigned unit) {
        return static_cast<std::uint16_t>(kHighByteFirst ? unit << 8 | unit >> 8 : unit);
    }
    unsigned Four(CodePoints4 code_points) {
        for (unsigned i = 0; i < 4; ++i) StoreWord(InOrder(code_points[i]), out + 2 * i);
        return 4;
    }
    void Took(unsigned count) { out += 2 * count; }
    void Ascii8(const char* bytes) {
        // A byte further on, the low bytes are the ones behind zeros.
        Widen8ToUcs2(bytes, out + kHighByteFirst);
        if (kHighByteFirst) out[0] = '\0';
    }
    void TookAscii(unsigned count) { out += 2 * count; }
    bool One(std::uint32_t code_point) {
        if (code_point > 0xFFFF) {
            StoreWord(InOrder(0xD800 | (code_point - 0x10000) >> 10), out);
            out += 2;
            code_point = 0xDC00 | (code_point & 0x3FF);
        }
        StoreWord(InOrder(code_point), out);
        out += 2;
        return true;
    }
};

class Encoder {
public:
    Encoder(std::string_view text, Unmappable unmappable, Encoded& encoded)
        : text_(text), unmappable_(unmappable), encoded_(encoded) {}

    template <typename Writer>
    void Run(Writer writer) {
        char buffer[kMostPerByte * (kBlock + 4)];
        const char *pos = text_.data(), *const end = pos + text_.size();
        const auto write_one = [&](const char*& place) { WriteOne(place, end, writer); };
        while (pos != end) {
            writer.out = buffer;
            pos = ReadUtf8Runs<ThreeBytes::kStrict>(pos, pos + std::min(kBlock, end - pos), writer, write_one);
            while (end - pos < kUtf8Turn && pos != end) {
                if (end - pos >= 8 && (LoadWord<std::uint64_t>(pos) & kTopBits) == 0) {
                    writer.Ascii8(pos);
                    writer.TookAscii(8);
                    pos += 8;
                } else {
                    write_one(pos);
                }
            }
            encoded_.bytes.append(buffer, writer.out);
        }
    }
    // UTF-8 to UTF-8.
    void Repair() {
        const char *pos = text_.data(), *const end = pos + text_.size();
        while (pos != end) {
            const char* const valid_end = SkipValidUtf8(pos, end);
            encoded_.bytes.append(pos, valid_end);
            pos = valid_end;
            if (pos == end) break;
            Count(pos);
            encoded_.bytes += kUtf8Replacement;
            pos += ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos)).length;
        }
    }

private:
    void Count(const char* place) {
        if (encoded_.replaced++ == 0) encoded_.first_replaced = static_cast<std::size_t>(place - text_.data());
    }

    void WriteUnmappable(std::uint32_t code_point, char*& out) const {
        if (unmappable_ == Unmappable::kQuestionMark) {
            *out++ = '?';
            return;
        }
        constexpr std::ptrdiff_t kMostDigits = 7;
        *out++ = '&';
        *out++ = '#';
        out = std::to_chars(out, out + kMostDigits, code_point).ptr;
        *out++ = ';';
    }

    // The character at `pos`, or what stands for it.
    template <typename Writer>
    void WriteOne(const char*& pos, const char* end, Writer& writer) {
        const Utf8Sequence sequence = ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos));
        const std::uint32_t code_point = sequence.valid ? Utf8CodePoint(pos, sequence.length) : kReplacementCodePoint;
        const bool written = writer.One(code_point);
        if (!written) WriteUnmappable(code_point, writer.out);
        if (!written || !sequence.valid) Count(pos);
        pos += sequence.length;
    }

    std::string_view text_;
    Unmappable unmappable_;
    Encoded& encoded_;
};

}  // namespace

Encoded Encode(std::string_view utf8_text, Encoding encoding, Unmappable unmappable, const CodeMaps& maps) {
    Encoded encoded;
    encoded.bytes.reserve(utf8_text.size() *
                          (encoding == Encoding::kUtf16Le || encoding == Encoding::kUtf16Be ? 2 : 1));
    Encoder encoder(utf8_text, unmappable, encoded);
    switch (encoding) {
        case Encoding::kGbk:
            encoder.Run(DoubleByteWriter{maps.tables().gbk.to_code, false});
            break;
        case Encoding::kBig5:
            encoder.Run(DoubleByteWriter{maps.tables().big5.to_code, maps.tables().big5_plane_2});
            break;
        case Encoding::kUtf16Le:
            encoder.Run(Utf16Writer<false>{});
            break;
        case Encoding::kUtf16Be:
            encoder.Run(Utf16Writer<true>{});
            break;
        default:
            encoder.Repair();
    }
    return encoded;
}

}  // namespace textkit
