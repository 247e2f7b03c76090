#include "Detector/Peers.h"

#include <memory>
#include <string_view>
#include <utility>

#include "CodeTrans/CodeMaps/Detection.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"

#ifdef UTILITY_HAVE_UCHARDET
#include <uchardet/uchardet.h>
#endif
#ifdef UTILITY_HAVE_ICU
#include <unicode/ucsdet.h>
#endif

namespace tools {

namespace {

[[maybe_unused]] int CodeOf(std::string_view name) {
    constexpr std::pair<std::string_view, int> kNames[] = {
        {"UTF-8", ENCODE_UTF8}, {"GB18030", ENCODE_GBK},      {"GB2312", ENCODE_GBK},
        {"GBK", ENCODE_GBK},    {"ASCII", ENCODE_GBK},        {"BIG5", ENCODE_BIG5},
        {"Big5", ENCODE_BIG5},  {"UTF-16LE", ENCODE_UNICODE}, {"HZ-GB-2312", ENCODE_UNKNOWN}};
    for (const auto& [known, code] : kNames)
        if (name == known) return code;
    return ENCODE_UNKNOWN;
}

#ifdef UTILITY_HAVE_UCHARDET
Detector Uchardet() {
    const std::shared_ptr<uchardet> detector(uchardet_new(), uchardet_delete);
    return {"uchardet", [detector](const std::string& bytes) {
                uchardet_reset(detector.get());
                uchardet_handle_data(detector.get(), bytes.data(), bytes.size());
                uchardet_data_end(detector.get());
                return CodeOf(uchardet_get_charset(detector.get()));
            }};
}
#endif

#ifdef UTILITY_HAVE_ICU
Detector Icu() {
    UErrorCode error = U_ZERO_ERROR;
    const std::shared_ptr<UCharsetDetector> detector(ucsdet_open(&error), ucsdet_close);
    return {"ICU", [detector](const std::string& bytes) {
                UErrorCode failure = U_ZERO_ERROR;
                ucsdet_setText(detector.get(), bytes.data(), static_cast<int32_t>(bytes.size()), &failure);
                const UCharsetMatch* const match = ucsdet_detect(detector.get(), &failure);
                if (match == nullptr || U_FAILURE(failure)) return static_cast<int>(ENCODE_UNKNOWN);
                return CodeOf(ucsdet_getName(match, &failure));
            }};
}
#endif

}  // namespace

Detector OurDetector(std::string name) {
    return {std::move(name), [](const std::string& bytes) { return CodeTrans_CodeDetect(bytes.data(), bytes.size()); }};
}

std::vector<Detector> Peers() {
    std::vector<Detector> peers;
#ifdef UTILITY_HAVE_UCHARDET
    peers.push_back(Uchardet());
#endif
#ifdef UTILITY_HAVE_ICU
    peers.push_back(Icu());
#endif
    return peers;
}

}  // namespace tools
