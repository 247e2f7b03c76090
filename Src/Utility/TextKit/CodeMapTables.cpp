#include "Utility/TextKit/CodeMapTables.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <new>
#include <utility>

#include "CodeTrans/Tables/CodeTable.h"
#include "CodeTrans/Tables/GbkToUnicode.h"

namespace utility::internal {

namespace {

#ifdef UTILITY_EMBED_CODEMAPS
#include "EmbeddedCodeMaps.inc"

constexpr bool kEmbedded = true;
constexpr PairTable<std::uint16_t> kBig5ToUnicode =
    PairsOfMap([](unsigned char lead, unsigned char trail) { return kEmbeddedBig5Map[MapIndex(lead, trail)]; });
constexpr DetectionTable kDetector{kEmbeddedStates, std::size(kEmbeddedStates)};
#else
constexpr bool kEmbedded = false;
constexpr PairTable<std::uint16_t> kBig5ToUnicode{};
constexpr DetectionTable kDetector{};
#endif

constexpr PairTable<std::uint32_t> kBig5ToUtf8 = Utf8OfPairs(kBig5ToUnicode);
constexpr UnicodeToCode kUnicodeToBig5 = InvertPairs(kBig5ToUnicode, kFirstBig5EncoderLead);
constexpr textkit::CodeMaps::Tables kCompiledIn{
    {&kGbkToUtf8, CodeTable}, {&kBig5ToUtf8, kUnicodeToBig5.data()}, kEmbedded, kDetector};

struct Plane2Code {
    std::uint16_t code, low;  // low 16 bits of the code point
};
constexpr Plane2Code kPlane2ByCode[] = {
#include "Big5Plane2.inc"
};
static_assert(std::size(kPlane2ByCode) == 1713);

// Those that the encoder writes, by code point; no two codes share one.
constexpr std::size_t kPlane2EncoderCodes = 291;
constexpr auto kPlane2ByCodePoint = [] {
    std::array<Plane2Code, kPlane2EncoderCodes> sorted{};
    std::size_t count = 0;
    for (const Plane2Code& entry : kPlane2ByCode) {
        if (entry.code >> 8 < kFirstBig5EncoderLead) continue;
        std::size_t place = count++;
        for (; place > 0 && sorted[place - 1].low > entry.low; --place) sorted[place] = sorted[place - 1];
        sorted[place] = entry;
    }
    return sorted;
}();
static_assert(kPlane2ByCodePoint.front().code != 0);
constexpr std::uint32_t kPlane2 = 0x20000;

// The tables of a data file and what the others point to.
struct TablesOfFile {
    LoadedTables file;
    PairTable<std::uint32_t> gbk_utf8{}, big5_utf8{};
    UnicodeToCode gbk_codes{}, big5_codes{};
    textkit::CodeMaps::Tables tables;

    void Finish() {
        const auto pairs_of = [](const PairTable<std::uint16_t>& map) {
            return PairsOfMap([&](unsigned char lead, unsigned char trail) { return map[PairIndex(lead, trail)]; });
        };
        *file.gbk_to_unicode = pairs_of(*file.gbk_to_unicode);
        *file.big5_to_unicode = pairs_of(*file.big5_to_unicode);
        gbk_utf8 = Utf8OfPairs(*file.gbk_to_unicode);
        big5_utf8 = Utf8OfPairs(*file.big5_to_unicode);
        gbk_codes = InvertPairs(*file.gbk_to_unicode, kFirstLead);
        constexpr unsigned kEuroSign = 0x20AC;
        if (gbk_codes[kEuroSign] == 0) gbk_codes[kEuroSign] = 0x80;
        big5_codes = InvertPairs(*file.big5_to_unicode, kFirstBig5EncoderLead);
        tables = {{&gbk_utf8, gbk_codes.data()},
                  {&big5_utf8, big5_codes.data()},
                  true,
                  {file.states.get(), file.state_count, file.scan_form.get()}};
    }
};

}  // namespace

DetectionTable DetectorOf(const textkit::CodeMaps::Tables& tables) {
    DetectionTable detector = tables.detector;
    if (detector.form == nullptr && detector.states != nullptr && detector.states == kDetector.states) {
        static const ScanForm form(kDetector.states, kDetector.count);
        detector.form = &form;
    }
    return detector;
}

std::uint32_t Big5ToPlane2(unsigned code) {
    const auto* const found = std::lower_bound(std::begin(kPlane2ByCode), std::end(kPlane2ByCode), code,
                                               [](const Plane2Code& entry, unsigned c) { return entry.code < c; });
    return found != std::end(kPlane2ByCode) && found->code == code ? kPlane2 | found->low : 0;
}

unsigned Plane2ToBig5(std::uint32_t code_point) {
    const auto* const found =
        std::lower_bound(kPlane2ByCodePoint.begin(), kPlane2ByCodePoint.end(), code_point,
                         [](const Plane2Code& entry, std::uint32_t c) { return (kPlane2 | entry.low) < c; });
    return found != kPlane2ByCodePoint.end() && (kPlane2 | found->low) == code_point ? found->code : 0u;
}

}  // namespace utility::internal

namespace textkit {

using namespace utility::internal;

// The compiled-in tables are nobody's to free: a pointer without an owner.
CodeMaps::CodeMaps() noexcept : tables_(std::shared_ptr<const Tables>(), &kCompiledIn) {}

CodeMaps::CodeMaps(std::shared_ptr<const Tables> tables) noexcept : tables_(std::move(tables)) {}

std::optional<CodeMaps> CodeMaps::Load(const std::string& path) {
    const auto maps = std::make_shared<TablesOfFile>();
    constexpr int kNoMemory = -127;
    const int result = LoadTables(path.c_str(), maps->file);
    if (result == kNoMemory) throw std::bad_alloc();
    if (result != 0) return std::nullopt;
    maps->Finish();
    return CodeMaps(std::shared_ptr<const Tables>(maps, &maps->tables));
}

}  // namespace textkit
