#include "CodeMaps/DataFileTool.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string_view>

namespace tools {

using utility::internal::_tTrieNode;
using utility::internal::kNeutralValue;

namespace {

constexpr unsigned kFirstLead = 0x80, kFirstTrail = 0x40;

void Append(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::uint32_t Take(std::string_view& bytes, std::size_t count) {
    if (bytes.size() < count) throw std::runtime_error("the file is too short");
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    bytes.remove_prefix(count);
    return value;
}

// The bytes from the root ("^") or another state that no byte leads to ("…") to the record.
std::string PathTo(const Records& records, std::size_t record) {
    std::string bytes;
    for (std::size_t steps = 0; steps < records.size(); ++steps) {
        const auto parent = static_cast<std::size_t>(records[record].nCheck);
        if (record == 0) return '^' + FormatBytes(bytes);
        if (parent >= records.size()) break;
        const std::int64_t byte = static_cast<std::int64_t>(record) - records[parent].nBase;
        if (byte < 0 || byte > 255) break;
        bytes.insert(bytes.begin(), static_cast<char>(byte));
        record = parent;
    }
    return "…" + FormatBytes(bytes);
}

void PrintStates(std::ostream& out, const Records& records) {
    out << "# " << records.size() << " records. Number, bytes that lead there (^ from the root, … from the middle of a "
        << "text), deltas for GBK,\n# Big5, Unicode and UTF-8 or verdict, > the record that it falls back "
           "to. Unused "
        << "records are left out.\n";
    std::vector<bool> in_use(records.size());
    for (const _tTrieNode& record : records) {
        for (const std::int32_t link : {record.nCheck, record.nFail})
            if (link >= 0 && static_cast<std::size_t>(link) < records.size())
                in_use[static_cast<std::size_t>(link)] = true;
    }
    for (std::size_t index = 0; index < records.size(); ++index) {
        const _tTrieNode& record = records[index];
        if (record.nCheck < 0 && !in_use[index]) continue;
        out << index << ' ' << PathTo(records, index);
        if (record.nValue != kNeutralValue) out << FormatEffect(UnpackEffect(record.nValue));
        out << " > " << record.nFail << '\n';
    }
}

}  // namespace

CodeMap MapFromGrid(const CodeToUnicode& codes) {
    CodeMap map{};
    for (const auto& [code, code_point] : codes) {
        const auto lead = static_cast<unsigned char>(code >> 8);
        const auto trail = static_cast<unsigned char>(code & 0xFF);
        if (code > 0xFFFF || lead < kFirstLead || trail < kFirstTrail)
            throw std::runtime_error("a code lies outside the map");
        map[utility::internal::MapIndex(lead, trail)] = code_point;
    }
    return map;
}

CodeToUnicode GridFromMap(const CodeMap& map) {
    CodeToUnicode codes;
    std::size_t index = 0;
    for (unsigned trail = kFirstTrail; trail <= 0xFF; ++trail)
        for (unsigned lead = kFirstLead; lead <= 0xFF; ++lead, ++index)
            if (map[index] != 0) codes[lead << 8 | trail] = static_cast<char16_t>(map[index]);
    return codes;
}

DataFile ReadDataFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be opened");
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    std::string_view rest = bytes;
    DataFile data;
    for (CodeMap* map : {&data.gbk, &data.big5})
        for (std::uint16_t& entry : *map) entry = static_cast<std::uint16_t>(Take(rest, 2));
    const std::uint32_t count = Take(rest, 4);
    if (rest.size() / utility::internal::kRecordBytes < count) throw std::runtime_error("the file is too short");
    const auto field = [&] { return static_cast<std::int32_t>(Take(rest, 4)); };
    for (std::uint32_t i = 0; i < count; ++i) {
        _tTrieNode record{};
        for (std::int32_t* value : {&record.nBase, &record.nCheck, &record.nFail, &record.nValue}) *value = field();
        data.records.push_back(record);
    }
    return data;
}

void WriteDataFile(const std::filesystem::path& path, const DataFile& data) {
    std::string bytes;
    for (const CodeMap* map : {&data.gbk, &data.big5})
        for (const std::uint16_t entry : *map) Append(bytes, entry, 2);
    Append(bytes, static_cast<std::uint32_t>(data.records.size()), 4);
    for (const _tTrieNode& record : data.records)
        for (const std::int32_t value : {record.nBase, record.nCheck, record.nFail, record.nValue})
            Append(bytes, static_cast<std::uint32_t>(value), 4);
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    if (!out) throw std::runtime_error(path.string() + ": cannot be written");
}

void PrintSource(std::ostream& out, const DataFile& data) {
    out << "// Made of codemaps.dat by `codemaps embed`; do not edit.\n\n"
           "constexpr std::uint16_t kEmbeddedBig5Map[kMapEntries] = {\n";
    for (std::size_t i = 0; i < data.big5.size(); ++i) out << data.big5[i] << (i % 16 == 15 ? ",\n" : ",");
    out << "};\n\nconst _tTrieNode kEmbeddedStates[] = {\n";
    std::size_t index = 0;
    for (const _tTrieNode& record : data.records) {
        out << '{' << record.nBase << ',' << record.nCheck << ',' << record.nFail << ',' << record.nValue
            << (++index % 4 == 0 ? "},\n" : "},");
    }
    out << "};\n";
}

void PrintDataFile(std::ostream& out, const DataFile& data) {
    WriteGrid(out, "# GBK map\n", GridFromMap(data.gbk));
    WriteGrid(out, "# Big5 map\n", GridFromMap(data.big5));
    PrintStates(out, data.records);
}

}  // namespace tools
