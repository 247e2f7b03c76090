// What cuts and edits texts, over all short texts of a small alphabet: the expected values come from regular
// expressions and from strtok_r.

#include <gtest/gtest.h>

#include <cstring>
#include <regex>

#include "Support/TestSupport.h"
#include "Utility.h"
#include "Utility/StringToolkit/AllTexts.h"

namespace {

using test_support::AllTexts, test_support::Bytes, test_support::Hex, test_support::Strings;

// The matches of `pattern`, or what stands between them; none of them empty.
Strings Cut(const std::string& text, const std::regex& pattern, bool between = false) {
    Strings pieces(std::sregex_token_iterator(text.begin(), text.end(), pattern, between ? -1 : 0), {});
    pieces.erase(std::remove(pieces.begin(), pieces.end(), ""), pieces.end());
    return pieces;
}

TEST(CuttingTest, StrTokenAndSplitOrAgreeWithTheCLibrary) {
    Strings pieces;
    for (const std::string& text : AllTexts("a,;", 7)) {
        Strings expected, tokens;
        std::string copy = text;
        char *from = copy.data(), *state = nullptr;
        while (const char* token = strtok_r(std::exchange(from, nullptr), ",;", &state))
            expected.emplace_back(token);
        EXPECT_EQ(gfn_bSplitOR(text.c_str(), pieces, ",;"), !text.empty());
        EXPECT_EQ(pieces, expected) << text;
        // StrToken gives one empty token more where nothing, or a delimiter, ends the text.
        if (text.empty() || text.back() != 'a') expected.emplace_back();
        copy = text;
        from = copy.data();
        while (const char* token = StrToken(from, ",;", &from)) tokens.emplace_back(token);
        EXPECT_EQ(tokens, expected) << text;
    }
    EXPECT_TRUE(gfn_bSplitOR((std::string(9999, ',') + "ab").c_str(), pieces, ","));
    EXPECT_EQ(pieces, Strings{"a"});
}

TEST(CuttingTest, ReaderPutsTheTextBackAndGetStrVectorDropsLineEnds) {
    const struct {
        bool keep_inner_punct;
        const char *delims, *token;
    } rows[] = {{false, ",", "[^ ,\r][^,]*"},
                {false, ",. \n", "[^ ,.\r\n]([^ ,.\n]*)"},
                {true, ",", "[^ ,\r]([^,]|,(?=[0-9]))*"},
                {true, ",. ", "[^ ,.\r]([^ ,.]|[.](?=[^ ,.])|,(?=[0-9]))*"}};
    for (const auto& row : rows) {
        const std::regex pattern(row.token), line_ends("[\r\n]+$");
        CStrToken reader(row.keep_inner_punct);
        for (const std::string& text : AllTexts(" a1.,\r\n", 5)) {
            SCOPED_TRACE(Hex(text) + " cut at " + row.delims);
            Strings tokens, pieces;
            std::string copy = text, rebuilt;
            char *from = copy.data(), *end = text.size() % 2 == 0 ? nullptr : from + text.size();
            while (const char* token = reader.GetToken(from, end, row.delims)) {
                if (from != nullptr) rebuilt.assign(text, 0, static_cast<std::size_t>(token - from));
                rebuilt.append(token).append(reader.m_vSeparators.begin(), reader.m_vSeparators.end());
                EXPECT_EQ(reader.m_bReachedEnd, reader.m_vSeparators[0] == '\0');
                tokens.emplace_back(token);
                from = end = nullptr;
            }
            EXPECT_EQ(tokens, Cut(text, pattern));
            EXPECT_EQ(copy, text);
            EXPECT_TRUE(tokens.empty() || rebuilt.c_str() == text);
            if (row.keep_inner_punct) continue;
            for (std::string& token : tokens) token = std::regex_replace(token, line_ends, "");
            tokens.erase(std::remove(tokens.begin(), tokens.end(), ""), tokens.end());
            EXPECT_EQ(GetStrVector(text.c_str(), row.delims, pieces), tokens.size());
            EXPECT_EQ(pieces, tokens);
        }
    }
    std::string text = Bytes("a\0\0b,c");  // a NUL inside the range
    CStrToken reader(false);
    EXPECT_STREQ(reader.GetToken(text.data(), text.data() + text.size(), ","), "a");
    for (const char* const token :
         {static_cast<const char*>(nullptr), static_cast<const char*>(nullptr), "b"}) {
        EXPECT_STREQ(reader.GetToken(nullptr, nullptr, ","), token);
    }
}

using Lines = std::vector<std::pair<std::string, int>>;

// What a caller reads who puts each saved byte back: the lines, and 1 for those that are records.
Lines ReadLines(std::string text, bool allow_quoted) {
    Lines lines;
    char *next = text.data(), saved = 'x';
    int quoted = 2;
    while (const char* const line = StrLine(next, &next, &saved, &quoted, allow_quoted)) {
        lines.emplace_back(line, quoted);
        if (next != nullptr) *next = saved;
    }
    EXPECT_TRUE(next == nullptr && saved == '\0');
    return lines;
}

TEST(CuttingTest, StrLineReadsLinesAndRecords) {
    const std::string record = "\\^\\^([^\r\n][^^]*)\\^\\^", line = "[^ \r\n][^\r\n]*";
    const std::regex plain("(?!)()|" + line);
    const std::regex quoted(record + "|[^ \r\n^][^\r\n^]*(?=" + record + ")|" + line);
    for (const std::string& text : AllTexts("^a\n ", 8)) {
        for (const bool allow_quoted : {false, true}) {
            Lines expected;
            std::sregex_iterator match(text.begin(), text.end(), allow_quoted ? quoted : plain), end;
            for (; match != end; ++match) {
                expected.emplace_back((*match)[(*match)[1].matched], (*match)[1].matched);
            }
            EXPECT_EQ(ReadLines(text, allow_quoted), expected) << text;
        }
    }
    // A search over the whole rest of the text, made anew for every line, would not get through these.
    std::string open = "^^", records;
    for (int i = 0; i < 200000; ++i) open += "a\n", records += "a^^b^^";
    EXPECT_EQ(ReadLines(open, true).size(), 200000u);
    EXPECT_EQ(ReadLines(records, true).size(), 400000u);
}

TEST(CuttingTest, Str2CharVectorCutsBetweenCharacters) {
    const auto cut = [](const char* text, bool utf8) {
        Strings chars = {"old"};
        std::string joined;
        const std::size_t count = Str2CharVector(text, chars, utf8);
        EXPECT_EQ(count, chars.size());
        return Hex(Vector2Str(chars, "|", joined));
    };
    EXPECT_EQ(cut("a\xD6\xD0\xFF|\x80", false), Hex("a|\xD6\xD0|\xFF||\x80"));
    EXPECT_EQ(cut("a中\x80\xFC-----\xF8----\xE4-", true), Hex("a|中|\x80|\xFC-----|\xF8----|\xE4-"));
    EXPECT_EQ(cut(nullptr, true), "");
}

TEST(CuttingTest, SplitsAndReplacesFromLeftToRight) {
    Strings pieces;
    for (const std::string searched : {"a", "aa", "aba", "abab"}) {
        const std::regex pattern(searched);
        for (const std::string& text : AllTexts("ab", 9)) {
            EXPECT_EQ(gfn_bSplit(text.c_str(), pieces, searched.c_str()), !text.empty());
            EXPECT_EQ(pieces, Cut(text, pattern, true)) << text << " at " << searched;
            for (const char* const inserted : {"", "aba", "bbbbb"}) {
                std::string replaced = text;
                EXPECT_EQ(gfn_vReplaceSubstr(replaced, searched.c_str(), inserted),
                          Cut(text, pattern).size());
                EXPECT_EQ(replaced, std::regex_replace(text, pattern, inserted));
            }
        }
    }
    std::string text = Bytes("a\0a");
    EXPECT_EQ(gfn_vReplaceSubstr(text, text.c_str(), "bc"), 2u);
    EXPECT_EQ(Hex(text), "62 63 00 62 63");
}

TEST(CuttingTest, TakesNullAndEmptyArguments) {
    Strings pieces = {"old"};
    std::string text = "a";
    EXPECT_FALSE(gfn_bSplit(nullptr, pieces, ",") || gfn_bSplitOR(nullptr, pieces, ",") || !pieces.empty());
    EXPECT_TRUE(gfn_bSplit("a b", pieces, nullptr) && gfn_bSplit("a b", pieces, "") &&
                pieces == Strings{"a b"});
    EXPECT_EQ(gfn_vReplaceSubstr(text, nullptr, "b") + gfn_vReplaceSubstr(text, "", "b"), 0u);
    EXPECT_EQ(StrToken(nullptr, ",", nullptr), nullptr);
}

TEST(CuttingTest, JoinsWithoutEmptyItemsButKeepsTheSeparatorBeforeALastOne) {
    std::string joined = "old";
    EXPECT_STREQ(Vector2Str({}, ", ", joined), "");
    EXPECT_STREQ(Vector2Str({"", "a", "", "b"}, ", ", joined), "a, b");
    EXPECT_STREQ(Vector2Str({"a", "b", ""}, ", ", joined), "a, b, ");
}

TEST(CuttingTest, TrimsAByteOrBlankSpaceAtBothEnds) {
    const std::string blanks = "([ \t\r\n]|\xA1\xA1|\xA3\xA0)+";
    const std::regex byte("^a+|a+$"), front("^" + blanks), back(blanks + "$");
    for (const std::string& text : AllTexts("a \xA1\xA3\xA0", 6)) {
        std::string without_a = text, without_blanks = text;
        trim(without_a, 'a');
        EXPECT_EQ(Hex(without_a), Hex(std::regex_replace(text, byte, "")));
        EXPECT_EQ(gfn_bTrimWord(without_blanks), !text.empty());
        EXPECT_EQ(Hex(without_blanks),
                  Hex(std::regex_replace(std::regex_replace(text, front, ""), back, "")));
    }
}

}  // namespace
