// Measures how the time of every operation on text grows with the text, on ordinary and on hostile texts, and writes
// the table of Docs/Reliability.md. Ends with 1 if something grows faster than it may.
//
// Usage: growth CODEMAPS [BYTES]    CODEMAPS is the data file as the build makes it. The smallest text has BYTES
// (65536), or a sixteenth of that where time grows with the square.

#include <STLCodeTrans.h>
#include <Utility.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "Checks/TextOperations.h"

namespace {

std::string Repeated(const std::string& unit, std::size_t size) {
    std::string text;
    while (text.size() < size) text += unit;
    text.resize(size);
    return text;
}

std::string Random(const std::string& alphabet, std::size_t size) {
    std::mt19937 random(1);
    std::string text;
    while (text.size() < size) text += alphabet[random() % alphabet.size()];
    return text;
}

struct Kind {
    const char* name;
    std::string (*text)(std::size_t size);
};

// clang-format off
constexpr Kind kOrdinary[] = {
    {"English", [](std::size_t n) { return Repeated("The quick brown fox, no. 12, jumps. Over 3.5 lazy dogs!\n", n); }},
    {"Chinese, UTF-8", [](std::size_t n) { return Repeated("今天的天气很好，我们去公园。2024年3月5日，北京。\n", n); }},
    {"Chinese, GBK", [](std::size_t n) {
         return Repeated("\xBD\xF1\xCC\xEC\xB5\xC4\xC6\xF8\xBA\xDC\xBA\xC3\xA3\xAC\xB1\xB1\xBE\xA9\xA1\xA3 12\n", n); }},
    {"HTML", [](std::size_t n) {
         return Repeated("<p class=\"a\">5 &lt; 6 &amp; &#20013;</p><a href=\"x?y=%20\">a@b.cn</a>\n", n); }},
};
constexpr Kind kHostile[] = {
    {"one letter", [](std::size_t n) { return std::string(n, 'a'); }},
    {"one letter, another at the end", [](std::size_t n) { return std::string(n - 1, 'a') + 'b'; }},
    {"digits", [](std::size_t n) { return std::string(n, '1'); }},
    {"blanks", [](std::size_t n) { return std::string(n, ' '); }},
    {"line feeds", [](std::size_t n) { return std::string(n, '\n'); }},
    {"delimiters", [](std::size_t n) { return std::string(n, ','); }},
    {"full stops", [](std::size_t n) { return Repeated("a.", n); }},
    {"GBK lead bytes", [](std::size_t n) { return std::string(n, '\x81'); }},
    {"starts of UTF-8", [](std::size_t n) { return Repeated("\xE3\x80", n); }},
    {"NUL bytes", [](std::size_t n) { return std::string(n, '\0'); }},
    {"open tags", [](std::size_t n) { return std::string(n, '<'); }},
    {"open named tags", [](std::size_t n) { return Repeated("<a ", n); }},
    {"open quotes in tags", [](std::size_t n) { return Repeated("<a b=\"", n); }},
    {"open comments", [](std::size_t n) { return Repeated("<!--", n); }},
    {"open scripts", [](std::size_t n) { return Repeated("<script>", n); }},
    {"open titles", [](std::size_t n) { return Repeated("<title>", n); }},
    {"open CDATA", [](std::size_t n) { return Repeated("<![CDATA[", n); }},
    {"nested elements", [](std::size_t n) { return Repeated("<a>", n / 2) + Repeated("</a>", n - n / 2); }},
    {"open words of mail", [](std::size_t n) { return Repeated("=?gbk?B?1tA", n); }},
    {"words of mail", [](std::size_t n) { return Repeated("=?gbk?B?1tA=?= ", n); }},
    {"quoted names", [](std::size_t n) { return Repeated("\"a\\\"", n); }},
    {"open parentheses and at signs", [](std::size_t n) { return Repeated("a@b.c (", n); }},
    {"Chinese quotes and brackets", [](std::size_t n) { return Repeated("“（", n); }},
    {"Chinese titles", [](std::size_t n) { return Repeated("《怎么办？", n); }},
    {"Chinese numerals", [](std::size_t n) { return Repeated("三百", n); }},
    {"abbreviations", [](std::size_t n) { return Repeated("U.S. ", n); }},
    {"ellipses", [](std::size_t n) { return Repeated("…", n); }},
    {"nested JSON", [](std::size_t n) { return Repeated("{\"b\":[", n); }},
    {"open JSON strings", [](std::size_t n) { return Repeated("\"\\", n); }},
    {"references", [](std::size_t n) { return std::string(n, '&'); }},
    {"number references", [](std::size_t n) { return "&#" + std::string(n - 2, '1'); }},
    {"percent signs", [](std::size_t n) { return std::string(n, '%'); }},
    {"at signs", [](std::size_t n) { return std::string(n, '@'); }},
    {"at signs and quotes", [](std::size_t n) { return Repeated("a@b\"", n); }},
    {"carets", [](std::size_t n) { return std::string(n, '^'); }},
    {"open records", [](std::size_t n) { return Repeated("^^a", n); }},
    {"open brackets", [](std::size_t n) { return Repeated("([", n); }},
    {"keys without values", [](std::size_t n) { return Repeated("\"a\":", n); }},
    {"elements never closed", [](std::size_t n) { return Repeated("<a></b>", n); }},
    {"dates without end", [](std::size_t n) { return Repeated("年月", n); }},
    {"separators", [](std::size_t n) { return std::string(n, '/'); }},
    {"random bytes", [](std::size_t n) {
         std::string all; for (int c = 1; c < 256; ++c) all += static_cast<char>(c); return Random(all, n); }},
    {"random markup", [](std::size_t n) { return Random("<>&;#!-/\"'^@ a1,.%\n", n); }},
};
// clang-format on

// The shortest of several runs, in microseconds: what else the machine does only ever adds.
double Microseconds(const checks::TextOperation& operation, const std::string& text, int runs) {
    double best = 1e30;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        const std::string answer = operation.run({text.data(), text.size()});
        const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
        if (answer.size() == std::string::npos) std::abort();  // so that nothing is left out
        best = std::min(best, time.count());
    }
    return best;
}

struct Times {
    const char* kind;
    double at[3];  // n, 2n, 4n
    // From n to 4n; less than a microsecond is no time.
    double Growth() const { return at[2] / std::max(at[0], 1.0); }
};

Times Measure(const checks::TextOperation& operation, const Kind& kind, std::size_t size, double allowed) {
    Times times{kind.name, {1e30, 1e30, 1e30}};
    // Anew, and slower, as long as it looks too much: a short disturbance is no growth.
    for (int runs = 3; runs <= 81; runs *= 3) {
        for (int i = 0; i < 3; ++i)
            times.at[i] = std::min(times.at[i], Microseconds(operation, kind.text(size << i), runs));
        if (times.Growth() <= allowed) break;
    }
    return times;
}

// Of several, the one that matters: too much growth, else the longest time.
template <std::size_t N>
Times Worst(const checks::TextOperation& operation, const Kind (&kinds)[N], std::size_t size, double allowed,
            bool& is_exceeded) {
    Times worst{"", {0, 0, 0}};
    bool worst_exceeds = false;
    for (const Kind& kind : kinds) {
        const Times times = Measure(operation, kind, size, allowed);
        const bool exceeds = times.Growth() > allowed;
        if (exceeds > worst_exceeds || (exceeds == worst_exceeds && times.at[2] > worst.at[2])) worst = times;
        worst_exceeds |= exceeds;
    }
    is_exceeded |= worst_exceeds;
    return worst;
}

void PrintTimes(const Times& times, const char* end) {
    std::printf(" %s | %.0f | %.0f | %.0f |%s", times.kind, times.at[0], times.at[1], times.at[2], end);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || CodeTrans_Initialize(argv[1]) != 0) {
        std::fprintf(stderr, "usage: growth CODEMAPS [BYTES]\n");
        return 2;
    }
    g_bLog = false;
    // Large blocks stay with the process: that the system clears new pages is not what is measured.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    const std::size_t size = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 65536;
    std::printf("| operation | may grow | ordinary text | n | 2n | 4n | hostile text | n | 2n | 4n | |\n");
    std::printf("|---|---|---|---:|---:|---:|---|---:|---:|---:|---|\n");
    bool is_any_exceeded = false;
    for (const checks::TextOperation& operation : checks::TextOperations()) {
        const bool is_linear = operation.growth == checks::Growth::kLinear;
        // Caches and the branch predictor make large texts slower, but not by as much as the next power would.
        const double allowed = is_linear ? 9 : 36;
        const std::size_t smallest = is_linear ? size : size / 16;
        bool is_exceeded = false;
        const Times ordinary = Worst(operation, kOrdinary, smallest, allowed, is_exceeded);
        const Times hostile = Worst(operation, kHostile, smallest, allowed, is_exceeded);
        std::printf("| %s | %s |", operation.name, is_linear ? "linearly" : "with the square");
        PrintTimes(ordinary, "");
        PrintTimes(hostile, is_exceeded ? " faster |\n" : " |\n");
        std::fflush(stdout);
        is_any_exceeded |= is_exceeded;
    }
    return is_any_exceeded ? 1 : 0;
}
