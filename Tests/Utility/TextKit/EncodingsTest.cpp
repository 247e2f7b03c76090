#include <TextKit.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMapsTestSupport.h"
#include "Support/TestSupport.h"

namespace {

using namespace std::string_literals;
using test_support::Bytes;
using test_support::Convert;
using test_support::Hex;
using textkit::CodeMaps;
using textkit::Encoding;
using textkit::kNoPosition;

constexpr Encoding kAll[] = {Encoding::kGbk, Encoding::kBig5, Encoding::kUtf8, Encoding::kUtf16Le, Encoding::kUtf16Be};

CodeMaps Maps() {
    return CodeMaps::Load(UTILITY_TEST_DATA_FILE).value_or(CodeMaps());
}

TEST(DecodeTest, MalformedTextKeepsWhatIsReadable) {
    struct Row {
        Encoding encoding;
        std::string bytes, text;
        std::size_t replaced, first;
    };
    const Row rows[] = {
        {Encoding::kGbk, "a\xD6\xD0", "a中", 0, kNoPosition},
        {Encoding::kGbk, "\xD6\n<b>", "\uFFFD\n<b>", 1, 0},         // a line end is no trail byte
        {Encoding::kGbk, "\xB0\xA1\xA2\x41z", "啊\uFFFDAz", 1, 2},  // A2 41 is unassigned: its "A" is text
        {Encoding::kGbk, "\xA2\xA1\xA2\xAF", "ⅰ\uFFFD", 1, 2},      // A2 AF is unassigned
        {Encoding::kGbk, "\x80\xFF", "€\uFFFD", 1, 1},
        {Encoding::kGbk, "\xB0\xFFz", "\uFFFDz", 1, 0},
        {Encoding::kGbk, Bytes("a\0b"), Bytes("a\0b"), 0, kNoPosition},
        {Encoding::kGbk, "\x84\x31\xA4\x37!", "\uFFFD!", 1, 0},  // GB18030's four bytes are one mark
        {Encoding::kBig5, "\xA4\xA4\xA4\x40\x80", "中一\uFFFD", 1, 4},
        {Encoding::kBig5, "\x88\x62\x88\x64\x88\xA3\x88\xA5\x87\x40", "Ê̄Ê̌ê̄ê̌䏰", 0, kNoPosition},
        {Encoding::kUtf8, "\xEF\xBB\xBF中", "中", 0, kNoPosition},
        {Encoding::kUtf8, "\xEF\xBB\xBF\xFF", "\uFFFD", 1, 3},
        {Encoding::kUtf16Le, "\xFF\xFE\x2D\x4E\x3C\xD8\x5E\xDF"s, "中🍞", 0, kNoPosition},
        {Encoding::kUtf16Le, Bytes("\x00\xD8\x41\x00\x00\xDC"), "\uFFFDA\uFFFD", 2, 0},
        {Encoding::kUtf16Le, Bytes("A\0\x3C\xD8\x3C\xD8\x5E\xDF"), "A\uFFFD🍞", 1, 2},
        {Encoding::kUtf16Le, Bytes("\x00\xD8z"), "\uFFFD", 1, 0},
        {Encoding::kUtf16Le, Bytes("A\0B"), "A\uFFFD", 1, 2},
        {Encoding::kUtf16Be, Bytes("\xFE\xFF\0A\xD8\x3C\xDF\x5E\xDF\x5E\xD8\0\0"), "A🍞\uFFFD\uFFFD", 2, 8},
        {Encoding::kUnknown, "\xE4\xB8\xAD", "中", 0, kNoPosition},
        {Encoding::kUnknown, "\xD6\xD0", "中", 0, kNoPosition},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Hex(row.bytes));
        const textkit::Decoded decoded = textkit::Decode(row.bytes, row.encoding, Maps());
        EXPECT_EQ(Hex(decoded.text), Hex(row.text));
        EXPECT_EQ(decoded.replaced, row.replaced);
        EXPECT_EQ(decoded.first_replaced, row.first);
    }
    EXPECT_EQ(textkit::Decode("\x84\x31\xA4\x37", Encoding::kGbk).gb18030_four_byte, 1u);
}

// The decoders of the Encoding Standard, a byte at a time with bytes given back to the input, in the form in which it
// writes them down. Characters are taken from the C library.
std::string SlowUtf8(const std::string& bytes) {
    std::string text, pending;
    int needed = 0;
    unsigned lower = 0x80, upper = 0xBF;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (needed == 0) {
            needed = byte < 0x80 ? 0 : byte < 0xC2 ? -1 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : byte < 0xF5 ? 3 : -1;
            if (byte == 0xE0) lower = 0xA0;
            if (byte == 0xED) upper = 0x9F;
            if (byte == 0xF0) lower = 0x90;
            if (byte == 0xF4) upper = 0x8F;
            if (needed > 0) pending = bytes[i];
            if (needed == 0) text += bytes[i];
            if (needed < 0) text += "\uFFFD", needed = 0;
        } else if (byte < lower || byte > upper) {
            text += "\uFFFD";
            needed = 0, lower = 0x80, upper = 0xBF;
            --i;  // given back
        } else {
            lower = 0x80, upper = 0xBF;
            pending += bytes[i];
            if (--needed == 0) text += pending;
        }
    }
    return needed == 0 ? text : text + "\uFFFD";
}

std::string SlowDoubleByte(const std::string& bytes, const char* charset) {
    std::string text, pending;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (pending.empty() && (byte < 0x80 || byte == 0x80 || byte == 0xFF)) {
            text += byte < 0x80 ? std::string(1, bytes[i]) : byte == 0x80 && charset[0] == 'G' ? "€" : "\uFFFD";
        } else if (pending.empty()) {
            pending = bytes[i];
        } else {
            std::string character = byte < 0x40 ? "" : Convert("UTF-8", charset, pending + bytes[i]);
            pending.clear();
            if (character.empty()) {
                character = "\uFFFD";
                if (byte < 0x80) --i;  // given back
            }
            text += character;
        }
    }
    return pending.empty() ? text : text + "\uFFFD";
}

TEST(DecodeTest, FollowsTheStandardsDecoders) {
    for (const std::string& bytes : test_support::AllTexts("A\x80\x9F\xA0\xBF\xC2\xE0\xED\xF0\xF4\xF5\xFF", 4)) {
        ASSERT_EQ(textkit::Decode(bytes, Encoding::kUtf8).text, SlowUtf8(bytes)) << Hex(bytes);
        ASSERT_EQ(textkit::IsValidUtf8(bytes), SlowUtf8(bytes) == bytes) << Hex(bytes);
    }
    const CodeMaps maps = Maps();
    const std::string alphabet = "A\n\x7F\x80\xA4\xC9\xFE\xFF";
    for (const std::string& bytes : test_support::AllTexts(alphabet + "\xA2", 4))
        ASSERT_EQ(textkit::Decode(bytes, Encoding::kGbk).text, SlowDoubleByte(bytes, "GBK")) << Hex(bytes);
    // Behind A2 the C library has other symbols.
    for (const std::string& bytes : test_support::AllTexts(alphabet + "\xB7", 4)) {
        ASSERT_EQ(textkit::Decode(bytes, Encoding::kBig5, maps).text, SlowDoubleByte(bytes, "BIG5-HKSCS"))
            << Hex(bytes);
    }
}

// A block of the decoder may end anywhere.
TEST(DecodeTest, BlocksLeaveNoTrace) {
    for (std::size_t shift = 0; shift < 4; ++shift) {
        std::string text(shift, 'x');
        while (text.size() < 20000) text += "中a文";
        for (const Encoding encoding : kAll) {
            const textkit::Encoded encoded = textkit::Encode(text, encoding);
            const bool big5_missing = encoding == Encoding::kBig5 && encoded.replaced != 0;
            EXPECT_TRUE(big5_missing || textkit::Decode(encoded.bytes, encoding).text == text) << shift;
        }
        text += "\xE4\xB8";
        EXPECT_EQ(textkit::Decode(text, Encoding::kUtf8).first_replaced, text.size() - 2);
        EXPECT_EQ(textkit::Encode(text, Encoding::kGbk).first_replaced, text.size() - 2);
    }
}

// Pairs of any length in UTF-8, unknown ones and single bytes, in every order, in front of enough text for the fast loop:
// each gives what it gives alone.
TEST(DecodeTest, RunsGiveWhatTheirCharactersGive) {
    const struct {
        Encoding encoding;
        std::string pieces[5], behind;
    } kRows[] = {{Encoding::kGbk,
                  {"\xD6\xD0", "\xA1\xA4", "\xA2\xAF", "a", "\xFF"},
                  "\xD6\xD0"
                  "a\xD6\xD0\xCE\xC4 and so on and on"},
                 {Encoding::kBig5,
                  {"\xA4\xA4", "\xA1\x50", "\x88\x62", "a", "\xFF"},
                  "\xA4\xA4\xA4\xA4\xA4\xA4\xA4\xA4\xA4\xA4\xA4\xA4z"}};
    const CodeMaps maps = Maps();
    for (const auto& row : kRows) {
        std::vector<textkit::Decoded> alone;
        for (const std::string& piece : row.pieces) alone.push_back(textkit::Decode(piece, row.encoding, maps));
        EXPECT_EQ(alone[1].text.size(), 2u);
        const std::string rest = textkit::Decode(row.behind, row.encoding, maps).text;
        for (int order = 0; order < 5 * 5 * 5 * 5 * 5 * 5; ++order) {
            std::string bytes, text;
            std::size_t replaced = 0;
            for (int i = 0, left = order; i < 6; ++i, left /= 5) {
                const auto piece = static_cast<std::size_t>(left % 5);
                bytes += row.pieces[piece];
                text += alone[piece].text;
                replaced += alone[piece].replaced;
            }
            const textkit::Decoded decoded = textkit::Decode(bytes + row.behind, row.encoding, maps);
            ASSERT_EQ(Hex(decoded.text), Hex(text + rest)) << Hex(bytes);
            ASSERT_EQ(decoded.replaced, replaced);
            ASSERT_EQ(textkit::Decode(bytes, row.encoding, maps).text, text) << Hex(bytes);
        }
    }
}

// Every two-byte code against the C library. For Big5 that has other symbols in rows A1 and A2 and fewer extensions.
TEST(DecodeTest, AgreesWithTheCLibraryOnEveryTwoByteCode) {
    const struct {
        Encoding encoding;
        const char* library_name;
        int same, different, only_ours;
    } kRows[] = {{Encoding::kGbk, "CP936", 21791, 0, 0}, {Encoding::kBig5, "BIG5-HKSCS", 18452, 11, 131}};
    const CodeMaps maps = Maps();
    for (const auto& row : kRows) {
        int same = 0, different = 0, only_ours = 0;
        for (unsigned code = 0x8140; code <= 0xFEFF; ++code) {
            const std::string pair = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
            const textkit::Decoded ours = textkit::Decode(pair, row.encoding, maps);
            if (ours.replaced != 0 || (code & 0xFF) < 0x40) continue;
            const std::string theirs = Convert("UTF-8", row.library_name, pair);
            same += ours.text == theirs;
            only_ours += theirs.empty();
            if (ours.text == theirs || theirs.empty()) continue;
            ++different;
            EXPECT_TRUE(pair[0] == '\xA1' || pair[0] == '\xA2') << Hex(pair);
        }
        EXPECT_EQ(same, row.same);
        EXPECT_EQ(different, row.different);
        EXPECT_EQ(only_ours, row.only_ours);
    }
}

TEST(EncodeTest, CountsWhatTheTargetLacks) {
    const std::string text = "A中©🍞\xFF";
    struct Row {
        Encoding encoding;
        textkit::Unmappable unmappable;
        std::string bytes;
        std::size_t replaced, first;
    };
    constexpr auto kMark = textkit::Unmappable::kQuestionMark;
    constexpr auto kReference = textkit::Unmappable::kNumericReference;
    const Row rows[] = {
        {Encoding::kGbk, kMark, "A\xD6\xD0???", 3, 4},
        {Encoding::kGbk, kReference, "A\xD6\xD0&#169;&#127838;&#65533;", 3, 4},
        {Encoding::kBig5, kReference, "A\xA4\xA4&#169;&#127838;&#65533;", 3, 4},
        {Encoding::kUtf8, kReference, "A中©🍞\uFFFD", 1, 10},
        {Encoding::kUtf16Le, kMark, Bytes("A\0\x2D\x4E\xA9\0\x3C\xD8\x5E\xDF\xFD\xFF"), 1, 10},
        {Encoding::kUtf16Be, kMark, Bytes("\0A\x4E\x2D\0\xA9\xD8\x3C\xDF\x5E\xFF\xFD"), 1, 10},
    };
    for (const Row& row : rows) {
        const textkit::Encoded encoded = textkit::Encode(text, row.encoding, row.unmappable, Maps());
        EXPECT_EQ(Hex(encoded.bytes), Hex(row.bytes));
        EXPECT_EQ(encoded.replaced, row.replaced);
        EXPECT_EQ(encoded.first_replaced, row.first);
    }
    EXPECT_EQ(textkit::Encode("€", Encoding::kGbk).bytes, "\x80");
    EXPECT_EQ(textkit::Encode("€", Encoding::kGbk, kMark, Maps()).bytes, "\x80");
}

// Characters in runs against each of them alone, which is too short for a run.
TEST(EncodeTest, RunsGiveWhatTheirCharactersGive) {
    const CodeMaps maps = Maps();
    const std::string pieces[] = {"中",       "文",           "文",           "。",      "a",   "b ", "Z\n", "\u00A9",
                                  "\u0800",   "\u20AC",       "\uD7FF",       "\uE000",  "鿿", "🍞",  "㐀",  "\xFF",
                                  "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE4\xB8"};
    std::mt19937 random(5);
    for (const Encoding encoding : kAll) {
        for (int round = 0; round < 2000; ++round) {
            // Most rounds are of few kinds of piece, so that there are runs.
            const std::size_t kinds = 1 + random() % std::size(pieces), first = random() % std::size(pieces);
            std::string text;
            textkit::Encoded expected;
            std::string decoded;
            for (auto left = random() % (round % 50 == 0 ? 2000 : 100); left > 0; --left) {
                const std::string& piece = pieces[(first + random() % kinds) % std::size(pieces)];
                const textkit::Encoded one = textkit::Encode(piece, encoding, {}, maps);
                if (expected.replaced == 0 && one.replaced != 0)
                    expected.first_replaced = text.size() + one.first_replaced;
                expected.replaced += one.replaced;
                expected.bytes += one.bytes;
                decoded += textkit::Decode(one.bytes, encoding, maps).text;
                text += piece;
            }
            const textkit::Encoded encoded = textkit::Encode(text, encoding, {}, maps);
            ASSERT_EQ(Hex(encoded.bytes), Hex(expected.bytes)) << Hex(text);
            ASSERT_EQ(encoded.replaced, expected.replaced);
            ASSERT_EQ(encoded.first_replaced, expected.first_replaced);
            ASSERT_EQ(textkit::Decode(encoded.bytes, encoding, maps).text, decoded);
        }
    }
    // Surrogates that are half a pair, among whole ones.
    for (int round = 0; round < 2000; ++round) {
        std::string units, text;
        std::size_t replaced = 0;
        for (auto left = random() % 600; left > 0; --left) {
            const bool lone = random() % 100 < static_cast<unsigned>(round % 20);
            const std::string character = pieces[random() % 4 == 0 ? 13 : random() % 8];
            units += lone ? "\x00\xDCz\0"s : textkit::Encode(character, Encoding::kUtf16Le).bytes;
            text += lone ? "\uFFFDz" : character;
            replaced += lone;
        }
        const textkit::Decoded decoded = textkit::Decode(units, Encoding::kUtf16Le);
        ASSERT_EQ(decoded.text, text);
        ASSERT_EQ(decoded.replaced, replaced);
    }
}

// Every code point there and back; of the codes that share a character one alone comes back.
TEST(EncodeTest, RoundTripsEveryCharacter) {
    const CodeMaps maps = Maps();
    std::map<Encoding, int> kept;
    for (unsigned code_point = 0x80; code_point <= 0x10FFFF; code_point += code_point < 0x30000 ? 1 : 0x101) {
        if (code_point >= 0xD800 && code_point < 0xE000) continue;
        const char units[] = {static_cast<char>(code_point & 0xFF), static_cast<char>(code_point >> 8 & 0xFF),
                              static_cast<char>(code_point >> 16), 0};
        const std::string text = Convert("UTF-8", "UTF-32LE", std::string(units, 4));
        for (const Encoding encoding : kAll) {
            const textkit::Encoded encoded = textkit::Encode(text, encoding, {}, maps);
            if (encoded.replaced != 0) continue;
            ++kept[encoding];
            ASSERT_EQ(textkit::Decode(encoded.bytes, encoding, maps).text, code_point == 0xFEFF ? "" : text);
        }
    }
    EXPECT_EQ(kept[Encoding::kGbk], 21792);
    EXPECT_EQ(kept[Encoding::kBig5], 14362 + 291);
    EXPECT_EQ(kept[Encoding::kUtf8], kept[Encoding::kUtf16Le]);
    // Six characters take the second of their two codes, the others, as 包 and 倩, the first.
    EXPECT_EQ(Hex(textkit::Encode("═╞╡╪十卅包倩", Encoding::kBig5, {}, maps).bytes),
              "F9 F9 F9 E9 F9 EB F9 EA A4 51 A4 CA A5 5D AD C5");
}

TEST(DetectTest, MarksAndAsciiDecide) {
    struct Row {
        std::string bytes;
        Encoding encoding;
        bool sure;
    };
    const Row rows[] = {
        {"", Encoding::kUtf8, true},
        {"<meta charset=big5> plain", Encoding::kUtf8, true},
        {"\xEF\xBB\xBF\xD6\xD0", Encoding::kUtf8, true},
        {Bytes("\xFF\xFE"), Encoding::kUtf16Le, true},
        {Bytes("\xFE\xFF\0a"), Encoding::kUtf16Be, true},
        {Bytes("\xFF\xFE\0\0a\0\0\0"), Encoding::kUnknown, false},
        {Bytes("p\0l\0a\0i\0n\0 \0t\0e\0x\0t\0"), Encoding::kUtf16Le, false},
        {"这是一个用来测试的句子。", Encoding::kUtf8, false},
        {textkit::Encode("这是一个用来测试的句子。", Encoding::kGbk).bytes, Encoding::kGbk, false},
        {textkit::Encode("這是一個用來測試的句子。", Encoding::kBig5, {}, Maps()).bytes, Encoding::kBig5, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Hex(row.bytes));
        const textkit::Detection detection = textkit::Detect(row.bytes, Maps());
        EXPECT_EQ(detection.encoding, row.encoding);
        EXPECT_EQ(detection.confidence == 1, row.sure);
        EXPECT_EQ(detection.confidence == 0, row.encoding == Encoding::kUnknown);
        EXPECT_TRUE(row.sure || row.encoding == Encoding::kUnknown || detection.confidence > 0.7)
            << detection.confidence;
    }
}

TEST(DetectTest, ChecksUtf16WithoutAMark) {
    const std::string notice = "各位住户：因更换水管，本楼将于五月二十日上午停水。";
    const struct {
        std::string bytes;
        Encoding encoding;
    } rows[] = {
        {Bytes("\0<\0h\0t\0m\0l\0>"), Encoding::kUtf16Be},
        {textkit::Encode(notice, Encoding::kUtf16Be).bytes, Encoding::kUtf16Be},
        {textkit::Encode(notice, Encoding::kUtf16Le).bytes, Encoding::kUtf16Le},
        {"It is no more than one odd byte: don\x92t", Encoding::kUnknown},
        {Bytes("A page of English markup with one NUL\0 in it, and nothing else"), Encoding::kGbk},
    };
    for (const auto& row : rows) EXPECT_EQ(textkit::Detect(row.bytes, Maps()).encoding, row.encoding) << Hex(row.bytes);
}

TEST(DetectTest, ADeclarationDecidesWhereTheBytesDoNot) {
    const std::string sentence = textkit::Encode("這是一個用來測試的句子。", Encoding::kBig5, {}, Maps()).bytes;
    const struct {
        std::string bytes;
        Encoding encoding;
    } rows[] = {
        {"<meta charset=big5> plain", Encoding::kUtf8},
        {"<meta charset = 'Big5'>\xFFx", Encoding::kBig5},
        {"<?xml encoding=\"x\"?><meta content='text/html; CHARSET=gb2312'>\xFFx", Encoding::kGbk},
        {"<meta charset=utf-16>\xFFx", Encoding::kUtf8},
        {"<meta charset=utf-8><p>Qu’est-ce que c’est&nbsp;? À la fin, l’été passé, créée.", Encoding::kUtf8},
        {"<meta charset=utf-8>" + sentence, Encoding::kBig5},
        {"<meta charset=gbk>" + sentence, Encoding::kBig5},
        {std::string(5000, ' ') + "<meta charset=gbk>\xFFx", Encoding::kUnknown},
        {"charset=", Encoding::kUtf8},
        {"=\xFF charset", Encoding::kUnknown},
    };
    for (const auto& row : rows)
        EXPECT_EQ(textkit::DetectPage(row.bytes, Maps()).encoding, row.encoding) << Hex(row.bytes);
    EXPECT_EQ(textkit::DetectPage("<meta charset=gbk>\xFFx", Maps()).confidence, 0.5);
    for (const Encoding encoding : kAll)
        EXPECT_EQ(textkit::EncodingFromLabel("\t" + std::string(textkit::EncodingName(encoding)) + " "), encoding);
    EXPECT_EQ(textkit::EncodingFromLabel("GB18030"), Encoding::kGbk);
    EXPECT_EQ(textkit::EncodingFromLabel("latin1"), Encoding::kUnknown);
    EXPECT_EQ(textkit::EncodingFromLabel(""), Encoding::kUnknown);
    EXPECT_EQ(textkit::EncodingName(Encoding::kUnknown), "unknown");
}

TEST(CodeMapsTest, LoadFailsOnWhatIsNoDataFile) {
    EXPECT_FALSE(CodeMaps::Load("").has_value());
    const test_support::TempFolder folder;
    test_support::WriteFileBytes(folder / "short", std::string(60000, '\0'));
    EXPECT_FALSE(CodeMaps::Load(folder / "short").has_value());
    // A file's own maps and detector are used, not the compiled-in ones.
    test_support::WriteFileBytes(folder / "empty", test_support::DataFileBytes({}));
    const auto empty = CodeMaps::Load(folder / "empty");
    ASSERT_TRUE(empty.has_value());
    EXPECT_EQ(textkit::Decode("\xD6\xD0", Encoding::kGbk, *empty).replaced, 1u);
    EXPECT_EQ(textkit::Detect("\xD6\xD0", *empty).encoding, Encoding::kUnknown);
}

#ifdef UTILITY_EMBED_CODEMAPS
TEST(CodeMapsTest, CompiledInTablesAreThoseOfTheDataFile) {
    const CodeMaps maps = Maps();
    for (unsigned pair = 0; pair < 65536; ++pair) {
        const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF), 'z', '.'};
        for (const Encoding encoding : {Encoding::kGbk, Encoding::kBig5}) {
            const textkit::Decoded ours = textkit::Decode(bytes, encoding);
            ASSERT_EQ(ours.text, textkit::Decode(bytes, encoding, maps).text) << Hex(bytes);
            ASSERT_EQ(textkit::Encode(ours.text, encoding).bytes, textkit::Encode(ours.text, encoding, {}, maps).bytes);
        }
        ASSERT_EQ(textkit::Detect(bytes).encoding, textkit::Detect(bytes, maps).encoding) << Hex(bytes);
    }
}
#endif

}  // namespace
