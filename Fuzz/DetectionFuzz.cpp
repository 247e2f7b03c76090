// Hostile data files: any bytes behind the two maps may be the automaton. Whatever loads must detect and convert.

#include <TextKit.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMapBytes = 98304, kRecordBytes = 16;
    fuzz::Input input(data, size);
    const std::size_t form = input.Number(9);
    const std::string text = input.Text();
    std::string records = input.Rest();
    if (form < 6) {  // a count that fits, so that the records are used; otherwise it is among the bytes
        const auto count = static_cast<char>(std::min<std::size_t>(records.size() / kRecordBytes, 127));
        records.insert(0, {count, '\0', '\0', '\0'});
    }
    if (form == 9) records.resize(0);
    static const std::string path = fuzz::Folder::File("codemaps");
    static const bool has_maps = (fuzz::WriteBytes(path, std::string(kMapBytes, 'm')), true);
    const long file_size = form == 9 ? kMapBytes - 1 : static_cast<long>(kMapBytes + records.size());
    FUZZ_CHECK(has_maps && truncate(path.c_str(), file_size) == 0);
    std::FILE* const file = std::fopen(path.c_str(), "rb+");
    std::fseek(file, kMapBytes, SEEK_SET);
    FUZZ_CHECK(std::fwrite(records.data(), 1, records.size(), file) == records.size());
    (void)std::fclose(file);
    const int result = CodeTrans_Initialize(path.c_str());
    FUZZ_CHECK(result == 0 || (result >= -4 && result <= -1));
    const int code = CodeTrans_CodeDetect(text.data(), text.size());
    FUZZ_CHECK(result == 0 || code == ENCODE_UNKNOWN);
    for (const int encoding : {ENCODE_GBK, ENCODE_BIG5}) {
        fuzz::Exact units(2 * text.size() + 1);
        unsigned long length = 2 * text.size();
        FUZZ_CHECK(GBKBig5_ToUnicode(encoding, text.data(), text.size(), units.get(), length) == length);
        FUZZ_CHECK(length <= 2 * text.size() && length % 2 == 0);
    }
    CodeTrans_Destroy();

    if (form % 4 != 0) return 0;  // the other way to load a file takes much longer
    const auto maps = textkit::CodeMaps::Load(path);
    FUZZ_CHECK(maps.has_value() == (result == 0));
    if (!maps) return 0;
    const textkit::Detection detection = textkit::Detect(text, *maps);
    FUZZ_CHECK(detection.confidence >= 0 && detection.confidence <= 1);
    for (const auto encoding : {textkit::Encoding::kGbk, textkit::Encoding::kBig5}) {
        const std::string decoded = textkit::Decode(text, encoding, *maps).text;
        FUZZ_CHECK(textkit::IsValidUtf8(decoded));
        textkit::Encode(decoded, encoding, textkit::Unmappable::kQuestionMark, *maps);
    }
    return 0;
}
