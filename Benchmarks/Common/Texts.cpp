#include "Common/Texts.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <tuple>

namespace bench {

namespace {

// Words by falling frequency, Simplified and Traditional; every word is drawn in proportion to 1 / (rank + 5).
constexpr const char* kWords[][2] = {
    {"的", "的"},         {"是", "是"},         {"在", "在"},         {"了", "了"},     {"不", "不"},
    {"和", "和"},         {"有", "有"},         {"我", "我"},         {"他", "他"},     {"这", "這"},
    {"人", "人"},         {"一个", "一個"},     {"中国", "中國"},     {"我们", "我們"}, {"也", "也"},
    {"就", "就"},         {"都", "都"},         {"说", "說"},         {"到", "到"},     {"要", "要"},
    {"你", "你"},         {"会", "會"},         {"着", "著"},         {"对", "對"},     {"与", "與"},
    {"可以", "可以"},     {"上", "上"},         {"他们", "他們"},     {"没有", "沒有"}, {"她", "她"},
    {"年", "年"},         {"但", "但"},         {"从", "從"},         {"自己", "自己"}, {"时间", "時間"},
    {"问题", "問題"},     {"为", "為"},         {"工作", "工作"},     {"而", "而"},     {"发展", "發展"},
    {"大", "大"},         {"来", "來"},         {"因为", "因為"},     {"去", "去"},     {"社会", "社會"},
    {"现在", "現在"},     {"学生", "學生"},     {"如果", "如果"},     {"经济", "經濟"}, {"所以", "所以"},
    {"什么", "什麼"},     {"地方", "地方"},     {"图书馆", "圖書館"}, {"看", "看"},     {"还", "還"},
    {"生活", "生活"},     {"已经", "已經"},     {"国家", "國家"},     {"进行", "進行"}, {"城市", "城市"},
    {"使用", "使用"},     {"系统", "系統"},     {"文化", "文化"},     {"由于", "由於"}, {"历史", "歷史"},
    {"研究", "研究"},     {"世界", "世界"},     {"开始", "開始"},     {"学校", "學校"}, {"老师", "老師"},
    {"重要", "重要"},     {"方法", "方法"},     {"读者", "讀者"},     {"技术", "技術"}, {"需要", "需要"},
    {"文章", "文章"},     {"今天", "今天"},     {"它们", "它們"},     {"水平", "水平"}, {"之后", "之後"},
    {"知道", "知道"},     {"环境", "環境"},     {"许多", "許多"},     {"北京", "北京"}, {"管理", "管理"},
    {"朋友", "朋友"},     {"提高", "提高"},     {"记者", "記者"},     {"孩子", "孩子"}, {"认为", "認為"},
    {"市场", "市場"},     {"电影", "電影"},     {"企业", "企業"},     {"健康", "健康"}, {"音乐", "音樂"},
    {"几乎", "幾乎"},     {"公司", "公司"},     {"飞机", "飛機"},     {"下午", "下午"}, {"语言", "語言"},
    {"消息", "消息"},     {"汉字", "漢字"},     {"上海", "上海"},     {"书籍", "書籍"}, {"春天", "春天"},
    {"医院", "醫院"},     {"山水", "山水"},     {"讨论", "討論"},     {"借阅", "借閱"}, {"铁路", "鐵路"},
    {"办公室", "辦公室"}, {"计算机", "計算機"}, {"面积", "面積"},     {"报纸", "報紙"}, {"农村", "農村"},
    {"长江", "長江"},     {"天气", "天氣"},     {"运动", "運動"},     {"选择", "選擇"}, {"传统", "傳統"},
    {"旅游", "旅遊"},     {"故事", "故事"},     {"信息", "信息"},     {"网络", "網絡"}, {"安全", "安全"},
    {"质量", "質量"},     {"产品", "產品"},     {"关系", "關係"},     {"教育", "教育"}, {"建设", "建設"},
    {"显示", "顯示"},     {"文件", "文件"},     {"点击", "點擊"},     {"输入", "輸入"}, {"编码", "編碼"},
    {"东方", "東方"},     {"鲜花", "鮮花"},     {"辽阔", "遼闊"},     {"轻松", "輕鬆"}, {"谦虚", "謙虛"},
};

constexpr const char* kEnglishWords[] = {
    "the",     "of",      "and",    "to",      "in",       "a",      "is",      "that",    "for",     "it",
    "as",      "was",     "with",   "be",      "by",       "on",     "not",     "he",      "this",    "are",
    "or",      "his",     "from",   "at",      "which",    "but",    "have",    "an",      "had",     "they",
    "you",     "were",    "their",  "one",     "all",      "we",     "can",     "her",     "has",     "there",
    "been",    "if",      "more",   "when",    "will",     "would",  "who",     "so",      "no",      "reader",
    "library", "may",     "borrow", "books",   "every",    "page",   "request", "time",    "opens",   "nine",
    "morning", "people",  "system", "text",    "language", "server", "release", "version", "between", "through",
    "because", "Beijing", "London", "Unicode", "document", "however"};

std::map<bool, std::string>& TakenTexts() {
    static std::map<bool, std::string> texts;
    return texts;
}

using Random = std::mt19937;

// std's distributions may differ from library to library; the texts may not.
std::size_t Below(Random& random, std::size_t limit) {
    return random() % limit;
}

template <typename List>
std::size_t Rank(Random& random, const List& list) {
    static const std::vector<double> sums = [&] {
        std::vector<double> values;
        for (std::size_t i = 0; i < std::size(list); ++i)
            values.push_back((values.empty() ? 0 : values.back()) + 1 / (static_cast<double>(i) + 5));
        return values;
    }();
    const double draw = static_cast<double>(random()) / 4294967296.0 * sums.back();
    return static_cast<std::size_t>(std::upper_bound(sums.begin(), sums.end(), draw) - sums.begin());
}

// The 3,755 characters of the first level of GB 2312, or the 5,401 of the frequent ones of Big5, as UTF-8.
std::vector<std::string> CommonCharacters(bool traditional) {
    std::vector<std::string> characters;
    const auto add = [&](unsigned lead, unsigned trail) {
        const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
        const std::string utf8 = Convert("UTF-8", traditional ? "BIG5" : "GBK", {bytes, 2});
        if (!utf8.empty()) characters.push_back(utf8);
    };
    for (unsigned lead = traditional ? 0xA4 : 0xB0; lead <= (traditional ? 0xC5 : 0xD7); ++lead)
        for (unsigned trail = traditional ? 0x40 : 0xA1; trail <= 0xFE; ++trail)
            if (trail < 0x7F || trail > 0xA0) add(lead, trail);
    return characters;
}

std::string ChineseWord(Random& random, bool traditional) {
    static const std::vector<std::string> characters[] = {CommonCharacters(false), CommonCharacters(true)};
    if (Below(random, 8) != 0) return kWords[Rank(random, kWords)][traditional];
    // A name or a rarer word, of characters that lean to the front of the list.
    std::string word;
    for (std::size_t left = 1 + Below(random, 3); left > 0; --left)
        word += characters[traditional][Below(random, 1 + Below(random, characters[traditional].size()))];
    return word;
}

std::string Figure(Random& random) {
    return std::to_string(Below(random, 10) < 6 ? Below(random, 100) : 1900 + Below(random, 130));
}

// About `bytes` bytes of sentences in UTF-8, `line_end` behind one in four.
std::string Sentences(Random& random, bool traditional, bool with_english, std::size_t bytes, const char* line_end) {
    std::string text;
    while (text.size() < bytes) {
        for (std::size_t left = 3 + Below(random, 10); left > 0; --left) {
            if (with_english && Below(random, 5) == 0) {
                text.append(" ").append(Below(random, 3) == 0 ? Figure(random) : kEnglishWords[Below(random, 76)]) +=
                    ' ';
            } else {
                text += ChineseWord(random, traditional);
            }
        }
        constexpr const char* kMarks[] = {"，", "，", "，", "。", "。", "、", "？", "：“"};
        const std::size_t mark = Below(random, std::size(kMarks));
        text += kMarks[mark];
        if (mark == 7) text.append(ChineseWord(random, traditional)) += "”";
        if (Below(random, 4) == 0) text += line_end;
    }
    return text;
}

std::string English(Random& random, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes) {
        for (std::size_t left = 5 + Below(random, 12); left > 0; --left)
            text.append(kEnglishWords[Rank(random, kEnglishWords)]) += left > 1 ? " " : ". ";
        if (Below(random, 4) == 0) text.back() = '\n';
    }
    return text;
}

std::string Page(Random& random, bool traditional, std::size_t bytes) {
    std::string page = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                       Sentences(random, traditional, false, 30, "") +
                       "</title>\n<link rel=\"stylesheet\" href=\"/style/main.css\">\n</head>\n<body>\n";
    while (page.size() < bytes) {
        page += "<div class=\"section\">\n<h2>" + Sentences(random, traditional, false, 30, "") + "</h2>\n";
        for (std::size_t left = 1 + Below(random, 4); left > 0; --left)
            page += "<p class=\"summary\">" + Sentences(random, traditional, true, 300, "<br>\n") + "&nbsp;</p>\n";
        page += "<ul id=\"news\">\n";
        for (std::size_t left = 2 + Below(random, 5); left > 0; --left)
            page += "    <li><a href=\"/news/" + Figure(random) + ".html?page=2&amp;lang=zh\" target=\"_blank\">" +
                    Sentences(random, traditional, false, 20, "") + "</a> <span>[03-" + Figure(random) +
                    "]</span></li>\n";
        page += "</ul>\n</div>\n";
        if (Below(random, 4) == 0)
            page +=
                "<!-- counter -->\n<script>\nfor (var i = 0; i < items.length; i++) { show(items[i], 'on'); }\n"
                "</script>\n";
    }
    return page + "</body>\n</html>\n";
}

std::string Utf8Text(Kind kind, bool traditional, std::size_t bytes) {
    Random random(20240229);
    std::string& taken = TakenTexts()[traditional];
    switch (kind) {
        case Kind::kEnglish:
            return English(random, bytes);
        case Kind::kMixed:
            return Sentences(random, traditional, true, bytes, "\n");
        case Kind::kHtml:
            return Page(random, traditional, bytes);
        default:
            if (taken.empty()) return Sentences(random, traditional, false, bytes, "\n");
            while (taken.size() < bytes) taken += taken;
            return taken.substr(0, bytes);
    }
}

void Damage(std::string& text) {
    Random random(42);
    for (std::size_t pos = Below(random, 32); pos < text.size(); pos += 1 + Below(random, 127))
        text[pos] = static_cast<char>(1 + Below(random, 255));
}

// Cuts the text to at most `bytes` bytes; a character that is cut is taken off by the round trip through iconv.
std::string CutTo(std::string text, const char* encoding, std::size_t bytes) {
    if (text.size() > bytes) text.resize(bytes);
    return Convert(encoding, "UTF-8", Convert("UTF-8", encoding, text));
}

std::string Make(Kind kind, const char* encoding, std::size_t bytes) {
    const bool traditional = std::strncmp(encoding, "BIG5", 4) == 0;
    // Three bytes of UTF-8 are two or more of every other encoding.
    std::string text = CutTo(Convert(encoding, "UTF-8", Utf8Text(kind, traditional, bytes * 2 + 64)), encoding, bytes);
    if (kind == Kind::kDamaged) Damage(text);
    return text;
}

}  // namespace

const char* NameOf(Kind kind) {
    constexpr const char* kNames[] = {"chinese", "english", "mixed", "html", "damaged"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::string NameOfSize(std::size_t bytes) {
    return bytes % (1 << 20) == 0   ? std::to_string(bytes >> 20) + 'M'
           : bytes % (1 << 10) == 0 ? std::to_string(bytes >> 10) + 'K'
                                    : std::to_string(bytes);
}

std::string Convert(const char* to, const char* from, std::string_view text) {
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        std::cerr << "iconv knows no " << from << " or " << to << '\n';
        std::exit(2);
    }
    std::string source(text), bytes(4 * text.size() + 16, '\0');
    char *in = source.data(), *out = bytes.data();
    std::size_t in_left = source.size(), out_left = bytes.size();
    while (in_left > 0 && iconv(converter, &in, &in_left, &out, &out_left) == static_cast<std::size_t>(-1)) {
        if (errno == EINVAL) break;  // cut at the end
        // Steps over a character of UTF-8, over a byte of anything else.
        do ++in, --in_left;
        while (in_left > 0 && std::strcmp(from, "UTF-8") == 0 && (*in & 0xC0) == 0x80);
    }
    iconv(converter, nullptr, nullptr, &out, &out_left);
    iconv_close(converter);
    bytes.resize(bytes.size() - out_left);
    return bytes;
}

const std::string& Text(Kind kind, const char* encoding, std::size_t bytes) {
    static std::map<std::tuple<Kind, std::string, std::size_t>, std::string> texts;
    const auto [place, added] = texts.try_emplace({kind, encoding, bytes});
    if (added) place->second = Make(kind, encoding, bytes);
    return place->second;
}

std::vector<std::string> Windows(Kind kind, const char* encoding, std::size_t bytes, std::size_t count) {
    const bool traditional = std::strncmp(encoding, "BIG5", 4) == 0;
    const std::string text = Utf8Text(kind, traditional, (bytes * 2 + 64 + 4) * count);
    std::vector<std::string> windows;
    for (std::size_t pos = 0; windows.size() < count;) {
        while (pos < text.size() && (text[pos] & 0xC0) == 0x80) ++pos;
        windows.push_back(CutTo(Convert(encoding, "UTF-8", text.substr(pos, bytes * 2 + 64)), encoding, bytes));
        pos += bytes * 2 + 64;
    }
    return windows;
}

void TakeTextsFrom(const std::string& folder) {
    namespace fs = std::filesystem;
    for (const bool traditional : {false, true}) {
        const fs::path own = fs::path(folder) / (traditional ? "hant" : "hans");
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(fs::is_directory(own) ? own : fs::path(folder)))
            if (entry.path().extension() == ".txt") files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        std::string text;
        for (const fs::path& file : files) {
            std::ifstream in(file, std::ios::binary);
            text.append(std::istreambuf_iterator<char>(in), {});
        }
        // Files differ in kind: their lines are mixed.
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) lines.push_back(line + '\n');
        Random random(7);
        for (std::size_t i = lines.size(); i > 1; --i) std::swap(lines[i - 1], lines[Below(random, i)]);
        for (const std::string& line : lines) TakenTexts()[traditional] += line;
    }
}

}  // namespace bench
