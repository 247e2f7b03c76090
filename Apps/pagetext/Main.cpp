// pagetext: pages of unknown encoding in, clean text out.

#include <TextKit.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace {

using textkit::Encoding;

enum class Form { kText, kEncoding, kSentences, kTokens, kEmails, kJson };

struct Options {
    std::vector<std::string> files;
    Encoding from = Encoding::kUnknown;  // detect
    bool to_gbk = false;
    bool plain = false;
    Form form = Form::kText;
    std::string data_file;
};

// A file name as valid UTF-8 on one line.
std::string Printable(const std::string& name) {
    std::string text = textkit::Decode(name, Encoding::kUnknown).text;
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
    }
    return text;
}

// The name of the encoding; pages without any byte above 7F are "ascii".
std::string_view NameOf(Encoding encoding, std::string_view bytes) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) > 0; });
    return ascii ? "ascii" : textkit::EncodingName(encoding);
}

// One line on standard error that is written over as the files go by, where a person is looking.
class Progress {
public:
    explicit Progress(std::size_t files) : files_(files), shown_(files > 1 && isatty(STDERR_FILENO) != 0) {}
    void Show(std::size_t done, const std::string& name) const {
        if (!shown_) return;
        std::cout.flush();  // the text may go to the same terminal
        std::cerr << "\r\033[K" << done << '/' << files_ << ' ' << name << std::flush;
    }
    void Clear() const {
        if (shown_) std::cerr << "\r\033[K" << std::flush;
    }

private:
    std::size_t files_;
    bool shown_;
};

class Program {
public:
    Program(Options options, const textkit::CodeMaps& maps)
        : options_(std::move(options)), maps_(maps), progress_(options_.files.size()) {}

    int Run() {
        for (std::size_t i = 0; i < options_.files.size(); ++i) {
            progress_.Show(i + 1, Printable(options_.files[i]));
            try {
                ConvertPage(options_.files[i]);
            } catch (const std::bad_alloc&) {
                Complain(options_.files[i], "not enough memory");
            }
        }
        progress_.Clear();
        std::cout.flush();
        if (!std::cout.good()) {
            std::cerr << "pagetext: standard output cannot be written\n";
            return 1;
        }
        return failed_ ? 1 : 0;
    }

private:
    void Complain(const std::string& name, const std::string& reason) {
        progress_.Clear();
        std::cerr << "pagetext: " << Printable(name) << ": " << reason << '\n';
        failed_ = true;
    }

    void ConvertPage(const std::string& name) {
        std::error_code error;
        const std::string bytes = name == "-" ? textkit::ReadFile(STDIN_FILENO, error) : textkit::ReadFile(name, error);
        if (error) {
            Complain(name, error.message());
            return;
        }
        const Encoding encoding =
            options_.from == Encoding::kUnknown ? textkit::DetectPage(bytes, maps_).encoding : options_.from;
        if (options_.form == Form::kEncoding) {
            progress_.Clear();
            std::cout << NamePrefix(name) << NameOf(encoding, bytes) << '\n';
            return;
        }
        textkit::Decoded page = textkit::Decode(bytes, encoding, maps_);
        if (encoding == Encoding::kUnknown && page.replaced > 0)
            Complain(name, "encoding unknown; " + std::to_string(page.replaced) + " places written as U+FFFD");
        if (page.gb18030_four_byte > 0) {
            Complain(name, "four-byte characters of GB18030 are not supported; " +
                               std::to_string(page.gb18030_four_byte) + " written as U+FFFD");
        }
        if (!options_.plain) page.text = textkit::PageText(page.text);
        progress_.Clear();
        Write(name, NameOf(encoding, bytes), page);
    }

    // With several files a line of --detect starts with the name, as other tools do.
    std::string NamePrefix(const std::string& name) const {
        return options_.files.size() > 1 ? Printable(name) + ": " : "";
    }

    void Write(const std::string& name, std::string_view encoding, const textkit::Decoded& page) {
        switch (options_.form) {
            case Form::kSentences:
                for (const auto sentence : textkit::Sentences(page.text)) WriteLine(sentence);
                break;
            case Form::kTokens:
                for (const auto token : textkit::Tokens(page.text)) WriteLine(token);
                break;
            case Form::kEmails:
                for (const auto& email : textkit::EmailAddresses(page.text)) WriteLine(email.address);
                break;
            case Form::kJson:
                WriteJson(name, encoding, page);
                break;
            default:
                WriteText(page.text);
                if (!page.text.empty() && page.text.back() != '\n') std::cout << '\n';
        }
    }

    void WriteText(std::string_view text) {
        if (options_.to_gbk) {
            constexpr auto kReferences = textkit::Unmappable::kNumericReference;
            std::cout << textkit::Encode(text, textkit::Encoding::kGbk, kReferences, maps_).bytes;
        } else {
            std::cout << text;
        }
    }

    void WriteLine(std::string_view text) {
        WriteText(text);
        std::cout << '\n';
    }

    void WriteJson(const std::string& name, std::string_view encoding, const textkit::Decoded& page) {
        nlohmann::ordered_json object;
        object["name"] = textkit::Decode(name, Encoding::kUnknown).text;
        object["encoding"] = encoding;
        object["text"] = page.text;
        object["sentences"] = nlohmann::json::array();
        for (const auto sentence : textkit::Sentences(page.text)) object["sentences"].push_back(sentence);
        object["emails"] = nlohmann::json::array();
        for (const auto& email : textkit::EmailAddresses(page.text)) object["emails"].push_back(email.address);
        object["replaced"] = page.replaced;
        std::cout << object.dump() << '\n';
    }

    Options options_;
    textkit::CodeMaps maps_;
    Progress progress_;
    bool failed_ = false;
};

const std::map<std::string, Encoding>& EncodingNames() {
    static const std::map<std::string, Encoding> names = [] {
        std::map<std::string, Encoding> all = {{"auto", Encoding::kUnknown}};
        for (const Encoding encoding :
             {Encoding::kUtf8, Encoding::kGbk, Encoding::kBig5, Encoding::kUtf16Le, Encoding::kUtf16Be})
            all.emplace(textkit::EncodingName(encoding), encoding);
        return all;
    }();
    return names;
}

void Declare(CLI::App& app, Options& options, std::string& from, std::string& to) {
    // clang-format off
    app.footer(
        "Nothing of a page is lost silently: bytes without a character become U+FFFD, and with --to gbk characters\n"
        "that GBK lacks become references such as &#169;.\n"
        "Exit status: 0; 1 when a page could not be read or not be converted whole (the others are written all the\n"
        "same); 2 for wrong arguments.");
    // clang-format on
    app.set_version_flag("--version", "pagetext " PAGETEXT_VERSION);
    app.add_option("FILE", options.files, "Pages to read; \"-\", or none, is standard input");
    std::vector<std::string> names;
    for (const auto& [name, encoding] : EncodingNames()) names.push_back(name);
    app.add_option("--from", from, "Encoding of the pages; auto looks at mark, bytes and declaration")
        ->check(CLI::IsMember(names))
        ->default_str("auto");
    auto* to_option = app.add_option("--to", to, "Encoding of the text")
                          ->check(CLI::IsMember({"utf-8", "gbk"}))
                          ->default_str("utf-8");
    app.add_flag("--plain", options.plain, "The pages are plain text, without markup");
    auto* forms = app.add_option_group("Output", "instead of the text");
    const auto form = [&](const char* flag, Form value, const char* help) {
        return forms->add_flag_callback(
            flag, [&options, value] { options.form = value; }, help);
    };
    form("--detect", Form::kEncoding, "Print the encoding alone");
    form("--sentences", Form::kSentences, "One sentence a line");
    form("--tokens", Form::kTokens, "One token a line, cut at blanks and punctuation");
    form("--emails", Form::kEmails, "One e-mail address a line");
    form("--json", Form::kJson, "One JSON object a page: name, encoding, text, sentences, emails, replaced")
        ->excludes(to_option);
    forms->require_option(0, 1);
    app.add_option("--data", options.data_file, "Code maps to use instead of the built-in ones: path of a codemaps.dat")
        ->take_last()
        ->required(PAGETEXT_NEEDS_DATA);
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    CLI::App app("Reads pages in GBK, Big5, UTF-8 or UTF-16, strips the markup and writes clean text.", "pagetext");
    Options options;
    std::string from = "auto", to = "utf-8";
    Declare(app, options, from, to);
    // CLI11 takes "[a,b]" for a list of names.
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) arguments.push_back(argv[i][0] == '[' ? std::string("./") + argv[i] : argv[i]);
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    options.from = EncodingNames().at(from);
    options.to_gbk = to == "gbk";
    if (options.files.empty()) options.files.emplace_back("-");

    textkit::CodeMaps maps;
    if (!options.data_file.empty()) {
        const std::optional<textkit::CodeMaps> loaded = textkit::CodeMaps::Load(options.data_file);
        if (!loaded) {
            std::cerr << "pagetext: " << options.data_file << ": no code maps there\n";
            return 1;
        }
        maps = *loaded;
    }
    return Program(std::move(options), maps).Run();
}
