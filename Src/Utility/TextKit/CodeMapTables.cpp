#include "Utility/TextKit/CodeMapTables.h"

#include <new>
#include <utility>

#include "CodeTrans/Tables/CodeTable.h"

namespace utility::internal {

namespace {

#ifdef UTILITY_EMBED_CODEMAPS
#include "EmbeddedCodeMaps.inc"

constexpr DoubleByteGrid kBig5ToUnicode = GridOfFileMap(kEmbeddedBig5Map);
constexpr UnicodeToCode kUnicodeToBig5 = InvertGrid(kBig5ToUnicode, kFirstBig5EncoderLead);
constexpr DetectionTable kDetector{kEmbeddedStates, std::size(kEmbeddedStates)};
#else
constexpr DoubleByteGrid kBig5ToUnicode{};
constexpr UnicodeToCode kUnicodeToBig5{};
constexpr DetectionTable kDetector{};
#endif

constexpr textkit::CodeMaps::Tables kCompiledIn{
    {kGbkToUnicode.data(), CodeTable}, {kBig5ToUnicode.data(), kUnicodeToBig5.data()}, kDetector};

// The tables of a data file and what the others point to.
struct TablesOfFile {
    LoadedTables file;
    DoubleByteGrid gbk_grid{}, big5_grid{};
    UnicodeToCode gbk_codes{}, big5_codes{};
    textkit::CodeMaps::Tables tables;

    void Finish() {
        gbk_grid = GridOfFileMap(file.gbk_to_unicode.get());
        big5_grid = GridOfFileMap(file.big5_to_unicode.get());
        gbk_codes = InvertGrid(gbk_grid, kFirstGbkLead);
        constexpr unsigned kEuroSign = 0x20AC;
        if (gbk_codes[kEuroSign] == 0) gbk_codes[kEuroSign] = 0x80;
        big5_codes = InvertGrid(big5_grid, kFirstBig5EncoderLead);
        tables = {{gbk_grid.data(), gbk_codes.data()},
                  {big5_grid.data(), big5_codes.data()},
                  {file.states.get(), file.state_count}};
    }
};

}  // namespace

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
