// The string toolkit over all short texts of small alphabets, against regular expressions, the C library and
// searches that look at everything; elsewhere against values worked out by hand.

#include <strings.h>

#include <cmath>
#include <set>

#include "Internal/SubstringSearch.h"
#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::AllTexts, test_support::Bytes, test_support::Hex;
using Strings = std::vector<std::string>;
using Numbers = std::vector<long>;

// The matches of `pattern`, or what stands between them; none of them empty.
Strings Cut(const std::string& text, const std::regex& pattern, bool between = false) {
    Strings pieces(std::sregex_token_iterator(text.begin(), text.end(), pattern, between ? -1 : 0), {});
    pieces.erase(std::remove(pieces.begin(), pieces.end(), ""), pieces.end());
    return pieces;
}

std::vector<const char*> Pointers(const Strings& strings) {
    std::vector<const char*> pointers;
    for (const std::string& string : strings) pointers.push_back(string.c_str());
    return pointers;
}

TEST(StringToolkitTest, StrTokenAndSplitOrAgreeWithTheCLibrary) {
    Strings pieces;
    for (const std::string& text : AllTexts("a,;", 7)) {
        Strings expected, tokens;
        std::string copy = text;
        char *from = copy.data(), *state = nullptr;
        while (const char* token = strtok_r(std::exchange(from, nullptr), ",;", &state)) expected.emplace_back(token);
        EXPECT_EQ(gfn_bSplitOR(text.c_str(), pieces, ",;"), !text.empty());
        EXPECT_EQ(pieces, expected) << text;
        // StrToken gives one empty token more where nothing, or a delimiter, ends the text.
        if (text.empty() || text.back() != 'a') expected.emplace_back();
        copy = text;
        from = copy.data();
        while (const char* token = StrToken(from, ",;", &from)) tokens.emplace_back(token);
        EXPECT_EQ(tokens, expected) << text;
    }
    EXPECT_TRUE(gfn_bSplitOR((std::string(9999, ',') + "ab").c_str(), pieces, ",") && pieces == Strings{"a"});
    EXPECT_TRUE(!gfn_bSplitOR(nullptr, pieces, ",") && pieces.empty());
}

TEST(StringToolkitTest, ReaderPutsTheTextBackAndGetStrVectorDropsLineEnds) {
    const std::tuple<bool, const char*, const char*> rows[] = {
        {false, ",", "[^ ,\r][^,]*"},
        {false, ",. \n", "[^ ,.\r\n]([^ ,.\n]*)"},
        {true, ",", "[^ ,\r]([^,]|,(?=[0-9]))*"},
        {true, ",. ", "[^ ,.\r]([^ ,.]|[.](?=[^ ,.])|,(?=[0-9]))*"}};
    for (const auto& [keep_inner_punct, delims, expression] : rows) {
        const std::regex pattern(expression), line_ends("[\r\n]+$");
        CStrToken reader(keep_inner_punct);
        for (const std::string& text : AllTexts(" a1.,\r\n", 5)) {
            SCOPED_TRACE(Hex(text) + " cut at " + delims);
            Strings tokens, pieces;
            std::string copy = text, rebuilt;
            char *from = copy.data(), *end = text.size() % 2 == 0 ? nullptr : from + text.size();
            while (const char* token = reader.GetToken(from, end, delims)) {
                if (from != nullptr) rebuilt.assign(text, 0, static_cast<std::size_t>(token - from));
                rebuilt.append(token).append(reader.m_vSeparators.begin(), reader.m_vSeparators.end());
                EXPECT_EQ(reader.m_bReachedEnd, reader.m_vSeparators[0] == '\0');
                tokens.emplace_back(token);
                from = end = nullptr;
            }
            EXPECT_EQ(tokens, Cut(text, pattern));
            EXPECT_TRUE(copy == text && (tokens.empty() || rebuilt.c_str() == text)) << rebuilt;
            if (keep_inner_punct) continue;
            for (std::string& token : tokens) token = std::regex_replace(token, line_ends, "");
            tokens.erase(std::remove(tokens.begin(), tokens.end(), ""), tokens.end());
            EXPECT_EQ(GetStrVector(text.c_str(), delims, pieces), tokens.size());
            EXPECT_EQ(pieces, tokens);
        }
    }
}

TEST(StringToolkitTest, ANewTextLeavesTheOldOneAsItStands) {
    CStrToken reader(false);
    char first[] = "a,b", second[] = "c,d";
    EXPECT_STREQ(reader.GetToken(first, nullptr, ","), "a");
    EXPECT_STREQ(reader.GetToken(second, nullptr, ","), "c");
    EXPECT_STREQ(reader.GetToken(nullptr, nullptr, ","), "d");
    EXPECT_TRUE(reader.GetToken(nullptr, nullptr, ",") == nullptr && reader.m_bReachedEnd);
    EXPECT_EQ(Hex(Bytes(first)) + " / " + Hex(Bytes(second)), "61 00 62 / 63 2C 64");
}

using Lines = std::vector<std::pair<std::string, int>>;

// What a caller reads who puts each saved byte back: the lines, and 1 for those that are records.
Lines ReadLines(const std::string& text, bool allow_quoted) {
    Lines lines;
    std::vector<char> copy = test_support::Exactly(text + '\0');
    char *next = copy.data(), saved = 'x';
    int quoted = 2;
    while (const char* const line = StrLine(next, &next, &saved, &quoted, allow_quoted)) {
        lines.emplace_back(line, quoted);
        EXPECT_TRUE(quoted == 0 || next != nullptr);
        if (next != nullptr) *next = saved;
    }
    EXPECT_TRUE(next == nullptr && saved == '\0');
    return lines;
}

TEST(StringToolkitTest, StrLineReadsLinesAndRecords) {
    const std::string record = "\\^\\^([^\r\n][^^]*)\\^\\^", line = "[^ \r\n][^\r\n]*";
    const std::regex plain("(?!)()|" + line);
    const std::regex quoted(record + "|[^ \r\n^][^\r\n^]*(?=" + record + ")|" + line);
    for (const std::string& text : AllTexts("^a\n ", 8)) {
        for (const bool allow_quoted : {false, true}) {
            Lines expected;
            std::sregex_iterator match(text.begin(), text.end(), allow_quoted ? quoted : plain), end;
            for (; match != end; ++match) expected.emplace_back((*match)[(*match)[1].matched], (*match)[1].matched);
            EXPECT_EQ(ReadLines(text, allow_quoted), expected) << text;
        }
    }
    // A search over the whole rest of the text, made anew for every line, would not get through these.
    std::string open = "^^", records;
    for (int i = 0; i < 200000; ++i) open += "a\n", records += "a^^b^^";
    EXPECT_EQ(ReadLines(open, true).size(), 200000u);
    EXPECT_EQ(ReadLines(records, true).size(), 400000u);
}

TEST(StringToolkitTest, Str2CharVectorCutsBetweenCharactersAndVector2StrJoins) {
    const auto cut = [](const char* text, bool utf8) {
        Strings chars = {"old"};
        std::string joined = "old";
        return Str2CharVector(text, chars, utf8) == chars.size() ? Hex(Vector2Str(chars, "|", joined)) : "";
    };
    EXPECT_EQ(cut("a\xD6\xD0\xFF|\x80", false), Hex("a|\xD6\xD0|\xFF||\x80"));
    EXPECT_EQ(cut("a中\x80\xFC-----\xF8----\xE4-", true), Hex("a|中|\x80|\xFC-----|\xF8----|\xE4-"));
    EXPECT_EQ(cut(nullptr, true), "");
    std::string joined;
    EXPECT_STREQ(Vector2Str({"", "a", "", "b", ""}, ", ", joined), "a, b, ");
}

TEST(StringToolkitTest, SplitsAndReplacesFromLeftToRight) {
    Strings pieces;
    for (const std::string searched : {"a", "aa", "aba", "abab"}) {
        const std::regex pattern(searched);
        for (const std::string& text : AllTexts("ab", 9)) {
            EXPECT_EQ(gfn_bSplit(text.c_str(), pieces, searched.c_str()), !text.empty());
            EXPECT_EQ(pieces, Cut(text, pattern, true)) << text << " at " << searched;
            for (const char* const inserted : {"", "aba", "bbbbb"}) {
                std::string replaced = text;
                const std::size_t count = gfn_vReplaceSubstr(replaced, searched.c_str(), inserted);
                EXPECT_EQ(count, Cut(text, pattern).size());
                EXPECT_EQ(replaced, std::regex_replace(text, pattern, inserted));
            }
        }
    }
    EXPECT_TRUE(gfn_bSplit("a b", pieces, nullptr) && gfn_bSplit("a b", pieces, "") && pieces[0] == "a b");
    EXPECT_TRUE(!gfn_bSplit(nullptr, pieces, ",") && pieces.empty());
    std::string text = Bytes("a\0a");
    EXPECT_EQ(gfn_vReplaceSubstr(text, nullptr, "b") + gfn_vReplaceSubstr(text, "", "b"), 0u);
    EXPECT_TRUE(gfn_vReplaceSubstr(text, text.c_str(), "bc") == 2 && text == Bytes("bc\0bc"));
}

TEST(StringToolkitTest, TrimsAByteOrBlankSpaceAtBothEnds) {
    const std::string blanks = "([ \t\r\n]|\xA1\xA1|\xA3\xA0)+";
    const std::regex byte("^a+|a+$"), front("^" + blanks), back(blanks + "$");
    for (const std::string& text : AllTexts("a \xA1\xA3\xA0", 6)) {
        std::string without_a = text, without_blanks = text;
        trim(without_a, 'a');
        EXPECT_EQ(Hex(without_a), Hex(std::regex_replace(text, byte, "")));
        EXPECT_EQ(gfn_bTrimWord(without_blanks), !text.empty());
        const std::string without_front = std::regex_replace(text, front, "");
        EXPECT_EQ(Hex(without_blanks), Hex(std::regex_replace(without_front, back, "")));
    }
}

TEST(StringToolkitTest, BinarySearchesFindWhatIsThereAndHalveAlike) {
    for (std::string letters : AllTexts("bdf", 6)) {
        std::sort(letters.begin(), letters.end());
        Strings strings;
        for (const char letter : letters) strings.emplace_back(1, letter);
        std::vector<int> ints(letters.begin(), letters.end());
        std::vector<const char*> pointers = Pointers(strings);
        const int count = static_cast<int>(ints.size());
        for (char key = 'a'; key <= 'g'; ++key) {
            const std::string upper(1, static_cast<char>(key - 'a' + 'A'));
            const int found = BinarySearch(key, ints.data(), count);
            EXPECT_EQ(found >= 0, letters.find(key) != letters.npos) << letters;
            EXPECT_TRUE(found < 0 || letters.at(static_cast<std::size_t>(found)) == key) << letters;
            EXPECT_EQ(BinarySearch(key, std::vector<double>(ints.begin(), ints.end())), found);
            EXPECT_EQ(BinarySearch(upper.c_str(), strings), found);
            EXPECT_EQ(BinarySearch(upper.c_str(), pointers.data(), count), found);
            EXPECT_EQ(IsExists(upper.c_str(), pointers.data(), count), 0);
        }
    }
    EXPECT_EQ(BinarySearch("x", {"x", "x", "x", "x"}), 1);
    EXPECT_EQ(BinarySearch(1, static_cast<int*>(nullptr), INT_MIN), -1);
    EXPECT_EQ(BinarySearch(NAN, std::vector<double>(5, 1.0)), -1);
    for (int byte = 1; byte < 65536; ++byte) {  // the order is that of strcasecmp
        const Strings pair = {{static_cast<char>(byte >> 8)}, {static_cast<char>(byte & 0xFF)}};
        if (strcasecmp(pair[0].c_str(), pair[1].c_str()) >= 0) continue;
        EXPECT_TRUE(BinarySearch(pair[0].c_str(), pair) == 0 && BinarySearch(pair[1].c_str(), pair) == 1) << byte;
    }
}

// One table and one text against all entries, for all lengths.
void CheckPrefixSearches(const Strings& table, const std::string& text) {
    std::vector<const char*> entries = Pointers(table);
    Numbers longest = {0, -1}, matched = {0, 9};
    matched[0] = MaxMatching(text.c_str(), entries.data(), entries.size(), &matched[1]);
    for (std::size_t n = 1; n <= text.size() && !table.empty(); ++n) {
        std::size_t shortest = 99;
        for (const std::string& entry : table)
            if (entry.compare(0, n, text, 0, n) == 0) shortest = std::min(shortest, entry.size());
        const long found = BinaryPrefixSearch(text.c_str(), n, entries.data(), 0, entries.size() - 1);
        ASSERT_EQ(found >= 0, shortest < 99) << text;
        if (found < 0) break;
        const std::string& entry = table.at(static_cast<std::size_t>(found));
        EXPECT_TRUE(entry.size() == shortest && entry.compare(0, n, text, 0, n) == 0) << entry << "|" << text;
        if (shortest == n) longest = {static_cast<long>(n), found};
    }
    EXPECT_EQ(matched, longest) << text;
}

TEST(StringToolkitTest, PrefixSearchesAgreeWithLookingAtEveryEntry) {
    std::mt19937 random(1);
    const Strings words = AllTexts("ab", 4);
    for (int round = 0; round < 500; ++round) {
        Strings table(random() % 9);
        for (std::string& entry : table) entry = words[random() % words.size()];
        std::sort(table.begin(), table.end());
        for (const std::string& text : words) CheckPrefixSearches(table, text);
        // Out of order an entry may be missed; but what is found is there, and nothing behind an entry is read.
        std::shuffle(table.begin(), table.end(), random);
        std::vector<std::vector<char>> exact;
        std::vector<const char*> entries;
        for (const std::string& entry : table) exact.push_back(test_support::Exactly(entry + '\0'));
        for (const std::vector<char>& entry : exact) entries.push_back(entry.data());
        for (const std::string& text : words) {
            long index;
            const long bytes = MaxMatching(text.c_str(), entries.data(), entries.size(), &index);
            const auto found = static_cast<std::size_t>(bytes);
            EXPECT_TRUE(bytes == 0 || text.compare(0, found, table.at(static_cast<std::size_t>(index)), 0, found) == 0);
        }
    }
    std::set<std::string> many;
    while (many.size() < 100000) many.insert("word" + std::to_string(random() % 1000000));
    const Strings table(many.begin(), many.end());
    for (int round = 0; round < 20; ++round) CheckPrefixSearches(table, table[random() % table.size()] + "17");
    // Of the shortest, the one met first, else the nearest below, else the nearest above.
    const char* ties[] = {"ab", "ac", "ad", "aee", "af", "b"};
    const auto shortest = [&](unsigned long first, unsigned long last) {
        return BinaryPrefixSearch("a", 1, ties, first, last);
    };
    EXPECT_EQ((Numbers{shortest(0, 5), shortest(2, 5), shortest(3, 4), shortest(5, 5)}), (Numbers{2, 2, 4, -1}));
}

// The search that starts anew behind every place that begins like the pattern: result, start, end, offset.
Numbers Locate(const std::string& text, const std::string& pattern) {
    const std::size_t first = pattern.find_first_not_of(' ');
    if (first == pattern.npos) return {-1, 0, 0, 0};
    for (std::size_t start = 0; (start = text.find(pattern[first], start)) != text.npos; ++start) {
        std::size_t i = start + 1, k = first + 1;
        while (i < text.size() && k < pattern.size()) {
            k = std::min(pattern.find_first_not_of(' ', k), pattern.size());
            if (k < pattern.size()) i = std::min(text.find_first_not_of(' ', i), text.size());
            if (k == pattern.size() || i == text.size() || text[i] != pattern[k]) break;
            ++i, ++k;
        }
        const long from = static_cast<long>(start), to = static_cast<long>(i);
        if (k == pattern.size()) return {0, from, to, 0};
        if (i == text.size()) return {static_cast<long>(k), from, to, -to};
    }
    return {-1, 0, 0, 0};
}

TEST(StringToolkitTest, StrLocateOverlooksBlanks) {
    const auto locate = [](const std::string& text, const std::string& pattern, int offset) {
        unsigned long start = 9, end = 9;
        const int result = StrLocate(text.c_str(), pattern.c_str(), start, end, offset);
        return Numbers{result, static_cast<long>(start), static_cast<long>(end), offset};
    };
    for (const std::string& pattern : AllTexts("ab ", 5)) {
        for (const std::string& text : AllTexts("ab ", 6))
            EXPECT_EQ(locate(text, pattern, -1), Locate(text, pattern)) << text << "|" << pattern;
    }
    EXPECT_EQ(locate("ab a\r\nbc", "a b\n", 2), (Numbers{0, 3, 7, 2}));
    EXPECT_EQ(locate(std::string(1 << 20, 'a'), std::string(100000, 'a') + "b", 0)[0], 100000);
}

TEST(StringToolkitTest, StrMatchAllowsTagsMarksAndBeginnings) {
    // clang-format off
    const std::tuple<const char*, const char*, int, long> rows[] = {  // maximum, position; -1 for no match
        {"\t<b>Hello", "He llo world", -1, 0}, {"Hello", "Help me", -1, -1}, {"Hellx", "Helly H", -1, 0},
        {"\xD6\xD0\xB9\xFAx", "\xD6\xD0\xB9\xFAy", -1, -1},  // no ASCII among four bytes
        {"world", "Hello wo\trld", -1, -1}, {"world", "Hello wo\nrld", -1, 6},  // a tab is no blank to the search
        {"ld", "Hello world", -1, -1}, {"abcdef", "abcxyz", 3, 0}, {"abcdef", "xyabcd", 4, 2}, {"abcdef", "xyabcd", 5, -1},
        {"<1234567890123>x", "[1234567890123] x", -1, 0}, {"<12345678901234>x", "x", -1, -1},
        {"x", "[12345678901234]x", -1, -1}, {"<b>", "[1]", -1, -1}};
    // clang-format on
    for (const auto& [a, b, maximum, expected] : rows) {
        unsigned long position = 9;
        const bool matches = StrMatch(a, b, position, maximum);
        EXPECT_EQ(matches ? static_cast<long>(position) : -1, expected) << a << "|" << b;
    }
    std::string common = "old";
    EXPECT_TRUE(prefixMatch("\tab", "ab", common) == 0 && common.empty());
    EXPECT_TRUE(prefixMatch("ab c", "\na bcd", common) == 3 && common == "abc");
}

TEST(StringToolkitTest, CutsAroundTheFirstOccurrenceOfAWord) {
    const auto cut = [](std::string text, const char* word) {
        std::string after = "old";
        const bool result = gfn_bGetWordPos(text, text, after, word);
        return (result ? "+" : "-") + text + "|" + after;
    };
    EXPECT_EQ(cut(" price : 12:\t", ":"), "+price|12:");
    EXPECT_EQ(cut("\xA1\xA1:x", ":"), "-|x");
    EXPECT_EQ(cut(" ab ", ":") + cut(" ab ", "") + cut("", ":"), "+ ab |+ ab |-|");
}

// The nearest marker on either side decides; with markers of one byte and of twenty.
TEST(StringToolkitTest, IsInRangeLooksAtTheNearestMarkers) {
    const std::string a(19, 'a'), megabyte(1 << 20, 'a'), half(1 << 19, 'a');
    const std::regex nearest(".*[(]x*:x*[)].*");
    for (const std::string& text : AllTexts("()x", 6)) {
        std::string stretched;
        for (const char c : text) stretched += a + (c == '(' ? 'b' : c == ')' ? 'c' : 'a');
        for (unsigned i = 0; i < text.size(); ++i) {
            const std::string before = "x" + text.substr(0, i + (text[i] != ')'));
            const std::string behind = text.substr(i + (text[i] == '(')) + "x";
            const bool inside = std::regex_match(before + ":" + behind, nearest);
            EXPECT_EQ(IsInRange(text, "(", ")", i), inside) << text << " at " << i;
            EXPECT_EQ(IsInRange(stretched, a + "b", a + "c", i * 20), inside) << text << " at " << i;
        }
    }
    EXPECT_FALSE(IsInRange(megabyte, half + "b", half + "c", 1 << 20));
    EXPECT_TRUE(IsInRange("ab", "", "", 2) && !IsInRange("ab", "", "", 3));
}

TEST(StringToolkitTest, HashesHaveTheirKnownValues) {
    const std::pair<const char*, Numbers> rows[] = {
        {"", {0, 0, 0, 0, 0}},
        {"a", {97, 29786, 97, 291, 97}},
        {"abc", {26499, 33734718, 6513249, 1770, 96354}},
        {"Hello", {5161775, 67646319, 1819043111, 4755, 69609650}},
        {"\xD6\xD0\xB9\xFA", {267564154, 51807067, -88485674, 1125, 6581147}},
        {"abcdefghijklmnopqrstuvwxyz0123456789",
         {108887817, 603811166, 557349497, 169551, static_cast<long>(11574022147833870194u)}}};
    for (const auto& [text, hashes] : rows) {
        const auto tianl_hash = static_cast<long>(Tianlhash(text)), str_hash = static_cast<long>(Strhash(text));
        EXPECT_EQ(hashes, (Numbers{UrlHash(text), tianl_hash, HfIp(text), _hf(text), str_hash}));
        EXPECT_EQ(ELFhash(text), UrlHash(text));
    }
    // The last 96 bytes and the length enter, the length up to 256.
    const auto tianl_hash = [](std::size_t bytes, char filler, const char* first) {
        return Tianlhash((std::string(bytes, filler) + first + std::string(95, 'x')).c_str());
    };
    EXPECT_EQ(tianl_hash(160, 'y', "A"), tianl_hash(300, 'z', "a"));
    EXPECT_NE(tianl_hash(160, 'y', "A"), tianl_hash(160, 'y', "b"));
    EXPECT_EQ(tianl_hash(159, 'y', "a") + (1 << 24), tianl_hash(160, 'y', "a"));
    const std::string large(5636441, '\x7F');  // 3 × 127 × k is above 2^31 for the last byte alone
    EXPECT_EQ(_hf(large.c_str()), 381l * 5636441 * 5636442 / 2 - (1l << 32));
}

// The definitions, byte by byte, in integers that hold every term.
Numbers HashesByDefinition(const std::string& text) {
    std::uint32_t url = 0, quarters[4] = {};
    std::uint64_t str = 0;
    long hf = 0, k = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        url = url * 16 + static_cast<std::uint32_t>(static_cast<signed char>(c));
        url = (url ^ (url & 0xF0000000) >> 24) & 0x0FFFFFFF;
        quarters[k % 4] ^= byte;
        hf += static_cast<signed char>(c) * 3l * ++k;
        str = str * 31 + byte;
    }
    const std::uint32_t ip = quarters[0] | quarters[1] << 8 | quarters[2] << 16 | quarters[3] << 24;
    return {url, static_cast<std::int32_t>(ip), std::labs(hf), static_cast<long>(str)};
}

TEST(StringToolkitTest, HashesAndSearchesAgreeWithTheirSlowForms) {
    std::mt19937 random(1);
    for (std::size_t bytes = 0; bytes < 300; ++bytes) {
        const char least = bytes % 2 == 0 ? '\x01' : '\xF0';  // any bytes, or the highest ones alone
        std::string text(bytes, least), pattern(2 + random() % 40, 'a');
        for (char& c : text) c = static_cast<char>(static_cast<unsigned char>(c) + random() % (least == 1 ? 255 : 16));
        const std::vector<char> exact = test_support::Exactly(text + '\0');
        const Numbers hashes = {UrlHash(exact.data()), HfIp(exact.data()), _hf(exact.data()),
                                static_cast<long>(Strhash(exact.data()))};
        EXPECT_EQ(hashes, HashesByDefinition(text)) << Hex(text);

        // Places that begin and end like the pattern, and are it or not.
        for (char& c : text) c = random() % 8 == 0 ? 'b' : 'a';
        for (std::size_t i = 1; i + 1 < pattern.size(); ++i) pattern[i] = random() % 8 == 0 ? 'b' : 'a';
        const std::vector<char> block = test_support::Exactly(text);
        const std::string_view view(block.data(), block.size());
        for (std::size_t from = 0; from <= bytes + 1; ++from)
            for (std::size_t size = 1; size <= pattern.size(); ++size)
                ASSERT_EQ(utility::internal::FindFirst(view, pattern.substr(0, size), from),
                          text.find(pattern.substr(0, size), from));
    }
    // Compared anew at every place, either pattern would take far too long.
    const std::string megabyte(1 << 20, 'a'), half(1 << 19, 'a');
    EXPECT_EQ(utility::internal::FindFirst(megabyte, half.substr(1) + "ba", 0), std::string::npos);
    EXPECT_EQ(utility::internal::FindFirst(megabyte, "a" + half + "ba", 0), std::string::npos);
}

TEST(StringToolkitTest, ComputeSimRewardsCharactersInOrder) {
    // clang-format off
    const std::tuple<const char*, const char*, double> rows[] = {
        {nullptr, nullptr, 1}, {"", "", 1}, {nullptr, "", 0.5}, {"", nullptr, 0.5}, {"", "x", 0.5}, {"x", "", 0},
        {"x", nullptr, 0}, {"Hello", "hELLO", 1}, {"ELL", "hello", 0}, {"ell", "hello", 0.6}, {"ba", "ab", 0.64},
        {"aa", "a", 1.62}, {"abd", "abc", 1.9 / 3 * 1.9 / 3},
        {"\xB9\xFA\xD6\xD0", "\xD6\xD0\xB9\xFA", 3.2 / 4 * 3.2 / 4},
        {"\xD0\xB9\xD6\xD0\xA1", "\xD6\xD0\xB9", 3.0 / 3 * 3.0 / 5}};
    // clang-format on
    for (const auto& [a, b, similarity] : rows) EXPECT_DOUBLE_EQ(ComputeSim(a, b), similarity) << similarity;
}

// The definition for texts of which the first does not occur in the second, with a search for every character.
double SimilarityByDefinition(const std::string& a, const std::string& b) {
    double score = 0;
    for (std::size_t i = 0, n, last = 0, found; i < a.size(); i += n) {
        n = (a[i] & 0x80) != 0 && i + 1 < a.size() ? 2 : 1;
        if ((found = b.find(a.substr(i, n), last)) != b.npos) {
            score += static_cast<double>(n) * (found == last + n ? 1.0 : 0.9);
            last = found;
        } else if (b.find(a.substr(i, n)) != b.npos) {
            score += static_cast<double>(n) * 0.6;
        }
    }
    return score / static_cast<double>(b.size()) * score / static_cast<double>(a.size());
}

TEST(StringToolkitTest, ComputeSimAgreesWithItsDefinition) {
    std::mt19937 random(1);
    const auto text_of = [&](std::size_t bytes, std::size_t letters) {
        std::string text(bytes, '\0');
        for (char& c : text)
            c = "\xD6\xD0"
                "ab\xB9\xFA"
                "c\x80"[random() % letters];
        return text;
    };
    for (std::size_t round = 0; round < 3000; ++round) {
        // Lengths around those where one way to search takes over from another.
        const std::size_t b_bytes = round % 3 == 0 ? 1 + random() % 8 : 60 + random() % 75;
        const std::string b = text_of(b_bytes, 4 + round % 5), a = text_of(1 + random() % 80, 5 + round % 4) + 'x';
        EXPECT_EQ(ComputeSim(a.c_str(), b.c_str()), SimilarityByDefinition(a, b)) << Hex(a) << " | " << Hex(b);
    }
    for (const std::size_t b_bytes : std::initializer_list<std::size_t>{65535, 65536, 200000}) {
        const std::string b = text_of(b_bytes, 7), a = text_of(3000, 8) + 'x';
        EXPECT_EQ(ComputeSim(a.c_str(), b.c_str()), SimilarityByDefinition(a, b));
    }
}

TEST(StringToolkitTest, SortByNumberKeepsTheOrderOfEqualNumbers) {
    Strings list = {"doc12", "dox", "doc 7b", "do", "doc-1", "doc+7", "", "doc4294967298"};
    Strings sorted = {"doc-1", "dox", "do", "", "doc4294967298", "doc 7b", "doc+7", "doc12"};
    for (char c = 'a'; c <= 'z'; ++c) list.push_back(std::string("doc13") + c), sorted.push_back(list.back());
    SortByNumber(list, "xyz");
    EXPECT_EQ(list, sorted);
    // As many as one way to sort takes, and as another does.
    std::mt19937 random(1);
    for (const std::size_t count : std::initializer_list<std::size_t>{150, 5000}) {
        list.clear();
        for (std::size_t i = 0; i < count; ++i) {
            const auto number = static_cast<int>(random()) >> random() % 32;
            list.push_back(std::to_string(number) + "-" + std::to_string(i));
        }
        sorted = list;
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const auto& a, const auto& b) { return std::stol(a) < std::stol(b); });
        SortByNumber(list, "");
        EXPECT_EQ(list, sorted);
    }
    EXPECT_TRUE((_index_digit{2, 1} < _index_digit{1, 2}) && !(_index_digit{1, 2} < _index_digit{2, 2}));
}

}  // namespace
