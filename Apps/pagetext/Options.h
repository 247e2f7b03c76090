#ifndef PAGETEXT_OPTIONS_H
#define PAGETEXT_OPTIONS_H

// What the user asks for.

#include <TextKit.h>

#include <optional>
#include <string>
#include <vector>

namespace pagetext {

// What is written of a page.
enum class Form { kText, kEncoding, kSentences, kTokens, kEmails, kJson };

struct Options {
    std::vector<std::string> files;                        // pages, or files of records; "-" is standard input
    std::optional<std::string> name_list;                  // a file of names that end with NUL, instead of files
    textkit::Encoding from = textkit::Encoding::kUnknown;  // detect
    bool to_gbk = false;                                   // else UTF-8
    bool plain = false;                                    // no markup
    bool records = false;                                  // files hold records rather than pages
    Form form = Form::kText;
    unsigned jobs = 1;      // threads that convert
    std::string data_file;  // none: the built-in tables

    // Whether the pages' names stand in front of what is found in them.
    bool NamesMatter() const { return name_list || files.size() > 1; }
};

// Reads the arguments. A value is the status to exit with: help or version is printed, or the arguments are wrong and
// standard error says why.
std::optional<int> ReadArguments(int argc, char** argv, Options& options);

}  // namespace pagetext

#endif
