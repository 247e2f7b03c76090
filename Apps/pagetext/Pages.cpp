#include "Pages.h"

#include <unistd.h>

#include <algorithm>
#include <new>
#include <system_error>

#include "Records.h"

namespace pagetext {

namespace {

using textkit::Encoding;

std::string_view NameOf(Encoding encoding, std::string_view bytes) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) > 0; });
    return ascii ? "ascii" : textkit::EncodingName(encoding);
}

// Collects the output of one page in the encoding that is wanted.
class Writer {
public:
    Writer(const Options& options, const textkit::CodeMaps& maps, std::string& output)
        : to_gbk_(options.to_gbk), maps_(maps), output_(output) {}

    void Text(std::string_view text) {
        constexpr auto kReferences = textkit::Unmappable::kNumericReference;
        if (to_gbk_)
            output_ += textkit::Encode(text, Encoding::kGbk, kReferences, maps_).bytes;
        else
            output_ += text;
    }
    void Line(std::string_view text) {
        Text(text);
        output_ += '\n';
    }

private:
    bool to_gbk_;
    const textkit::CodeMaps& maps_;
    std::string& output_;
};

void Write(const std::string& name, const Page& page, const Options& options, Writer writer) {
    switch (options.form) {
        case Form::kEncoding:
            writer.Line((options.NamesMatter() ? Printable(name) + ": " : "") + std::string(page.encoding));
            break;
        case Form::kSentences:
            for (const auto sentence : textkit::Sentences(page.text)) writer.Line(sentence);
            break;
        case Form::kTokens:
            for (const auto token : textkit::Tokens(page.text)) writer.Line(token);
            break;
        case Form::kEmails:
            for (const auto& email : textkit::EmailAddresses(page.text)) writer.Line(email.address);
            break;
        case Form::kJson:
            writer.Line(DescribePage(name, page));
            break;
        case Form::kText:
            writer.Text(page.text);
            if (!page.text.empty() && page.text.back() != '\n') writer.Line("");
    }
}

void Convert(const std::string& name, const Options& options, const textkit::CodeMaps& maps, Outcome& outcome) {
    std::error_code error;
    const std::string bytes = name == "-" ? textkit::ReadFile(STDIN_FILENO, error) : textkit::ReadFile(name, error);
    if (error) {
        outcome.complaints.push_back(error.message());
        return;
    }
    Page page = ReadPage(bytes, options, maps);
    Write(name, page, options, Writer(options, maps, outcome.output));
    outcome.complaints = std::move(page.losses);
}

}  // namespace

std::string Printable(const std::string& name) {
    std::string text = textkit::Decode(name, Encoding::kUnknown).text;
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
    }
    return text;
}

Page ReadPage(std::string_view bytes, const Options& options, const textkit::CodeMaps& maps) {
    Page page;
    const Encoding encoding =
        options.from == Encoding::kUnknown ? textkit::DetectPage(bytes, maps).encoding : options.from;
    page.encoding = NameOf(encoding, bytes);
    if (options.form == Form::kEncoding) return page;
    textkit::Decoded decoded = textkit::Decode(bytes, encoding, maps);
    page.replaced = decoded.replaced;
    if (encoding == Encoding::kUnknown && decoded.replaced > 0)
        page.losses.push_back("encoding unknown; " + std::to_string(decoded.replaced) + " places written as U+FFFD");
    if (decoded.gb18030_four_byte > 0) {
        page.losses.push_back("four-byte characters of GB18030 are not supported; " +
                              std::to_string(decoded.gb18030_four_byte) + " written as U+FFFD");
    }
    page.text = options.plain ? std::move(decoded.text) : textkit::PageText(decoded.text);
    return page;
}

Outcome ConvertPage(const std::string& name, const Options& options, const textkit::CodeMaps& maps) {
    Outcome outcome;
    try {
        outcome.name = Printable(name);
        Convert(name, options, maps, outcome);
    } catch (const std::bad_alloc&) {
        outcome.output.clear();
        outcome.complaints = {"not enough memory"};
    }
    return outcome;
}

}  // namespace pagetext
