// Reading, copying and writing files of any content, at any place and size.

#include <TextKit.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "FuzzSupport.h"

namespace {

std::string BytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void CheckReading(const std::string& path, const std::string& content, long offset, std::size_t count, bool whole) {
    std::string expected;
    const std::size_t wanted = count == 0 && whole ? content.size() : count;
    if (offset >= 0 && static_cast<std::size_t>(offset) < content.size()) {
        expected = content.substr(static_cast<std::size_t>(offset), wanted);
    }
    expected.resize(wanted);
    CReadFile reader;
    for (int i = 0; i < 2; ++i) {
        char* bytes = nullptr;
        std::string text;
        FUZZ_CHECK(reader.ReadFile(path.c_str(), &bytes, offset, count, whole) == wanted);
        const std::unique_ptr<char[]> owner(bytes);
        FUZZ_CHECK(std::string(bytes, wanted) == expected && bytes[wanted] == '\0');
        const std::string visible = fuzz::Without(expected, std::string_view("\0", 1));
        FUZZ_CHECK(reader.ReadFile(path.c_str(), text, offset, count, whole) == visible.size() && text == visible);
    }
    FUZZ_CHECK(get_file_size(path.c_str()) == static_cast<long>(content.size()));
    FUZZ_CHECK(IsEnglishTextFile(path.c_str()) == IsEnglishText(content.c_str()));
}

void CheckStreams(const std::string& path, const std::string& content, int max_words) {
    std::FILE* const stream = std::fopen(path.c_str(), "rb");
    const std::size_t lines = GetFileLinesCount(stream);
    const auto feeds = static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n'));
    FUZZ_CHECK(lines >= feeds && lines <= feeds + 1 + content.size() / 999);
    std::vector<std::string> words;
    FUZZ_CHECK(ReadNWord(stream, max_words, words) == words.size());
    FUZZ_CHECK(words.size() <= static_cast<std::size_t>(std::max(max_words, 0)));
    for (const std::string& word : words) FUZZ_CHECK(!word.empty() && content.find(word) != std::string::npos);
    (void)std::fclose(stream);
}

void CheckCopying(const std::string& path, const std::string& content, std::size_t limit, std::size_t buffer_size) {
    static const std::string copy = fuzz::Folder::File("copy");
    FUZZ_CHECK(FileCopy(path.c_str(), copy.c_str(), buffer_size));
    FUZZ_CHECK(BytesOf(copy) == (buffer_size == 0 ? "" : content));
    std::FILE* const source = std::fopen(path.c_str(), "rb");
    std::FILE* const grown = std::fopen(copy.c_str(), "wb+");
    const std::size_t wanted = limit == 0 ? content.size() : limit;
    const bool is_whole = buffer_size != 0 && wanted <= content.size();
    const long length = FileCopy(source, grown, buffer_size, nullptr, limit);
    FUZZ_CHECK(length == (is_whole ? static_cast<long>(wanted) : -2));
    fuzz::Exact buffer(buffer_size);
    const std::size_t end = content.size() / 2 + 3;
    const std::size_t copied = FileCopy(source, grown, limit, end, buffer.bytes(), buffer_size, nullptr);
    const std::size_t available = limit < std::min(end, content.size()) ? std::min(end, content.size()) - limit : 0;
    FUZZ_CHECK(copied == (buffer_size == 0 ? 0 : available));
    (void)std::fclose(source), (void)std::fclose(grown);
    const std::string part = buffer_size == 0 ? "" : content.substr(0, wanted);
    FUZZ_CHECK(BytesOf(copy) == part + (copied == 0 ? "" : content.substr(limit, copied)));
}

void CheckTextKit(const std::string& path, const std::string& content) {
    std::error_code error;
    FUZZ_CHECK(textkit::WriteFile(path, content, error) && !error);
    FUZZ_CHECK(textkit::ReadFile(path, error) == content && !error);
    FUZZ_CHECK(textkit::IsValidUtf8(textkit::ReadTextFile(path, error).text) && !error);
}

void CheckWriting(const std::string& path, const std::string& content) {
    const std::string text = content.substr(0, content.find('\0'));
    FUZZ_CHECK(gfn_bWriteFile(path.c_str(), content) && BytesOf(path) == text);
    FUZZ_CHECK(gfn_bAddFile(path.c_str(), content) && BytesOf(path) == text + text);
    std::FILE* const stream = std::fopen(path.c_str(), "wb");
    WriteLog(stream, content);
    FUZZ_CHECK(tstring_save(content, stream) == content.size());
    (void)std::fclose(stream);
    const char length[] = {static_cast<char>(content.size() & 0xFF), static_cast<char>(content.size() >> 8 & 0xFF), 0,
                           0};
    const std::string written = BytesOf(path), entry = written.substr(written.find("] ") + 2);
    FUZZ_CHECK(entry == text + '\n' + std::string(length, sizeof length) + content);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = fuzz::Folder::File("file");
    fuzz::Input input(data, size);
    const long offset = static_cast<long>(input.Number(300)) - 5;
    const std::size_t count = input.Number(300), buffer_size = input.Number(50);
    const std::string content = input.Rest();
    fuzz::WriteBytes(path, content);
    for (const bool whole : {false, true}) CheckReading(path, content, offset, count, whole);
    CheckStreams(path, content, static_cast<int>(count % 20) - 1);
    CheckCopying(path, content, count, buffer_size);
    CheckWriting(path, content);
    if (count % 8 == 0) CheckTextKit(path, content);  // writes to the disk, which takes its time
    return 0;
}
