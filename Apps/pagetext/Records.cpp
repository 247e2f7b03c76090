#include "Records.h"

#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "Base64.h"

namespace pagetext {

namespace {

using Json = nlohmann::ordered_json;

// Why a record cannot be answered.
struct BadRecord : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void AddSentences(const Page& page, Json& object) {
    Json& sentences = object["sentences"] = Json::array();
    for (const auto sentence : textkit::Sentences(page.text)) sentences.push_back(sentence);
}

void AddTokens(const Page& page, Json& object) {
    Json& tokens = object["tokens"] = Json::array();
    for (const auto token : textkit::Tokens(page.text)) tokens.push_back(token);
}

void AddEmails(const Page& page, Json& object) {
    Json& emails = object["emails"] = Json::array();
    for (const auto& email : textkit::EmailAddresses(page.text)) emails.push_back(email.address);
}

// The members that the form asks for.
void AddPage(const Page& page, Form form, Json& object) {
    object["encoding"] = page.encoding;
    if (form == Form::kEncoding) return;
    if (form == Form::kText || form == Form::kJson) object["text"] = page.text;
    if (form == Form::kSentences || form == Form::kJson) AddSentences(page, object);
    if (form == Form::kTokens) AddTokens(page, object);
    if (form == Form::kEmails || form == Form::kJson) AddEmails(page, object);
    object["replaced"] = page.replaced;
}

// Objects and arrays within the record are passed over, however deep they go.
Json Parse(const std::string& record) {
    const auto keep = [](int depth, Json::parse_event_t event, Json&) {
        using Event = Json::parse_event_t;
        return depth == 0 || (event != Event::object_start && event != Event::array_start);
    };
    try {
        Json object = Json::parse(record, keep);
        if (!object.is_object()) throw BadRecord("not a JSON object");
        return object;
    } catch (const Json::parse_error& error) {
        throw BadRecord("not JSON: byte " + std::to_string(error.byte));
    } catch (const Json::exception&) {
        throw BadRecord("not JSON: a number is out of range");
    }
}

std::string BytesOf(const Json& record) {
    const auto path = record.find("path");
    const auto base64 = record.find("bytes");
    if ((path == record.end()) == (base64 == record.end())) throw BadRecord("neither path nor bytes, or both");
    const Json& given = path == record.end() ? *base64 : *path;
    if (!given.is_string()) throw BadRecord(path == record.end() ? "bytes is not text" : "path is not text");
    if (path == record.end()) {
        std::optional<std::string> bytes = DecodeBase64(given.get_ref<const std::string&>());
        if (!bytes) throw BadRecord("bytes is not base64");
        return std::move(*bytes);
    }
    std::error_code error;
    std::string bytes = textkit::ReadFile(given.get_ref<const std::string&>(), error);
    if (error) throw BadRecord(error.message());
    return bytes;
}

// What the answer repeats, so that the caller knows which record it belongs to.
void Repeat(const Json& record, Json& answer) {
    const auto id = record.find("id");
    if (id != record.end()) {
        if (!id->is_string() && !id->is_number()) throw BadRecord("id is neither text nor number");
        answer["id"] = *id;
    }
    const auto path = record.find("path");
    if (path != record.end() && path->is_string()) answer["path"] = *path;
}

void Refuse(std::size_t number, const std::string& reason, Json& answer) {
    answer["line"] = number;
    answer["error"] = reason;
}

}  // namespace

std::string DescribePage(const std::string& name, const Page& page) {
    Json object;
    object["name"] = textkit::Decode(name, textkit::Encoding::kUnknown).text;
    AddPage(page, Form::kJson, object);
    return object.dump();
}

std::string AnswerRecord(const std::string& record, std::size_t number, const Options& options,
                         const textkit::CodeMaps& maps) {
    try {
        Json answer;
        try {
            const Json object = Parse(record);
            Repeat(object, answer);
            AddPage(ReadPage(BytesOf(object), options, maps), options.form, answer);
        } catch (const BadRecord& bad) {
            Refuse(number, bad.what(), answer);
        }
        return answer.dump();
    } catch (const std::bad_alloc&) {
        return RefuseRecord(number, "not enough memory");
    }
}

std::string RefuseRecord(std::size_t number, const std::string& reason) {
    Json answer;
    Refuse(number, reason, answer);
    return answer.dump();
}

}  // namespace pagetext
