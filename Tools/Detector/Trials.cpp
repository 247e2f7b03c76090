#include "Detector/Trials.h"

#include <iconv.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "CodeTrans/CodeMaps/EncodingCodes.h"

namespace tools {

namespace {

constexpr std::size_t kTriesPerWindow = 100;
constexpr std::size_t kPageCharacters = 3000;
constexpr std::ptrdiff_t kLeastChinese = 300;  // in a page
constexpr std::size_t kLongText = 1 << 20;

constexpr char16_t kPageBegin[] =
    u"<!DOCTYPE html>\n<html>\n<head>\n<title>Orders - Example Shop</title>\n"
    u"<link rel=\"stylesheet\" href=\"/static/main.css\">\n<script src=\"/static/app.js\"></script>\n</head>\n<body>\n"
    u"<div class=\"header\"><a href=\"/\">Home</a> | <a href=\"/cart?id=17\">Cart (2)</a></div>\n<div "
    u"id=\"content\">\n";
constexpr char16_t kPageEnd[] =
    u"</div>\n<script>\nfor (var i = 0; i < items.length; i++) { show(items[i].name, items[i].price * 0.9); }\n"
    u"</script>\n<p class=\"footer\">Copyright 2012 Example Shop. All rights reserved.</p>\n</body>\n</html>\n";

constexpr char kJapanese[] =
    "昨日の夕方、駅前の小さな本屋で古い地図を見つけました。店の主人は、これは百年前の町の地図だと言いました。川の流れは"
    "今と少し違い、"
    "橋も三つしかありません。わたしはその地図を買って、家に帰ってから祖父に見せました。すると祖父は笑いながら、子供のこ"
    "ろに泳いだ"
    "場所を指さして教えてくれました。コンピュータもテレビもない時代の話は、とても面白かったです。";
constexpr char kKorean[] =
    "어제 저녁에 친구와 함께 시장에 갔습니다. 사과와 배를 사고, 길모퉁이에 있는 작은 식당에서 국수를 먹었습니다. "
    "날씨가 추워서 "
    "따뜻한 국물이 아주 맛있었습니다. 집에 돌아오는 길에 눈이 내리기 시작했고, 우리는 버스를 기다리면서 내년 여행 "
    "계획에 대해 "
    "이야기했습니다. 봄이 되면 바다가 보이는 도시로 기차를 타고 갈 생각입니다.";
constexpr char kFrench[] =
    "Le vieux libraire était déjà arrivé à la gare lorsque la pluie commença. Il avait oublié son chapeau, et les "
    "élèves qui "
    "passaient près du café se moquèrent de lui. « Où allez-vous, Monsieur ? » demanda la plus âgée. Il répondit qu'il "
    "cherchait une boîte de thé, la même qu'il achetait dès le mois de février à l'épicerie du théâtre.";
constexpr char kRussian[] =
    "Вчера вечером мы долго гуляли по набережной и говорили о том, как изменился наш город за последние годы. Старый "
    "мост "
    "закрыли на ремонт, зато построили новую библиотеку, где можно сидеть до полуночи. Бабушка рассказывала, что "
    "раньше "
    "здесь был рынок, куда крестьяне привозили яблоки, мёд и рыбу.";
constexpr char kAscii[] =
    "#include <stdio.h>\nint main(int argc, char **argv) {\n\tfor (int i = 0; i < argc; ++i) printf(\"%d: %s\\n\", i, "
    "argv[i]);\n\treturn 0;\n}\n<table width=\"100%\"><tr><td align='right'>&nbsp;1,024.50</td></tr></table>\r\n"
    "SELECT * FROM t WHERE a <> 'b' AND c >= 3;  -- It's the {first} [of] ~many~ | `queries` ^ they ran @ 12:30 + $5\n"
    "The quick brown fox jumps over the lazy dog. THE END?! \x1B[31mred\x1B[0m\f\n{\"a\": [1, 2.5e-3, null], "
    "\"b\\\\\": true}\n";

std::string Convert(const char* to, std::string_view utf8) {
    iconv_t converter = iconv_open(to, "UTF-8");
    // NOLINTNEXTLINE(performance-no-int-to-ptr): so POSIX names the failure
    if (converter == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error(std::string("no encoding ") + to);
    std::string in(utf8), out(utf8.size() * 2, '\0');
    char *from = in.data(), *into = out.data();
    std::size_t from_left = in.size(), into_left = out.size();
    iconv(converter, &from, &from_left, &into, &into_left);
    iconv_close(converter);
    out.resize(out.size() - into_left);
    return out;
}

std::vector<std::string> Pieces(const std::string& text, std::size_t size, std::size_t step) {
    std::vector<std::string> pieces;
    for (std::size_t pos = 0; pos + size <= text.size(); pos += step) pieces.push_back(text.substr(pos, size));
    return pieces;
}

std::u16string AsPage(const std::u16string& text) {
    std::u16string page = kPageBegin;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t end = std::min(text.find(u'\n', pos), text.size());
        page += u"<p>" + text.substr(pos, end - pos) + u"</p>\n";
        pos = end + 1;
    }
    return page + kPageEnd;
}

}  // namespace

const std::array<Case, 5> kCases = {{
    {"GBK, Simplified", utility::internal::kGbkChannel, true, false, ENCODE_GBK},
    {"GBK, Traditional", utility::internal::kGbkChannel, false, true, ENCODE_GBK},
    {"Big5", utility::internal::kBig5Channel, false, true, ENCODE_BIG5},
    {"UTF-8", utility::internal::kUtf8Channel, true, true, ENCODE_UTF8},
    {"UCS-2LE", utility::internal::kUnicodeChannel, true, true, ENCODE_UNICODE},
}};

std::vector<std::string> TrialMaker::Windows(const Case& which, std::size_t size) const {
    const std::u16string text = TextOf(which);
    std::vector<std::string> windows;
    Random random(seed_);
    if (text.size() < size) return windows;
    for (std::size_t tries = 0; windows.size() < most_ && tries < most_ * kTriesPerWindow; ++tries) {
        const std::u16string window = text.substr(random.Below(text.size() - size + 1), size);
        std::string bytes = encoder_.EncodeWindow(which.encoding, window);
        if (!bytes.empty()) windows.push_back(std::move(bytes));
    }
    return windows;
}

std::vector<std::string> TrialMaker::ShortInMarkup(const Case& which) const {
    constexpr std::size_t kSize = 7;
    const std::u16string text = TextOf(which);
    const std::string begin = encoder_.Encode(which.encoding, std::u16string(kPageBegin) + u"<p>");
    const std::string end = encoder_.Encode(which.encoding, std::u16string(u"</p>\n") + kPageEnd);
    std::vector<std::string> pages;
    Random random(seed_);
    if (text.size() < kSize) return pages;
    for (std::size_t tries = 0; pages.size() < most_ && tries < most_ * kTriesPerWindow; ++tries) {
        const std::u16string window = text.substr(random.Below(text.size() - kSize + 1), kSize);
        const std::string bytes = encoder_.EncodeWindow(which.encoding, window);
        if (!bytes.empty() && std::all_of(window.begin(), window.end(), IsHan))
            pages.emplace_back(begin).append(bytes).append(end);
    }
    return pages;
}

std::vector<std::string> TrialMaker::Pages(const Case& which) const {
    std::vector<std::string> pages;
    for (const std::u16string& part : PartsOf(which)) pages.push_back(encoder_.Encode(which.encoding, AsPage(part)));
    return pages;
}

std::vector<std::string> TrialMaker::MixedPages(const Case& first, const Case& rest, std::size_t percent) const {
    std::vector<std::string> pages;
    const std::vector<std::u16string> parts = PartsOf(first), parts_of_rest = PartsOf(rest);
    for (std::size_t i = 0; i < std::min(parts.size(), parts_of_rest.size()); ++i) {
        const std::u16string other = AsPage(parts_of_rest[i]);
        pages.push_back(encoder_.Encode(first.encoding, AsPage(parts[i].substr(0, parts[i].size() * percent / 100))) +
                        encoder_.Encode(rest.encoding, other.substr(other.size() * percent / 100)));
    }
    return pages;
}

std::string TrialMaker::LongText(const Case& which) const {
    const std::string bytes = encoder_.Encode(which.encoding, TextOf(which));
    if (bytes.empty()) throw std::runtime_error("there is no running text");
    std::string text;
    while (text.size() < kLongText) text += bytes.substr(0, kLongText - text.size());
    return text;
}

std::u16string TrialMaker::TextOf(const Case& which) const {
    std::u16string text;
    for (const TextFile& file : files_)
        if (file.words.empty() && (file.traditional ? which.traditional : which.simplified)) text += file.text;
    return text;
}

std::vector<std::u16string> TrialMaker::PartsOf(const Case& which) const {
    std::vector<std::u16string> parts;
    for (const TextFile& file : files_) {
        if (!file.words.empty() || !(file.traditional ? which.traditional : which.simplified)) continue;
        for (std::size_t pos = 0; pos < file.text.size() && parts.size() < most_; pos += kPageCharacters) {
            const std::u16string part = file.text.substr(pos, kPageCharacters);
            if (std::count_if(part.begin(), part.end(), IsHan) >= kLeastChinese) parts.push_back(part);
        }
    }
    return parts;
}

std::vector<OtherText> OtherTexts(std::uint64_t seed) {
    constexpr std::size_t kPiece = 64, kRandomTexts = 1000;
    const struct {
        const char *name, *encoding, *text;
        std::size_t step;  // whole characters, where all have the same length
    } kRows[] = {
        {"Japanese, EUC-JP", "EUC-JP", kJapanese, 2}, {"Japanese, Shift_JIS", "SHIFT_JIS", kJapanese, 2},
        {"Japanese, UTF-8", "UTF-8", kJapanese, 3},   {"Korean, EUC-KR", "EUC-KR", kKorean, 1},
        {"Korean, UTF-8", "UTF-8", kKorean, 1},       {"French, Latin-1", "ISO-8859-1", kFrench, 1},
        {"French, UTF-8", "UTF-8", kFrench, 1},       {"Russian, windows-1251", "CP1251", kRussian, 1},
        {"Russian, UTF-8", "UTF-8", kRussian, 1},
    };
    std::vector<OtherText> others;
    for (const auto& row : kRows) {
        const std::string text = Convert(row.encoding, row.text);
        others.push_back({std::string(row.name) + ", 64 bytes", Pieces(text, kPiece, row.step)});
        others.push_back({std::string(row.name) + ", whole", {text}});
    }
    OtherText noise = {"random bytes, 64", {}};
    Random random(seed);
    for (std::size_t i = 0; i < kRandomTexts; ++i) {
        std::string bytes;
        for (std::size_t pos = 0; pos < kPiece; ++pos) bytes += static_cast<char>(random.Below(256));
        noise.texts.push_back(std::move(bytes));
    }
    others.push_back(std::move(noise));
    return others;
}

std::vector<std::string> AsciiTexts() {
    const std::string text = kAscii;
    std::vector<std::string> texts;
    for (std::size_t size = 0; size <= text.size(); ++size)
        for (std::string& piece : Pieces(text, size, 1 + size / 2)) texts.push_back(std::move(piece));
    return texts;
}

}  // namespace tools
