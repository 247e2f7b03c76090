// The locale route against the C library's own conversion under the same locale.

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <vector>

#include "CodeTrans/CodeMaps/Conversion.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/Primitives/LocaleRoute.h"
#include "CodeTrans/Primitives/Utf8.h"
#include "Common/Contest.h"
#include "Common/Peers.h"

namespace {

using namespace bench;

std::string BytesOf(const std::wstring& wide) {
    return std::string(BytesAt(wide.data(), sizeof(wchar_t) * wide.size()));
}

auto Mbstowcs(const std::string& gbk) {
    return [gbk, wide = std::vector<wchar_t>(gbk.size() + 1)]() mutable {
        return BytesAt(wide.data(), sizeof(wchar_t) * std::mbstowcs(wide.data(), gbk.c_str(), gbk.size()));
    };
}

auto Wcstombs(const std::wstring& wide) {
    return [wide, gbk = std::vector<char>(2 * wide.size() + 1)]() mutable {
        return BytesAt(gbk.data(), std::wcstombs(gbk.data(), wide.c_str(), gbk.size()));
    };
}

void AddText(Kind kind, std::size_t size) {
    const std::string& gbk = Text(kind, "GBK", size);
    const std::string utf8 = Convert("UTF-8", "GBK", gbk);
    const std::wstring wide = utf8_to_unicode(utf8.c_str());
    // All speeds are those of the GBK text.
    const auto to_utf8 = [](std::string_view wide_bytes) { return Convert("UTF-8", "WCHAR_T", wide_bytes); };

    Contest("ANSIToUnicode", kind, size, gbk.size(), [=] { return BytesOf(wide); })
        .Add("ours",
             [gbk] {
                 return [gbk, out = std::wstring()]() mutable {
                     ANSIToUnicode(gbk, out);
                     return BytesAt(out.data(), sizeof(wchar_t) * out.size());
                 };
             })
        .Add("libc", [gbk] { return Mbstowcs(gbk); });
    Contest("UnicodeToANSI", kind, size, gbk.size(), [=] { return gbk; })
        .Add("ours",
             [wide] {
                 return [wide, out = std::string()]() mutable {
                     UnicodeToANSI(wide, out);
                     return std::string_view(out);
                 };
             })
        .Add("libc", [wide] { return Wcstombs(wide); });
    Contest("ANSIToUTF8", kind, size, gbk.size(), [=] { return utf8; })
        .Add("ours",
             [gbk] {
                 return [gbk, out = std::string()]() mutable {
                     ANSIToUTF8(gbk.c_str(), out);
                     return std::string_view(out);
                 };
             })
        .Add("iconv",
             [gbk] {
                 return [gbk, peer = IconvPeer("UTF-8", "GBK", 2 * gbk.size())]() mutable { return peer.Convert(gbk); };
             })
        .Add(
            "libc", [gbk] { return Mbstowcs(gbk); }, to_utf8);
    Contest("UTF8ToANSI", kind, size, gbk.size(), [=] { return gbk; })
        .Add("ours",
             [utf8] {
                 return [utf8, out = std::string()]() mutable {
                     UTF8ToANSI(utf8.c_str(), out);
                     return std::string_view(out);
                 };
             })
        .Add("iconv",
             [utf8] {
                 return [utf8, peer = IconvPeer("GBK", "UTF-8", utf8.size())]() mutable { return peer.Convert(utf8); };
             })
        .Add("libc", [wide] { return Wcstombs(wide); });
    Contest("CodeTrans_ToUtf8", kind, size, gbk.size(), [=] { return utf8; })
        .Add("ours",
             [gbk] {
                 return [gbk, out = std::vector<char>(2 * gbk.size() + 1)]() mutable {
                     unsigned long length = 0;
                     CodeTrans_ToUtf8(ENCODE_GBK, gbk.c_str(), gbk.size(), out.data(), length);
                     return BytesAt(out.data(), length);
                 };
             })
        .Add(
            "libc", [gbk] { return Mbstowcs(gbk); }, to_utf8);
    Contest("CodeTrans_ToAnsi", kind, size, gbk.size(), [=] { return gbk; })
        .Add("ours",
             [utf8] {
                 return [utf8, out = std::vector<char>(utf8.size() + 1)]() mutable {
                     unsigned long length = 0;
                     CodeTrans_ToAnsi(ENCODE_UTF8, utf8.c_str(), utf8.size(), out.data(), length);
                     return BytesAt(out.data(), length);
                 };
             })
        .Add("libc", [wide] { return Wcstombs(wide); });
}

}  // namespace

void bench::SetUpContests() {
    if (std::setlocale(LC_ALL, "zh_CN.gbk") == nullptr) {
        std::cerr << "no locale zh_CN.gbk here: nothing to compare with\n";
        return;
    }
    for (const Kind kind : {Kind::kChinese, Kind::kEnglish, Kind::kMixed})
        for (const std::size_t size : kSizes) AddText(kind, size);
}
