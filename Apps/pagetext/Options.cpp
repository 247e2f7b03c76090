#include "Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <thread>

namespace pagetext {

namespace {

using textkit::Encoding;

constexpr unsigned kMostJobs = 1024;

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

// What CLI11 reads as text.
struct Words {
    std::string from = "auto";
    std::string to = "utf-8";
    std::string name_list;
};

void DeclareInput(CLI::App& app, Options& options, Words& words) {
    auto* files = app.add_option("FILE", options.files, "Pages to read; \"-\", or none, is standard input");
    auto* list = app.add_option("--files0-from", words.name_list,
                                "Read the pages that a file names, each name with a NUL behind it")
                     ->type_name("LIST")
                     ->excludes(files);
    app.add_flag("--records", options.records,
                 "FILEs hold records: a JSON object a line, which names a page or holds it")
        ->excludes(list);
    std::vector<std::string> names;
    for (const auto& [name, encoding] : EncodingNames()) names.push_back(name);
    app.add_option("--from", words.from, "Encoding of the pages; auto looks at mark, bytes and declaration")
        ->check(CLI::IsMember(names))
        ->default_str("auto");
    app.add_flag("--plain", options.plain, "The pages are plain text, without markup");
}

void DeclareOutput(CLI::App& app, Options& options, Words& words) {
    auto* to = app.add_option("--to", words.to, "Encoding of the text")
                   ->check(CLI::IsMember({"utf-8", "gbk"}))
                   ->default_str("utf-8")
                   ->excludes("--records");
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
        ->excludes(to);
    forms->require_option(0, 1);
}

void DeclareRunning(CLI::App& app, Options& options) {
    app.add_option("-j,--jobs", options.jobs, "Convert so many pages at once; 0: as many as there are processors")
        ->type_name("N")
        ->check(CLI::Range(0U, kMostJobs));
    app.add_option("--data", options.data_file, "Code maps to use instead of the built-in ones: path of a codemaps.dat")
        ->type_name("FILE")
        ->take_last()
        ->required(PAGETEXT_NEEDS_DATA);
    app.set_version_flag("--version", "pagetext " PAGETEXT_VERSION);
    // clang-format off
    app.footer(
        "Nothing of a page is lost silently: bytes without a character become U+FFFD, and with --to gbk characters\n"
        "that GBK lacks become references such as &#169;.\n"
        "Exit status: 0; 1 when a page could not be read or not be converted whole (the others are written all the\n"
        "same); 2 for wrong arguments. A bad record does not count: the line that answers it says what is wrong.");
    // clang-format on
}

}  // namespace

std::optional<int> ReadArguments(int argc, char** argv, Options& options) {
    CLI::App app("Reads pages in GBK, Big5, UTF-8 or UTF-16, strips the markup and writes clean text.", "pagetext");
    Words words;
    DeclareInput(app, options, words);
    DeclareOutput(app, options, words);
    DeclareRunning(app, options);
    // CLI11 takes "[a,b]" for a list of names.
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) arguments.push_back(argv[i][0] == '[' ? std::string("./") + argv[i] : argv[i]);
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    options.from = EncodingNames().at(words.from);
    options.to_gbk = words.to == "gbk";
    if (!words.name_list.empty()) options.name_list = words.name_list;
    if (options.files.empty() && !options.name_list) options.files.emplace_back("-");
    if (options.jobs == 0) options.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs);
    return std::nullopt;
}

}  // namespace pagetext
