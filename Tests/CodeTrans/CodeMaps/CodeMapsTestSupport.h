#ifndef UTILITY_TESTS_CODEMAPSTESTSUPPORT_H
#define UTILITY_TESTS_CODEMAPSTESTSUPPORT_H

// Code-map data files written record by record; text in other encodings by the C library.

#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdint>
#include <string>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "Support/TestSupport.h"

namespace test_support {

struct Record {
    int base, check, fail, value;
};
constexpr int kNeutral = 0x1280D;
constexpr std::size_t kMapsSize = 98304;

// A value without verdict: the four deltas, each raised by 9, as digits of base 20.
constexpr int Score(int gbk, int big5, int unicode, int utf8) {
    return gbk + 9 + 20 * (big5 + 9) + 400 * (unicode + 9) + 8000 * (utf8 + 9);
}

inline void AppendInt(std::string& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

inline std::string DataFileBytes(const std::vector<Record>& records) {
    std::string bytes(kMapsSize, '\0');
    AppendInt(bytes, static_cast<std::uint32_t>(records.size()));
    for (const Record& record : records)
        for (const int field : {record.base, record.check, record.fail, record.value})
            AppendInt(bytes, static_cast<std::uint32_t>(field));
    return bytes;
}

// Writes the bytes to a file and loads it.
inline int Load(const std::string& bytes) {
    const TempFolder folder;
    WriteFileBytes(folder / "maps", bytes);
    return CodeTrans_Initialize((folder / "maps").c_str());
}

// The text in another encoding; empty where that lacks a character.
inline std::string Convert(const char* to, const char* from, std::string text) {
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        ADD_FAILURE() << "the C library knows no " << from << " or " << to;
        return {};
    }
    std::string bytes(4 * text.size() + 4, '\0');
    char *in = text.data(), *out = bytes.data();
    std::size_t in_left = text.size(), out_left = bytes.size();
    const bool whole = iconv(converter, &in, &in_left, &out, &out_left) == 0 &&
                       iconv(converter, nullptr, nullptr, &out, &out_left) == 0;
    iconv_close(converter);
    return whole ? bytes.substr(0, bytes.size() - out_left) : "";
}

// The root leads on every byte to record 1 + byte; these lead nowhere and fall back to the root.
inline std::vector<Record> OneByteAutomaton() {
    std::vector<Record> records(257, Record{1000, 0, 0, kNeutral});
    records[0] = {1, -1, 0, kNeutral};
    return records;
}

}  // namespace test_support

#endif
