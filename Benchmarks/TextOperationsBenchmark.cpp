// TextKit's calls for text against the fixed operation that does the like, on the same text. As a rule the two do not give the
// same, so that what is checked is that either gives something; where they should, it is their answer.

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "ChineseText/CharacterStepping.h"
#include "ChineseText/Sentences.h"
#include "Common/Contest.h"
#include "DateTime/DateParsing.h"
#include "Extraction/EmailExtraction.h"
#include "Extraction/ItemLookup.h"
#include "Files/FileReader.h"
#include "Normalisation/StringFolding.h"
#include "StringToolkit/Joining.h"
#include "StringToolkit/PrefixSearch.h"
#include "StringToolkit/Replacing.h"
#include "StringToolkit/Splitting.h"
#include "StringToolkit/TokenReader.h"
#include "StringToolkit/Trimming.h"
#include "TextKit.h"

namespace {

using namespace bench;

using Strings = std::vector<std::string>;

// Both contenders give a number that must not be 0, or with `same` be the same.
template <typename Ours, typename Fixed>
void AddPair(const std::string& name, const std::string& kind, const std::string& size, std::size_t bytes, Ours ours,
             Fixed fixed, bool same = false) {
    const auto text_of = [same](std::size_t number) {
        return same ? std::to_string(number) : std::string(number == 0 ? "nothing" : "something");
    };
    const auto make = [](auto run) { return [run] { return run; }; };
    Contest("textkit::" + name, kind, size, bytes, [=] { return text_of(std::size_t{Fixed(fixed)()}); })
        .Add("ours", make(ours), text_of)
        .Add("fixed", make(fixed), text_of);
}

template <typename Range>
std::size_t SumOfSizes(const Range& pieces) {
    std::size_t sum = 0, count = 0;
    for (const std::string_view piece : pieces) sum += piece.size(), ++count;
    return sum + count;
}

void AddRewriting(Kind kind, std::size_t size) {
    const std::string &text = Text(kind, "UTF-8", size), gbk = Convert("GBK", "UTF-8", text);
    const std::string name = NameOf(kind), bytes = NameOfSize(size);
    AddPair(
        "Fold", name, bytes, text.size(), [&text] { return textkit::Fold(text).size(); },
        [gbk, copy = std::string()]() mutable {
            copy = gbk;
            return std::size_t{str_normalization(copy.data(), copy.size(), false)};
        });
    const std::string mark = kind == Kind::kEnglish ? "." : "，";
    AddPair(
        "Replace", name, bytes, text.size(), [&text, mark] { return textkit::Replace(text, mark, "; ").size(); },
        [&text, mark, copy = std::string()]() mutable {
            copy = text;
            gfn_vReplaceSubstr(copy, mark.c_str(), "; ");
            return copy.size();
        },
        true);
}

void AddCutting(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    const std::string name = NameOf(kind), bytes = NameOfSize(size), mark = kind == Kind::kEnglish ? "." : "，";
    AddPair(
        "Split", name, bytes, text.size(), [&text, mark] { return SumOfSizes(textkit::Split(text, mark)); },
        [&text, mark] {
            Strings pieces;
            gfn_bSplit(text.c_str(), pieces, mark.c_str());
            return SumOfSizes(pieces);
        });
    AddPair(
        "Tokens", name, bytes, text.size(), [&text] { return SumOfSizes(textkit::Tokens(text)); },
        [&text, copy = std::string()]() mutable {
            copy = text;
            CStrToken tokens(false);
            std::size_t sum = 0;
            for (char* token = tokens.GetToken(copy.data(), nullptr, " \t\r\n.,:;!?()\"'"); token != nullptr;
                 token = tokens.GetToken(nullptr, nullptr, " \t\r\n.,:;!?()\"'"))
                ++sum;
            return sum;
        });
    AddPair(
        "Sentences", name, bytes, text.size(), [&text] { return SumOfSizes(textkit::Sentences(text)); },
        [&text] {
            std::size_t sum = 0;
            for (unsigned long pos = 0; pos < text.size(); ++sum) pos = FindSentenceEnd(text.c_str(), pos, text.size());
            return sum;
        });
    AddPair(
        "Characters", name, bytes, text.size(),
        [&text] {
            std::size_t count = 0;
            for (const textkit::Character& character : textkit::Characters(text)) count += character.bytes.size() > 0;
            return count;
        },
        [&text, character = std::string(8, '\0')]() mutable {
            std::size_t count = 0;
            for (const char* pos = text.c_str(); *pos != '\0'; ++count) pos += GetUTF8Char(pos, character.data());
            return count;
        },
        true);
    AddPair(
        "CountClasses", name, bytes, text.size(), [&text] { return textkit::CountClasses(text).total(); },
        [&text] {
            unsigned long single_byte = 0, multi_byte = 0;
            return static_cast<std::size_t>(CharStat(text.c_str(), single_byte, multi_byte, true));
        });
    Strings pieces;
    for (const std::string_view piece : textkit::Split(text, mark)) pieces.emplace_back(piece);
    AddPair(
        "Join", name, bytes, text.size(), [pieces] { return textkit::Join(pieces, ", ").size(); },
        [pieces, joined = std::string()]() mutable { return std::strlen(Vector2Str(pieces, ", ", joined)); }, true);
    for (std::string& piece : pieces) piece = "  " + piece + " \r\n";
    AddPair(
        "Trim", name, bytes, text.size(),
        [pieces] {
            std::size_t sum = 0;
            for (const std::string& piece : pieces) sum += textkit::Trim(piece).size();
            return sum;
        },
        [pieces, piece = std::string()]() mutable {
            std::size_t sum = 0;
            for (const std::string& one : pieces) {
                piece = one;
                gfn_bTrimWord(piece);
                sum += piece.size();
            }
            return sum;
        });
}

// Forward longest matching with words drawn from the text itself and as many again that are not in it.
void AddDictionary(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    std::set<std::string> words;
    std::mt19937 random(1);
    while (words.size() < 100000) {
        std::size_t pos = random() % (text.size() - 12);
        while ((text[pos] & 0xC0) == 0x80) ++pos;
        words.insert(text.substr(pos, 3 * (1 + random() % 3)) + (random() % 2 == 0 ? "" : std::to_string(random())));
    }
    const auto list = std::make_shared<const Strings>(words.begin(), words.end());
    std::vector<const char*> table;
    for (const std::string& word : *list) table.push_back(word.c_str());
    const auto segment = [&text](auto longest) {
        std::size_t sum = 0;
        for (std::size_t pos = 0; pos < text.size();) {
            const std::size_t bytes = longest(text.c_str() + pos, text.size() - pos);
            sum += bytes * (pos + 1);
            pos += bytes;
            if (bytes > 0) continue;
            do ++pos;
            while ((text[pos] & 0xC0) == 0x80);
        }
        return sum;
    };
    const textkit::Dictionary dictionary(std::vector<std::string_view>(list->begin(), list->end()));
    AddPair(
        "Dictionary", NameOf(kind), NameOfSize(size), text.size(),
        [=] {
            return segment([&](const char* pos, std::size_t left) { return dictionary.Longest({pos, left}).length; });
        },
        [=, words_of_table = list]() mutable {
            return segment([&](const char* pos, std::size_t) {
                long index = 0;
                return static_cast<std::size_t>(MaxMatching(pos, table.data(), table.size(), &index));
            });
        },
        true);
}

void AddDates(const std::string& name, const Strings& dates) {
    const std::size_t bytes = SumOfSizes(dates);
    AddPair(
        "ParseTime", name, std::to_string(dates.size()), bytes,
        [dates] {
            std::size_t sum = 0;
            for (const std::string& date : dates) sum += static_cast<std::size_t>(textkit::ParseTime(date).value_or(0));
            return sum;
        },
        [dates] {
            std::size_t sum = 0;
            for (const std::string& date : dates) sum += static_cast<std::size_t>(str2time(date.c_str()));
            return sum;
        });
}

void AddExtraction(std::size_t count) {
    const std::string number = std::to_string(count);
    std::string header = "收件人：", xml = "<list>", json = "{";
    for (std::size_t i = 0; i < count; ++i) {
        const std::string n = std::to_string(i * 37 % 1000);
        header += "张三 <zhang." + n + "@Mail" + n + ".example.com>, ";
        xml += "<book><id>" + n + "</id><title>图书馆" + n + "</title></book>\n";
        json += "\"book" + n + "\": {\"id\": " + n + ", \"title\": \"图书馆\"},\n";
    }
    xml += "<wanted>中文</wanted></list>";
    json += "\"wanted\": \"中文\"}";
    AddPair(
        "EmailAddresses", "header", number, header.size(), [header] { return textkit::EmailAddresses(header).size(); },
        [header, emails = std::vector<_email>()]() mutable {
            ExtractEmail(header.c_str(), emails);
            return emails.size();
        },
        true);
    AddPair(
        "XmlItem", "last", number, xml.size(),
        [xml] { return textkit::XmlItem(xml, "wanted").value_or(std::string_view()).size(); },
        [xml, value = std::string()]() mutable {
            GetXMLItemValue(xml.c_str(), "wanted", value);
            return value.size();
        },
        true);
    AddPair(
        "JsonItem", "last", number, json.size(),
        [json] { return textkit::JsonItem(json, "wanted").value_or(std::string()).size(); },
        [json, value = std::string()]() mutable {
            GetJsonItemValue(json.c_str(), "wanted", value);
            return value.size();
        },
        true);
}

void AddReading(std::size_t size) {
    struct File {
        std::string path;
        ~File() { std::filesystem::remove(path); }
    };
    const auto file = std::make_shared<const File>(File{
        std::filesystem::temp_directory_path() / ("kit-" + std::to_string(getpid()) + '-' + std::to_string(size))});
    std::ofstream(file->path, std::ios::binary) << Text(Kind::kChinese, "UTF-8", size);
    AddPair(
        "ReadFile", NameOf(Kind::kChinese), NameOfSize(size), size,
        [file] {
            std::error_code error;
            return textkit::ReadFile(file->path, error).size();
        },
        [file] {
            std::string text;
            ReadFile(file->path.c_str(), text, 0, 0, true);
            return text.size();
        },
        true);
}

}  // namespace

void bench::SetUpContests() {
    for (const Kind kind : {Kind::kChinese, Kind::kEnglish, Kind::kMixed}) {
        for (const std::size_t size : {std::size_t{1} << 10, std::size_t{64} << 10}) {
            AddRewriting(kind, size);
            AddCutting(kind, size);
        }
    }
    AddDictionary(Kind::kChinese, std::size_t{64} << 10);
    AddDates("slashes", {"2026/11/23 08:05:09", "1998/2/3 1:00:00", "2011/07/31 23:59:59"});
    AddDates("chinese", {"2026年11月23日8时5分9秒", "1998年2月3日1时0分0秒"});
    for (const std::size_t count : {std::size_t{1}, std::size_t{100}}) AddExtraction(count);
    for (const std::size_t size : {std::size_t{1} << 10, std::size_t{64} << 10, std::size_t{1} << 20}) AddReading(size);
}
