// UTF-8 from and to wide strings, and to UCS-2.

#include "CodeTrans/Primitives/Utf8.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "CodeTrans/Primitives/TableRoute.h"
#include "Common/Contest.h"
#include "Common/Peers.h"

#ifdef UTILITY_BENCHMARK_ICU
#include <unicode/ustring.h>
#endif

namespace {

using namespace bench;

void AddDecoding(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    Contest to_wide("utf8_to_unicode", kind, size, text.size(), [&text] { return Convert("WCHAR_T", "UTF-8", text); });
    to_wide.Add("ours", [&text] {
        return [utf8 = text, wide = std::vector<wchar_t>(text.size() + 1)]() mutable {
            return BytesAt(wide.data(), utf8_to_unicode(reinterpret_cast<unsigned char*>(utf8.data()), wide.data()));
        };
    });
    to_wide.Add("iconv", [&text] {
        return [&text, peer = IconvPeer("WCHAR_T", "UTF-8", 4 * text.size())]() mutable { return peer.Convert(text); };
    });
    Contest to_units("utf8tou", kind, size, text.size(), [&text] { return Convert("UCS-2LE", "UTF-8", text); });
    to_units.Add("ours", [&text] {
        return [utf8 = text, units = std::vector<char>(2 * text.size() + 1)]() mutable {
            return BytesAt(units.data(), 2 * utf8tou(utf8.data(), units.data()));
        };
    });
    to_units.Add("iconv", [&text] {
        return [&text, peer = IconvPeer("UCS-2LE", "UTF-8", 2 * text.size())]() mutable { return peer.Convert(text); };
    });
#ifdef UTILITY_BENCHMARK_ICU
    to_units.Add("icu", [&text] {
        return [&text, units = std::vector<UChar>(text.size() + 1)]() mutable {
            UErrorCode error = U_ZERO_ERROR;
            int32_t count = 0;
            u_strFromUTF8(units.data(), static_cast<int32_t>(units.size()), &count, text.data(),
                          static_cast<int32_t>(text.size()), &error);
            return BytesAt(units.data(), 2 * static_cast<std::size_t>(count));
        };
    });
#endif
    if (kind != Kind::kEnglish) return;
    to_wide.Add("widening", [&text] {
        return [&text, wide = std::vector<wchar_t>(text.size())]() mutable {
            for (std::size_t i = 0; i < text.size(); ++i) wide[i] = static_cast<unsigned char>(text[i]);
            return BytesAt(wide.data(), sizeof(wchar_t) * text.size());
        };
    });
    to_units.Add("widening", [&text] {
        return [&text, units = std::vector<char16_t>(text.size())]() mutable {
            for (std::size_t i = 0; i < text.size(); ++i) units[i] = static_cast<unsigned char>(text[i]);
            return BytesAt(units.data(), 2 * text.size());
        };
    });
}

void AddEncoding(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    const std::wstring wide = utf8_to_unicode(text.c_str());
    const std::string bytes(reinterpret_cast<const char*>(wide.data()), sizeof(wchar_t) * wide.size());
    // Bytes of UTF-8, as in the other direction.
    Contest to_utf8("unicode_to_utf8", kind, size, text.size(), [&text] { return text; });
    to_utf8.Add("ours", [wide] {
        return [wide] {
            unsigned char* utf8 = nullptr;
            const std::size_t length = unicode_to_utf8(wide.data(), wide.size(), &utf8);
            struct Owned {
                unsigned char* bytes;
                std::size_t length;
                Owned(unsigned char* b, std::size_t l) : bytes(b), length(l) {}
                Owned(const Owned&) = delete;
                Owned& operator=(const Owned&) = delete;
                ~Owned() { std::free(bytes); }
                explicit operator std::string() const { return std::string(BytesAt(bytes, length)); }
            };
            return Owned(utf8, length);
        };
    });
    to_utf8.Add("iconv", [bytes] {
        return [bytes, peer = IconvPeer("UTF-8", "WCHAR_T", bytes.size())]() mutable { return peer.Convert(bytes); };
    });
#ifdef UTILITY_BENCHMARK_ICU
    to_utf8.Add("icu", [bytes] {
        return [bytes, utf8 = std::vector<char>(bytes.size()), units = std::vector<UChar>(bytes.size())]() mutable {
            UErrorCode error = U_ZERO_ERROR;
            int32_t count = 0, length = 0;
            u_strFromUTF32(units.data(), static_cast<int32_t>(units.size()), &count,
                           reinterpret_cast<const UChar32*>(bytes.data()), static_cast<int32_t>(bytes.size() / 4),
                           &error);
            u_strToUTF8(utf8.data(), static_cast<int32_t>(utf8.size()), &length, units.data(), count, &error);
            return BytesAt(utf8.data(), static_cast<std::size_t>(length));
        };
    });
#endif
    if (kind != Kind::kEnglish) return;
    to_utf8.Add(
        "memcpy",
        [bytes] {
            return [bytes, copy = std::vector<char>(bytes.size())]() mutable {
                // As many bytes as are read. The narrowing loop would be as good a limit; this is what it cannot beat.
                std::memcpy(copy.data(), bytes.data(), bytes.size());
                return BytesAt(copy.data(), copy.size());
            };
        },
        [](std::string_view copy) {
            std::string ascii;
            for (std::size_t i = 0; i < copy.size(); i += sizeof(wchar_t)) ascii += copy[i];
            return ascii;
        });
}

}  // namespace

void bench::SetUpContests() {
    for (const Kind kind : {Kind::kChinese, Kind::kEnglish, Kind::kMixed, Kind::kHtml}) {
        for (const std::size_t size : kSizes) {
            AddDecoding(kind, size);
            AddEncoding(kind, size);
        }
    }
}
