// Tokenisers, splitting, replacing, dictionary search, hashes, similarity and numeric order.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Common/Contest.h"
#include "StringToolkit/Hashes.h"
#include "StringToolkit/NumericOrder.h"
#include "StringToolkit/PrefixSearch.h"
#include "StringToolkit/Replacing.h"
#include "StringToolkit/Similarity.h"
#include "StringToolkit/Splitting.h"
#include "StringToolkit/StrToken.h"
#include "StringToolkit/TokenReader.h"

namespace {

using namespace bench;

using Pieces = std::vector<std::string>;

std::string Join(const Pieces& pieces) {
    std::string joined;
    for (const std::string& piece : pieces) joined.append(piece) += '\1';
    return joined;
}

// What the timed loops over tokens work out: enough of each token to tell them apart, and nothing that costs.
struct TokenSum {
    std::size_t count = 0, positions = 0;
    void Add(const char* text, const char* token) {
        ++count;
        positions += static_cast<std::size_t>(token - text) * count;
    }
    std::string Text() const { return std::to_string(count) + ' ' + std::to_string(positions); }
};

const auto kSumText = [](const TokenSum& sum) { return sum.Text(); };

TokenSum ByStrtok(char* text, const char* delimiters) {
    TokenSum sum;
    char* rest;
    for (char* token = strtok_r(text, delimiters, &rest); token; token = strtok_r(nullptr, delimiters, &rest))
        sum.Add(text, token);
    return sum;
}

TokenSum ByStrToken(char* text, const char* delimiters) {
    TokenSum sum;
    char* rest;
    for (char* token = StrToken(text, delimiters, &rest); token; token = StrToken(rest, delimiters, &rest))
        if (*token != '\0') sum.Add(text, token);  // behind the last delimiters
    return sum;
}

TokenSum ByTokenReader(char* text, const char* delimiters) {
    TokenSum sum;
    CStrToken reader(false);
    for (char* token = reader.GetToken(text, nullptr, delimiters); token;
         token = reader.GetToken(nullptr, nullptr, delimiters))
        sum.Add(text, token);
    return sum;
}

Pieces SplitByFind(const std::string& text, std::string_view separator) {
    Pieces pieces;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos; begin = end + separator.size())
        if (end != begin) pieces.push_back(text.substr(begin, end - begin));
    if (begin != text.size()) pieces.push_back(text.substr(begin));
    return pieces;
}

Pieces SplitByFindFirstOf(const std::string& text, const char* delimiters) {
    Pieces pieces;
    std::size_t end = 0;
    for (std::size_t begin; (begin = text.find_first_not_of(delimiters, end)) != std::string::npos;) {
        end = std::min(text.find_first_of(delimiters, begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
    }
    return pieces;
}

Pieces SplitByStrtok(std::string text, const char* delimiters) {
    Pieces pieces;
    char* rest;
    for (char* token = strtok_r(text.data(), delimiters, &rest); token; token = strtok_r(nullptr, delimiters, &rest))
        pieces.emplace_back(token);
    return pieces;
}

// The timed runs start with a fresh copy of the text, whose cost is everybody's.
template <typename Sum>
auto OnCopy(const std::string& text, const char* delimiters, Sum sum_of) {
    return [&text, delimiters, sum_of] {
        return [&text, delimiters, sum_of, copy = std::vector<char>(text.size() + 1)]() mutable {
            std::memcpy(copy.data(), text.c_str(), text.size() + 1);
            return sum_of(copy.data(), delimiters);
        };
    };
}

void AddTokenisers(const char* set_name, const char* delimiters, Kind kind, const char* encoding, std::size_t size) {
    const std::string& text = Text(kind, encoding, size);
    const auto answer = [&text, delimiters] {
        std::string copy = text;
        return ByStrtok(copy.data(), delimiters).Text();
    };
    for (const char* operation : {"StrToken", "CStrToken"}) {
        Contest contest(std::string(operation) + '-' + set_name, kind, size, text.size(), answer);
        if (*operation == 'S') contest.Add("ours", OnCopy(text, delimiters, ByStrToken), kSumText);
        if (*operation == 'C') contest.Add("ours", OnCopy(text, delimiters, ByTokenReader), kSumText);
        contest.Add("strtok_r", OnCopy(text, delimiters, ByStrtok), kSumText);
    }
}

template <typename Split, typename Text>
auto IntoPieces(const Text& text, const char* delimiters, Split split) {
    return [&text, delimiters, split] { return [&text, delimiters, split] { return split(text, delimiters); }; };
}

void AddSplitting(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    const char* const separator = kind == Kind::kEnglish ? ". " : "，";
    Contest split("gfn_bSplit", kind, size, text.size(),
                  [&text, separator] { return Join(SplitByFind(text, separator)); });
    split.Add(
        "ours",
        [&text, separator] {
            return [&text, separator] {
                Pieces pieces;
                gfn_bSplit(text.c_str(), pieces, separator);
                return pieces;
            };
        },
        Join);
    split.Add("std", IntoPieces(text, separator, SplitByFind), Join);

    for (const char* const delimiters : {" ", " ,.!?;:\n"}) {
        const std::string operation = delimiters[1] == '\0' ? "gfn_bSplitOR-blank" : "gfn_bSplitOR-marks";
        const std::string& start = Text(kind, "UTF-8", std::min<std::size_t>(size, 9 << 10));
        if (start.size() < text.size()) continue;
        Contest split_or(operation, kind, size, text.size(),
                         [&start, delimiters] { return Join(SplitByStrtok(start, delimiters)); });
        split_or.Add(
            "ours",
            [&start, delimiters] {
                return [&start, delimiters] {
                    Pieces pieces;
                    gfn_bSplitOR(start.c_str(), pieces, delimiters);
                    return pieces;
                };
            },
            Join);
        split_or.Add("strtok_r", IntoPieces(start, delimiters, SplitByStrtok), Join);
        split_or.Add("std", IntoPieces(start, delimiters, SplitByFindFirstOf), Join);
    }

    if (kind == Kind::kMixed) return;  // whose lines may start with blanks
    Contest lines("GetStrVector-lines", kind, size, text.size(), [&text] { return Join(SplitByStrtok(text, "\n")); });
    lines.Add(
        "ours",
        [&text] {
            return [&text] {
                Pieces pieces;
                GetStrVector(text.c_str(), "\n", pieces);
                return pieces;
            };
        },
        [](const Pieces& pieces) { return Join(pieces); });
    lines.Add("strtok_r", IntoPieces(text, "\n", SplitByStrtok), Join);
    lines.Add("std", IntoPieces(text, "\n", [](const std::string& t, const char* s) { return SplitByFind(t, s); }),
              Join);
}

std::string ReplaceByFind(std::string text, std::string_view old_text, std::string_view new_text) {
    for (std::size_t pos = 0; (pos = text.find(old_text, pos)) != std::string::npos; pos += new_text.size())
        text.replace(pos, old_text.size(), new_text);
    return text;
}

std::string ReplaceByCopy(const std::string& text, std::string_view old_text, std::string_view new_text) {
    std::string replaced;
    std::size_t begin = 0;
    for (std::size_t pos; (pos = text.find(old_text, begin)) != std::string::npos; begin = pos + old_text.size())
        replaced.append(text, begin, pos - begin).append(new_text);
    return replaced.append(text, begin);
}

void AddReplacing(Kind kind, std::size_t size, const char* name, const char* old_text, const char* new_text) {
    const std::string& text = Text(kind, "UTF-8", size);
    Contest contest(std::string("gfn_vReplaceSubstr-") + name, kind, size, text.size(),
                    [=, &text] { return ReplaceByCopy(text, old_text, new_text); });
    contest.Add("ours", [=, &text] {
        return [=, &text] {
            std::string copy = text;
            gfn_vReplaceSubstr(copy, old_text, new_text);
            return copy;
        };
    });
    // The copy is made by all, since all but this one could do without.
    contest.Add("std", [=, &text] {
        return [=, &text] {
            std::string copy = text;
            copy = ReplaceByCopy(copy, old_text, new_text);
            return copy;
        };
    });
    if (size > 1 << 10) return;
    contest.Add("std-in-place", [=, &text] { return [=, &text] { return ReplaceByFind(text, old_text, new_text); }; });
}

// 100,000 words in the order of strcmp: the characters of a text and pieces of it, as long as the words of a dictionary of
// general vocabulary are.
const std::vector<std::string>& Words() {
    static const std::vector<std::string> words = [] {
        constexpr std::size_t kCount = 100000;
        constexpr unsigned kPerMille[] = {600, 270, 110, 10, 5, 2, 1, 1, 1};  // of two characters, three and so on
        std::mt19937 random(1);
        const std::string& text = Text(Kind::kChinese, "UTF-8", 8 << 20);
        std::set<std::string> list;
        const auto add = [&](std::size_t begin, std::size_t characters) {
            std::size_t end = begin;
            for (; characters > 0 && end < text.size(); --characters) do
                    ++end;
                while ((text[end] & 0xC0) == 0x80);
            list.insert(text.substr(begin, end - begin));
            return end;
        };
        for (std::size_t pos = 0; pos < (1 << 20); pos = add(pos, 1)) {
        }
        while (list.size() < kCount) {
            std::size_t begin = random() % (text.size() - 64);
            while ((text[begin] & 0xC0) == 0x80) ++begin;
            std::size_t left = random() % 1000, characters = 2;
            for (const unsigned share : kPerMille) {
                if (left < share) break;
                left -= share;
                ++characters;
            }
            add(begin, characters);
        }
        return std::vector<std::string>(list.begin(), list.end());
    }();
    return words;
}

long MatchByLowerBound(const char* text, const char** table, unsigned long count, std::size_t longest, long* index) {
    long best = 0;
    *index = -1;
    std::string candidate;
    for (std::size_t bytes = 0; bytes < longest && text[bytes] != '\0';) {
        do candidate += text[bytes++];
        while ((text[bytes] & 0xC0) == 0x80);
        const char** const found = std::lower_bound(table, table + count, candidate.c_str(),
                                                    [](const char* a, const char* b) { return std::strcmp(a, b) < 0; });
        if (found == table + count || candidate != *found) continue;
        best = static_cast<long>(bytes);
        *index = found - table;
    }
    return best;
}

// Forward longest matching over a text; what is no word is stepped over character by character.
template <typename Match>
auto Segment(const std::string& text, Match match) {
    return [&text, match] {
        std::vector<const char*> table;
        std::size_t longest = 0;
        for (const std::string& word : Words()) {
            table.push_back(word.c_str());
            longest = std::max(longest, word.size());
        }
        return [&text, match, table, longest]() mutable {
            TokenSum sum;
            for (const char* pos = text.c_str(); *pos != '\0';) {
                long index;
                long bytes = match(pos, table.data(), table.size(), longest, &index);
                sum.Add(nullptr, reinterpret_cast<const char*>(index + 1));
                if (bytes == 0) do
                        ++bytes;
                    while ((pos[bytes] & 0xC0) == 0x80);
                pos += bytes;
            }
            return sum;
        };
    };
}

void AddDictionary(Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "UTF-8", size);
    Contest contest("MaxMatching", kind, size, text.size(),
                    [&text] { return Segment(text, MatchByLowerBound)()().Text(); });
    contest.Add("ours",
                Segment(text, [](const char* pos, const char** table, std::size_t count, std::size_t,
                                 long* index) { return MaxMatching(pos, table, count, index); }),
                kSumText);
    contest.Add("std", Segment(text, MatchByLowerBound), kSumText);
}

// The definitions as loops.
std::uint32_t Signed(char c) {
    return static_cast<std::uint32_t>(static_cast<signed char>(c));
}

unsigned long PlainStrhash(const char* text) {
    std::uint64_t hash = 0;
    for (; *text != '\0'; ++text) hash = hash * 31 + static_cast<unsigned char>(*text);
    return hash;
}
unsigned long PlainUrlHash(const char* text) {
    std::uint32_t hash = 0;
    for (; *text != '\0'; ++text) {
        hash = (hash << 4) + Signed(*text);
        if (const std::uint32_t high = hash & 0xF0000000; high != 0) hash = (hash ^ high >> 24) & ~high;
    }
    return hash;
}
unsigned long PlainTianlhash(const char* text) {
    const std::size_t length = std::strlen(text);
    if (length == 0) return 0;
    std::uint64_t hash = length <= 256 ? (length - 1) << 24 : 0xFF000000;
    const std::size_t first = length <= 96 ? 0 : length - 96;
    for (std::size_t i = 1; first + i <= length; ++i) {
        std::uint64_t c = static_cast<unsigned char>(text[first + i - 1]);
        if (c >= 'A' && c <= 'Z') c += 32;
        hash += (3 * i * c * c + 5 * i * c + 7 * i + 11 * c) & 0xFFFFFF;
    }
    return hash;
}
unsigned long PlainHfIp(const char* text) {
    unsigned char bytes[4] = {};
    for (std::size_t i = 0; text[i] != '\0'; ++i) bytes[i % 4] ^= static_cast<unsigned char>(text[i]);
    std::uint32_t hash = 0;
    for (std::size_t i = 4; i-- > 0;) hash = hash << 8 | bytes[i];
    return static_cast<unsigned long>(static_cast<std::int32_t>(hash));
}
unsigned long Plain_hf(const char* text) {
    std::int64_t hash = 0;
    for (std::uint32_t k = 1; *text != '\0'; ++text, ++k) hash += static_cast<std::int32_t>(Signed(*text) * 3 * k);
    return static_cast<unsigned long>(hash < 0 ? -hash : hash);
}

using Hash = unsigned long (*)(const char*);

void AddHash(const char* name, Hash ours, Hash plain, Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "GBK", size);
    Contest contest(name, kind, size, text.size(), [&text, plain] { return std::to_string(plain(text.c_str())); });
    const auto number = [](unsigned long value) { return std::to_string(value); };
    contest.Add(
        "ours", [&text, ours] { return [&text, ours] { return ours(text.c_str()); }; }, number);
    contest.Add(
        "plain", [&text, plain] { return [&text, plain] { return plain(text.c_str()); }; }, number);
}

void AddHashes() {
    for (const std::size_t size : {std::size_t{16}, std::size_t{64}, std::size_t{1} << 10, std::size_t{64} << 10}) {
        for (const Kind kind : {Kind::kChinese, Kind::kEnglish}) {
            AddHash("Strhash", Strhash, PlainStrhash, kind, size);
            AddHash(
                "UrlHash", [](const char* text) { return static_cast<unsigned long>(UrlHash(text)); }, PlainUrlHash,
                kind, size);
            AddHash("Tianlhash", Tianlhash, PlainTianlhash, kind, size);
            AddHash(
                "HfIp", [](const char* text) { return static_cast<unsigned long>(HfIp(text)); }, PlainHfIp, kind, size);
            AddHash(
                "_hf", [](const char* text) { return static_cast<unsigned long>(_hf(text)); }, Plain_hf, kind, size);
        }
    }
}

double PlainSim(const char* a, const char* b) {
    if (strcasecmp(a, b) == 0) return 1.0;
    const std::size_t la = std::strlen(a), lb = std::strlen(b);
    if (std::strstr(b, a) != nullptr) return static_cast<double>(la) / static_cast<double>(lb);
    double score = 0;
    std::size_t last = 0;
    for (std::size_t i = 0, n; i < la; i += n) {
        n = (a[i] & 0x80) != 0 && a[i + 1] != '\0' ? 2 : 1;
        const char character[] = {a[i], n == 2 ? a[i + 1] : '\0', '\0'};
        if (const char* found = std::strstr(b + last, character); found != nullptr) {
            const std::size_t pos = static_cast<std::size_t>(found - b);
            score += static_cast<double>(n) * (pos == last + n ? 1.0 : 0.9);
            last = pos;
        } else if (std::strstr(b, character) != nullptr) {
            score += static_cast<double>(n) * 0.6;
        }
    }
    return score / static_cast<double>(lb) * score / static_cast<double>(la);
}

// Titles and sentences against changed forms of themselves, and against others.
void AddSimilarity(Kind kind, std::size_t size, bool related) {
    constexpr std::size_t kPairs = 32;
    std::vector<std::string> a = Windows(kind, "GBK", size, kPairs), b = a;
    if (related) {
        std::mt19937 random(3);
        for (std::string& text : b)
            for (std::size_t changes = 1 + text.size() / 16; changes > 0; --changes)
                text.erase(random() % (text.size() / 2) * 2, 2);
    } else {
        std::rotate(b.begin(), b.begin() + 1, b.end());
    }
    const auto with = [a, b](double (*similarity)(const char*, const char*)) {
        return [a, b, similarity] {
            return [a, b, similarity] {
                double sum = 0;
                for (std::size_t i = 0; i < kPairs; ++i) sum += similarity(a[i].c_str(), b[i].c_str());
                return sum;
            };
        };
    };
    const auto text_of = [](double sum) { return std::to_string(sum); };
    Contest(related ? "ComputeSim-related" : "ComputeSim-unrelated", kind, size, kPairs * size,
            [=] { return text_of(with(PlainSim)()()); })
        .Add("ours", with(ComputeSim), text_of)
        .Add("plain", with(PlainSim), text_of);
}

void PlainSortByNumber(Pieces& list, const char* prefix) {
    const std::size_t prefix_bytes = std::strlen(prefix);
    std::vector<_index_digit> records;
    for (std::size_t i = 0; i < list.size(); ++i)
        records.push_back({static_cast<int>(i), std::atoi(list[i].c_str() + prefix_bytes)});
    const Pieces copies = list;
    std::sort(records.begin(), records.end());
    for (std::size_t i = 0; i < list.size(); ++i) list[i] = copies[static_cast<std::size_t>(records[i].index)];
}

// Names with two numbers each, sorted by the one and then by the other: no run finds them in the order it makes.
void AddNumericOrder(const char* name, const char* suffix, std::size_t count) {
    std::mt19937 random(5);
    std::vector<std::size_t> numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = 1000000 + i * 7;
    std::shuffle(numbers.begin(), numbers.end(), random);
    Pieces list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(std::to_string(1000000 + i * 3) + std::to_string(numbers[i]).append(suffix).insert(0, 1, '-'));
    const auto sorted = [list](void (*sort)(Pieces&, const char*)) {
        return [list, sort] {
            return [names = list, sort]() mutable {
                sort(names, "");
                sort(names, "1000000-");
                return names.front() + names[names.size() / 3] + names.back();
            };
        };
    };
    Contest contest("SortByNumber", name, std::to_string(count), 2 * count * list[0].size(),
                    [=] { return sorted(PlainSortByNumber)()(); });
    contest.Add("ours", sorted(SortByNumber));
    contest.Add("plain", sorted(PlainSortByNumber));
}

}  // namespace

void bench::SetUpContests() {
    for (const std::size_t size : {std::size_t{1} << 10, std::size_t{64} << 10}) {
        for (const Kind kind : {Kind::kEnglish, Kind::kMixed, Kind::kChinese}) {
            AddTokenisers("blank", " ", kind, "UTF-8", size);
            if (kind != Kind::kMixed) AddTokenisers("line", "\n", kind, "UTF-8", size);  // no line starts with a blank
            AddTokenisers("marks", " \t\r\n.,:;!?()\"'", kind, "UTF-8", size);
            AddSplitting(kind, size);
            AddReplacing(kind, size, "few", "library", "Library");
            AddReplacing(kind, size, "marks", kind == Kind::kEnglish ? "." : "，", ",");
            AddReplacing(kind, size, "growing", kind == Kind::kEnglish ? " " : "的", "(--)");
        }
    }
    AddDictionary(Kind::kChinese, 64 << 10);
    AddDictionary(Kind::kMixed, 64 << 10);
    AddHashes();
    for (const Kind kind : {Kind::kChinese, Kind::kEnglish})
        for (const std::size_t size :
             {std::size_t{32}, std::size_t{128}, std::size_t{256}, std::size_t{1} << 10, std::size_t{16} << 10})
            for (const bool related : {true, false}) AddSimilarity(kind, size, related);
    for (const std::size_t count : {std::size_t{16}, std::size_t{1000}, std::size_t{100000}}) {
        AddNumericOrder("short", "", count);
        AddNumericOrder("long", " - 第三章 图书馆的历史.txt", count);
    }
}
