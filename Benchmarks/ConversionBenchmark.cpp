// The table route: GBK and Big5 to UCS-2, UTF-8 to GBK.

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Conversion.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/Primitives/TableRoute.h"
#include "Common/Contest.h"
#include "Common/Peers.h"

namespace {

using namespace bench;

// What a map of the data file makes of a text, unit by unit: the right answer where peers differ from it.
std::string Ucs2ByMap(const std::string& text, int code) {
    static const std::string file = [] {
        std::ifstream in(UTILITY_BENCHMARK_DATA_FILE, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }();
    const auto byte_at = [&](std::size_t pos) { return static_cast<unsigned char>(text[pos]); };
    std::string units;
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        if (byte_at(pos) < 0x80) {
            units.append({text[pos], '\0'});
        } else if (pos + 1 == text.size()) {
            units += "\xFF\xFE";
        } else {
            const std::size_t row = std::max<std::size_t>(byte_at(pos + 1), 0x40) - 0x40;
            const std::size_t entry = (code == ENCODE_BIG5 ? 192 * 128 : 0) + row * 128 + byte_at(pos) - 0x80;
            units.append(file, 2 * entry, 2);
            ++pos;
        }
    }
    return units;
}

void AddDecoding(int code, const char* encoding, const char* icu_name) {
    const std::string operation = std::string("GBKBig5_ToUnicode-") + (code == ENCODE_GBK ? "gbk" : "big5");
    for (const Kind kind : kAllKinds) {
        for (const std::size_t size : kSizes) {
            const std::string& text = Text(kind, encoding, size);
            Contest contest(operation, kind, size, text.size(), [&text, code] { return Ucs2ByMap(text, code); });
            contest.Add("ours", [&text, code] {
                return [&text, code, units = std::vector<char>(2 * text.size())]() mutable {
                    unsigned long length = units.size();
                    GBKBig5_ToUnicode(code, text.data(), text.size(), units.data(), length);
                    return BytesAt(units.data(), length);
                };
            });
            if (kind == Kind::kDamaged) continue;  // peers differ in what they make of it
            contest.Add("iconv", [&text, encoding] {
                return [&text, peer = IconvPeer("UCS-2LE", encoding, 2 * text.size())]() mutable {
                    return peer.Convert(text);
                };
            });
#ifdef UTILITY_BENCHMARK_ICU
            contest.Add("icu", [&text, icu_name] {
                return [&text, peer = IcuToUtf16(icu_name, text.size())]() mutable { return peer.Convert(text); };
            });
#endif
            if (kind != Kind::kEnglish) continue;
            contest.Add("widening", [&text] {
                return [&text, units = std::vector<char16_t>(text.size())]() mutable {
                    for (std::size_t i = 0; i < text.size(); ++i) units[i] = static_cast<unsigned char>(text[i]);
                    return BytesAt(units.data(), 2 * text.size());
                };
            });
        }
    }
    static_cast<void>(icu_name);
}

void AddUtf8ToGbk() {
    for (const Kind kind : kAllKinds) {
        for (const std::size_t size : kSizes) {
            const std::string& text = Text(kind, "UTF-8", size);
            Contest contest("utf8toGbk", kind, size, text.size(), [&text] {
                std::string units(2 * text.size() + 1, '\0'), gbk(text.size() + 2, '\0');
                std::string copy = text;
                const std::size_t count = utf8tou(copy.data(), units.data());
                utoGbk(units.data(), gbk.data(), count);
                return std::string(gbk.c_str());
            });
            contest.Add("ours", [&text] {
                return [utf8 = text, gbk = std::vector<char>(text.size() + 2)]() mutable {
                    utf8toGbk(utf8.data(), gbk.data());
                    return gbk.data();
                };
            });
            if (kind == Kind::kDamaged) continue;
            contest.Add("iconv", [&text] {
                return [&text, peer = IconvPeer("GBK", "UTF-8", text.size())]() mutable { return peer.Convert(text); };
            });
#ifdef UTILITY_BENCHMARK_ICU
            contest.Add("icu", [&text] {
                return [&text, peer = IcuPeer("GBK", "UTF-8", text.size())]() mutable { return peer.Convert(text); };
            });
#endif
            if (kind != Kind::kEnglish) continue;
            contest.Add("memcpy", [&text] {
                return [&text, copy = std::vector<char>(text.size())]() mutable {
                    std::memcpy(copy.data(), text.data(), text.size());
                    return BytesAt(copy.data(), copy.size());
                };
            });
        }
    }
}

}  // namespace

void bench::SetUpContests() {
    CodeTrans_Initialize(UTILITY_BENCHMARK_DATA_FILE);
    AddDecoding(ENCODE_GBK, "GBK", "windows-936");
    AddDecoding(ENCODE_BIG5, "BIG5-HKSCS", "Big5-HKSCS");
    AddUtf8ToGbk();
}
