#ifndef UTILITY_BENCHMARKS_TEXTS_H
#define UTILITY_BENCHMARKS_TEXTS_H

// Texts to time operations on: made up by a generator, or taken from a folder that the caller of the program names.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class Kind {
    kChinese,  // running text in Simplified characters, Traditional ones where the encoding is Big5
    kEnglish,
    kMixed,    // Chinese with English words and figures
    kHtml,     // a page of that
    kDamaged,  // Chinese with one byte in 64 replaced by any other that is not NUL
};
inline constexpr Kind kAllKinds[] = {Kind::kChinese, Kind::kEnglish, Kind::kMixed, Kind::kHtml, Kind::kDamaged};

const char* NameOf(Kind kind);

inline constexpr std::size_t kSizes[] = {16, 1 << 10, 64 << 10, 1 << 20};

// "16", "1K", "64K", "1M".
std::string NameOfSize(std::size_t bytes);

// A text of at most `bytes` bytes, ending with a whole character (unless damaged), in an encoding that iconv knows by
// that name: "UTF-8", "GBK", "BIG5-HKSCS", "UCS-2LE". The same call gives the same text. Made once and kept.
const std::string& Text(Kind kind, const char* encoding, std::size_t bytes);

// Further pieces of the same text, none of which is the same as another: so that short texts are not learnt by heart by
// the processor's branch predictor.
std::vector<std::string> Windows(Kind kind, const char* encoding, std::size_t bytes, std::size_t count);

// Takes Chinese text from the UTF-8 files *.txt of the subfolders `hans` and `hant` of `folder`, or of `folder` itself
// where there are none, rather than from the generator. To be called first.
void TakeTextsFrom(const std::string& folder);

// The text in another encoding, by the C library; what that lacks is left out.
std::string Convert(const char* to, const char* from, std::string_view text);

}  // namespace bench

#endif
