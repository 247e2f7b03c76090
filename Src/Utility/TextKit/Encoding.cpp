#include <algorithm>
#include <charconv>
#include <cstring>

#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/CodeMapTables.h"
#include "Utility/TextKit/Encodings.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::uint32_t kReplacementCharacter = 0xFFFD;

// Bytes are written through a buffer of this many input bytes. A malformed byte grows most, to "&#65533;".
constexpr std::ptrdiff_t kBlock = 1024;
constexpr std::size_t kMostPerByte = sizeof "&#65533;" - 1;

class Encoder {
public:
    Encoder(std::string_view text, Unmappable unmappable, Encoded& encoded)
        : text_(text), unmappable_(unmappable), encoded_(encoded) {}

    // `write(code_point, out)` writes a character that is not ASCII and returns whether the target has it.
    template <typename WriteAscii, typename Write>
    void Run(WriteAscii write_ascii, Write write) {
        char buffer[kMostPerByte * (kBlock + 4)];
        const char *pos = text_.data(), *const end = pos + text_.size();
        while (pos < end) {
            const char* const block_end = pos + std::min(kBlock, end - pos);
            char* out = buffer;
            while (pos < block_end) {
                if (IsAscii(ToByte(*pos))) {
                    const char* const run_end = SkipAscii(pos, block_end);
                    write_ascii(pos, run_end, out);
                    pos = run_end;
                    continue;
                }
                const Utf8Sequence sequence = ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos));
                const std::uint32_t code_point =
                    sequence.valid ? Utf8CodePoint(pos, sequence.length) : kReplacementCharacter;
                const bool written = write(code_point, out);
                if (!written) WriteUnmappable(code_point, out);
                if (!written || !sequence.valid) Count(pos);
                pos += sequence.length;
            }
            encoded_.bytes.append(buffer, static_cast<std::size_t>(out - buffer));
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

    std::string_view text_;
    Unmappable unmappable_;
    Encoded& encoded_;
};

void CopyRun(const char* pos, const char* run_end, char*& out) {
    const auto length = static_cast<std::size_t>(run_end - pos);
    std::memcpy(out, pos, length);
    out += length;
}

// `plane_2`: whether the codes of Big5 for plane 2 are known.
void EncodeDoubleByte(Encoder encoder, const std::uint16_t* codes, bool plane_2) {
    encoder.Run(CopyRun, [codes, plane_2](std::uint32_t code_point, char*& out) {
        const unsigned code = code_point <= 0xFFFF ? codes[code_point] : plane_2 ? Plane2ToBig5(code_point) : 0;
        if (code == 0) return false;
        if (code > 0xFF) *out++ = ToChar(code >> 8);
        *out++ = ToChar(code & 0xFF);
        return true;
    });
}

void EncodeUtf16(Encoder encoder, bool high_byte_first) {
    const auto write_unit = [high_byte_first](unsigned unit, char*& out) {
        StoreUcs2(high_byte_first ? (unit & 0xFF) << 8 | unit >> 8 : unit, out);
        out += 2;
    };
    encoder.Run(
        [=](const char* pos, const char* run_end, char*& out) {
            for (; pos != run_end; ++pos) write_unit(ToByte(*pos), out);
        },
        [=](std::uint32_t code_point, char*& out) {
            if (code_point > 0xFFFF) {
                write_unit(0xD800 | (code_point - 0x10000) >> 10, out);
                code_point = 0xDC00 | (code_point & 0x3FF);
            }
            write_unit(code_point, out);
            return true;
        });
}

}  // namespace

Encoded Encode(std::string_view utf8_text, Encoding encoding, Unmappable unmappable, const CodeMaps& maps) {
    Encoded encoded;
    encoded.bytes.reserve(utf8_text.size() *
                          (encoding == Encoding::kUtf16Le || encoding == Encoding::kUtf16Be ? 2 : 1));
    Encoder encoder(utf8_text, unmappable, encoded);
    switch (encoding) {
        case Encoding::kGbk:
            EncodeDoubleByte(encoder, maps.tables().gbk.to_code, false);
            break;
        case Encoding::kBig5:
            EncodeDoubleByte(encoder, maps.tables().big5.to_code, maps.tables().big5_plane_2);
            break;
        case Encoding::kUtf16Le:
        case Encoding::kUtf16Be:
            EncodeUtf16(encoder, encoding == Encoding::kUtf16Be);
            break;
        default:
            encoder.Run(CopyRun, [](std::uint32_t code_point, char*& out) {
                out = WriteUtf8(code_point, out);
                return true;
            });
    }
    return encoded;
}

}  // namespace textkit
