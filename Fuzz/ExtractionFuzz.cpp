// E-mail addresses and single values out of XML and JSON.

#include "FuzzSupport.h"

namespace {

void CheckEmails(const std::string& text) {
    constexpr const char* kAddress = "abcdefghijklmnopqrstuvwxyz0123456789-._";
    std::vector<_email> emails;
    ExtractEmail(text.c_str(), emails);
    FUZZ_CHECK(emails.size() <= static_cast<std::size_t>(std::count(text.begin(), text.end(), '@')));
    std::size_t bytes = 0;
    for (const _email& email : emails) {
        for (const std::string* part : {&email.user, &email.domain}) {
            FUZZ_CHECK(part->find_first_not_of(kAddress) == std::string::npos);
        }
        FUZZ_CHECK(text.find(email.name) != std::string::npos && text.find(email.prefix) != std::string::npos);
        FUZZ_CHECK(!email.type.empty());
        bytes += email.user.size() + email.domain.size() + email.name.size() + email.prefix.size() + 1;
    }
    FUZZ_CHECK(bytes <= text.size());  // no byte belongs to two addresses
}

void CheckItems(const std::string& text, const std::string& name, std::size_t limit) {
    std::string value;
    const char* const begin = text.c_str();
    const auto is_value_at = [&](const char* end) {
        return end == nullptr || (end >= begin + value.size() && end < begin + text.size() &&
                                  std::string_view(end - value.size(), value.size()) == value);
    };
    FUZZ_CHECK(is_value_at(GetXMLPropertyValue(begin, name.c_str(), value, nullptr)));
    const std::string unlimited = value;
    FUZZ_CHECK(is_value_at(GetXMLPropertyValue(begin, name.c_str(), value, begin + std::min(limit, text.size()))));
    FUZZ_CHECK(value.empty() || value == unlimited);
    FUZZ_CHECK(is_value_at(GetJsonItemValue(begin, name.c_str(), value)));
    FUZZ_CHECK(GetJsonItemInt(begin, name.c_str()) == static_cast<int>(std::strtol(value.c_str(), nullptr, 10)));
    FUZZ_CHECK(is_value_at(GetXMLItemValue(begin, name.c_str(), value)));
    FUZZ_CHECK(GetXMLItemInt(begin, name.c_str()) == static_cast<int>(std::strtol(value.c_str(), nullptr, 10)));
    const bool is_found = text.find('<' + name + '>') != std::string::npos;
    fuzz::Exact buffer(is_found ? text.size() - name.size() - 1 : 1);
    FUZZ_CHECK(GetXMLItemValue(begin, name.c_str(), buffer.get()) == is_found && buffer.Text() == value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t limit = input.Number(200);
    const std::string name = input.Text(), text = input.Text();
    CheckEmails(text);
    CheckItems(text, name, limit);
    return 0;
}
