// TextKit's decoding and encoding against the older calls for the same work and against other converters.

#include <cstdlib>
#include <cstring>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Conversion.h"
#include "CodeTrans/CodeMaps/Detection.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/Primitives/TableRoute.h"
#include "Common/Contest.h"
#include "Common/Peers.h"
#include "Utility/TextKit.h"

namespace {

using namespace bench;
using textkit::Encoding;

constexpr struct {
    Encoding encoding;
    int code;
    const char *name, *iconv_name, *icu_name;
} kEncodings[] = {
    {Encoding::kGbk, ENCODE_GBK, "gbk", "GBK", "GBK"},
    {Encoding::kBig5, ENCODE_BIG5, "big5", "BIG5", "Big5"},
    {Encoding::kUtf8, ENCODE_UTF8, "utf8", "UTF-8", "UTF-8"},
    {Encoding::kUtf16Le, ENCODE_UNICODE, "utf16", "UTF-16LE", "UTF-16LE"},
};

void AddText(Kind kind, std::size_t size) {
    for (const auto& one : kEncodings) {
        const std::string& bytes = Text(kind, one.iconv_name, size);
        const std::string utf8 = Convert("UTF-8", one.iconv_name, bytes);
        Contest decode(std::string("textkit::Decode-") + one.name, kind, size, bytes.size(), [=] { return utf8; });
        decode.Add("ours",
                   [&bytes, one] { return [&bytes, one] { return textkit::Decode(bytes, one.encoding).text; }; });
        decode.Add("iconv", [&bytes, one] {
            return [&bytes, peer = IconvPeer("UTF-8", one.iconv_name, 2 * bytes.size())]() mutable {
                return peer.Convert(bytes);
            };
        });
        Contest encode(std::string("textkit::Encode-") + one.name, kind, size, bytes.size(),
                       [&bytes] { return bytes; });
        encode.Add("ours", [utf8, one] { return [utf8, one] { return textkit::Encode(utf8, one.encoding).bytes; }; });
        encode.Add("iconv", [utf8, one] {
            return [utf8, peer = IconvPeer(one.iconv_name, "UTF-8", 2 * utf8.size())]() mutable {
                return peer.Convert(utf8);
            };
        });
#ifdef UTILITY_BENCHMARK_ICU
        decode.Add("icu", [&bytes, one] {
            return [&bytes, peer = IcuPeer("UTF-8", one.icu_name, 2 * bytes.size())]() mutable {
                return peer.Convert(bytes);
            };
        });
        encode.Add("icu", [utf8, one] {
            return
                [utf8, peer = IcuPeer(one.icu_name, "UTF-8", 2 * utf8.size())]() mutable { return peer.Convert(utf8); };
        });
#endif
        // The library's own call with fixed buffers, plus what validation costs.
        if (one.encoding == Encoding::kGbk || one.encoding == Encoding::kBig5) {
            decode.Add(
                "tables",
                [&bytes, one] {
                    return [&bytes, one, units = std::vector<char>(2 * bytes.size())]() mutable {
                        unsigned long length = units.size();
                        GBKBig5_ToUnicode(one.code, bytes.data(), bytes.size(), units.data(), length);
                        return BytesAt(units.data(), length);
                    };
                },
                [](std::string_view units) { return Convert("UTF-8", "UCS-2LE", units); });
        }
        if (one.encoding == Encoding::kGbk) {
            encode.Add("tables", [utf8] {
                return [text = utf8, gbk = std::vector<char>(utf8.size() + 2)]() mutable {
                    if (textkit::IsValidUtf8(text)) utf8toGbk(text.data(), gbk.data());
                    return gbk.data();
                };
            });
        }
        Contest detect(std::string("textkit::Detect-") + one.name, kind, size, bytes.size(),
                       [one] { return std::to_string(one.code); });
        if (kind != Kind::kChinese || size < 1024) continue;
        detect.Add(
            "ours", [&bytes] { return [&bytes] { return textkit::Detect(bytes).encoding; }; },
            [one](Encoding found) { return found == one.encoding ? std::to_string(one.code) : "another"; });
        detect.Add(
            "tables", [&bytes] { return [&bytes] { return CodeTrans_CodeDetect(bytes.data(), bytes.size()); }; },
            [](int code) { return std::to_string(code); });
    }
    const std::string& text = Text(kind, "UTF-8", size);
    Contest("textkit::IsValidUtf8", kind, size, text.size(), [] { return "valid"; })
        .Add(
            "ours", [&text] { return [&text] { return textkit::IsValidUtf8(text); }; },
            [](bool valid) { return valid ? "valid" : "malformed"; });
}

}  // namespace

void bench::SetUpContests() {
    CodeTrans_Initialize(UTILITY_BENCHMARK_DATA_FILE);
    for (const Kind kind : {Kind::kChinese, Kind::kEnglish, Kind::kMixed, Kind::kHtml})
        for (const std::size_t size : kSizes) AddText(kind, size);
}
