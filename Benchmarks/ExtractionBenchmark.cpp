// E-mail addresses in header lines, against the loop that grows every string byte by byte.

#include <cstring>
#include <string>
#include <vector>

#include "Common/Contest.h"
#include "Extraction/EmailExtraction.h"

namespace {

using namespace bench;

using Emails = std::vector<_email>;

bool IsIn(char c, const char* set) {
    return c != '\0' && std::strchr(set, c) != nullptr;
}
bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}
bool IsAddressByte(char c) {
    return IsLetterOrDigit(c) || IsIn(c, "-._");
}
char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

const char* KindOf(const char* text, const char* at) {
    const char* const labels[][2] = {{"收", "recv"}, {"抄", "copy_to"}, {"密", "secret_to"}};
    for (const auto& [label, kind] : labels)
        if (const char* const found = std::strstr(text, label); found != nullptr && found < at) return kind;
    return "send";
}

bool EndsPrefix(const std::string& unit) {
    if (IsIn(unit[0], ":;,")) return true;
    static const char kMarks[] = "：。，";
    const char* const found = std::strstr(kMarks, unit.c_str());
    return found != nullptr && (found - kMarks) % 2 == 0;
}

void PlainExtractEmail(const char* text, Emails& emails) {
    emails.clear();
    const char* at = std::strchr(text, '@');
    if (at == nullptr) return;
    const char* const kind = KindOf(text, at);
    for (const char* region = text; at != nullptr; at = std::strchr(region, '@')) {
        _email email;
        const char* pos = at + 1;
        for (; IsAddressByte(*pos); ++pos) email.domain += Lower(*pos);
        if (*pos == '"') {
            pos = std::strchr(pos, '>');
            if (pos == nullptr) pos = text + std::strlen(text);
        }
        while (IsIn(*pos, ">;,\r\n \t,")) ++pos;
        const char* back = at;
        for (; back > region && IsAddressByte(back[-1]); --back) email.user.insert(0, 1, Lower(back[-1]));
        while (back > region && IsIn(back[-1], "<\" \t")) --back;
        for (; back > region && (IsLetterOrDigit(back[-1]) || IsIn(back[-1], "\", -._\t")); --back)
            email.name.insert(0, 1, back[-1]);
        while (!email.name.empty() && IsIn(email.name.back(), ", -\t")) email.name.pop_back();
        while (back > region && IsIn(back[-1], "\" \t")) --back;
        while (back > region) {
            const std::ptrdiff_t bytes = (back[-1] & 0x80) != 0 ? 2 : 1;
            if (back - region < bytes) break;
            const std::string unit(back - bytes, back);
            if (EndsPrefix(unit)) break;
            email.prefix.insert(0, unit);
            back -= bytes;
        }
        email.type = kind;
        emails.push_back(email);
        region = pos;
    }
}

std::string Join(const Emails& emails) {
    std::string joined;
    for (const _email& email : emails)
        joined += email.user + '\1' + email.domain + '\1' + email.name + '\1' + email.prefix + '\1' + email.type + '\2';
    return joined;
}

void AddLine(const char* name, const char* label, const char* first, const char* second, std::size_t count) {
    std::string line = label;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i * 37 % 1000);
        line +=
            (i % 2 == 0 ? first : second) + std::string(i % 3 + 1, 'k') + number + "@Mail" + number + ".example.com>; ";
    }
    const auto with = [line](void (*extract)(const char*, Emails&)) {
        return [=] {
            return [=, emails = Emails()]() mutable -> const Emails& {
                extract(line.c_str(), emails);
                return emails;
            };
        };
    };
    Contest("ExtractEmail", name, std::to_string(count), line.size(), [=] { return Join(with(PlainExtractEmail)()()); })
        .Add("ours", with(ExtractEmail), Join)
        .Add("plain", with(PlainExtractEmail), Join);
}

}  // namespace

void bench::SetUpContests() {
    for (const std::size_t count : {std::size_t{1}, std::size_t{10}, std::size_t{1000}}) {
        AddLine("english", "To: ", "\"John Smith\" <john.smith.", "Mary Ann Brown <mary_brown-", count);
        AddLine("chinese", "收件人：", "张三丰（北京市图书馆） <zhang.", "\"李四 - 上海 大学出版社\" <li_si.", count);
        AddLine("bare", "Cc: ", "<webmaster.", "<info.", count);
    }
}
