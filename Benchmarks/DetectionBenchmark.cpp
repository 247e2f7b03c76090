// Telling encodings: whole texts, pages, and many short windows.

#include "CodeTrans/CodeMaps/Detection.h"

#include <cstring>
#include <numeric>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Common/Contest.h"
#include "Utility/TextKit.h"

#ifdef UTILITY_BENCHMARK_ICU
#include <unicode/ucsdet.h>
#endif
#ifdef UTILITY_BENCHMARK_UCHARDET
#include <uchardet/uchardet.h>
#endif

namespace {

using namespace bench;

constexpr struct {
    int code;
    const char *name, *iconv_name;
} kEncodings[] = {
    {ENCODE_GBK, "gbk", "GBK"},
    {ENCODE_BIG5, "big5", "BIG5"},
    {ENCODE_UTF8, "utf8", "UTF-8"},
    {ENCODE_UNICODE, "ucs2", "UCS-2LE"},
};

// The texts that a run looks at, and how it ends: right if all, or 9 in 10 of the short ones, are told right.
struct Texts {
    std::vector<std::string> texts;
    int right_code;

    std::size_t TotalBytes() const {
        return std::accumulate(texts.begin(), texts.end(), std::size_t{0},
                               [](std::size_t sum, const std::string& text) { return sum + text.size(); });
    }
    const char* Judge(std::size_t right) const {
        return texts.size() > 1 ? right * 10 >= texts.size() * 9 ? "right" : "wrong" : right == 1 ? "right" : "wrong";
    }
};

// `tell(text)` gives a code, or whatever else tells time and can be thrown away.
template <typename Tell>
auto RunOver(const Texts& texts, Tell tell) {
    return [texts, tell]() mutable {
        std::size_t right = 0;
        for (const std::string& text : texts.texts) right += tell(text) == texts.right_code;
        return right;
    };
}

void AddTexts(const std::string& operation, const std::string& kind, const std::string& size, const Texts& texts) {
    Contest contest(operation, kind, size, texts.TotalBytes(), [] { return "right"; });
    const auto judge = [texts](std::size_t right) { return texts.Judge(right); };
    contest.Add(
        "ours",
        [=] {
            return RunOver(texts,
                           [](const std::string& text) { return CodeTrans_CodeDetect(text.data(), text.size()); });
        },
        judge);
    // What the peers make of it is theirs: they are timed, not judged.
    const auto anything = [](std::size_t) { return "right"; };
#ifdef UTILITY_BENCHMARK_UCHARDET
    contest.Add(
        "uchardet",
        [=] {
            const std::shared_ptr<uchardet> detector(uchardet_new(), &uchardet_delete);
            return RunOver(texts, [detector](const std::string& text) {
                uchardet_reset(detector.get());
                uchardet_handle_data(detector.get(), text.data(), text.size());
                uchardet_data_end(detector.get());
                return static_cast<int>(uchardet_get_charset(detector.get())[0]);
            });
        },
        anything);
#endif
#ifdef UTILITY_BENCHMARK_ICU
    contest.Add(
        "icu",
        [=] {
            UErrorCode opening = U_ZERO_ERROR;
            const std::shared_ptr<UCharsetDetector> detector(ucsdet_open(&opening), &ucsdet_close);
            return RunOver(texts, [detector](const std::string& text) {
                UErrorCode error = U_ZERO_ERROR;
                ucsdet_setText(detector.get(), text.data(), static_cast<int32_t>(text.size()), &error);
                const UCharsetMatch* const match = ucsdet_detect(detector.get(), &error);
                return match == nullptr ? 0 : static_cast<int>(ucsdet_getName(match, &error)[0]);
            });
        },
        anything);
#endif
    static_cast<void>(anything);
}

}  // namespace

void bench::SetUpContests() {
    CodeTrans_Initialize(UTILITY_BENCHMARK_DATA_FILE);
    for (const auto& encoding : kEncodings) {
        const std::string operation = std::string("CodeTrans_CodeDetect-") + encoding.name;
        for (const Kind kind : {Kind::kChinese, Kind::kHtml})
            for (const std::size_t size : kSizes)
                if (size > 16)
                    AddTexts(operation, NameOf(kind), NameOfSize(size),
                             {{Text(kind, encoding.iconv_name, size)}, encoding.code});
        const std::size_t unit = encoding.code == ENCODE_UTF8 ? 3 : 2;
        for (const std::size_t characters : {std::size_t{16}, std::size_t{128}})
            AddTexts(operation, "windows", std::to_string(characters),
                     {Windows(Kind::kChinese, encoding.iconv_name, unit * characters, 256), encoding.code});
    }
    const std::string& english = Text(Kind::kEnglish, "UTF-8", 1 << 20);
    AddTexts("CodeTrans_CodeDetect-ascii", "english", "1M", {{english}, ENCODE_GBK});
}
