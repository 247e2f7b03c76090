#ifndef PAGETEXT_PAGES_H
#define PAGETEXT_PAGES_H

// From the bytes of a page to what is written of it.

#include <TextKit.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Options.h"

namespace pagetext {

// A page as the options want it.
struct Page {
    std::string_view encoding;        // its name; "ascii" where no byte is above 7F
    std::string text;                 // UTF-8; empty where only the encoding is wanted
    std::size_t replaced = 0;         // how often U+FFFD stands for what has no character
    std::vector<std::string> losses;  // in words, what was not converted
};

Page ReadPage(std::string_view bytes, const Options& options, const textkit::CodeMaps& maps);

// What a page leaves behind, to be written out in the order of the pages.
struct Outcome {
    std::string name;                     // UTF-8 on one line, for people
    std::string output;                   // for standard output
    std::vector<std::string> complaints;  // for standard error, without the name
};

// A file name as valid UTF-8 on one line.
std::string Printable(const std::string& name);

// Reads and converts the page of that name; "-" is standard input. Throws nothing: too little memory is a complaint.
Outcome ConvertPage(const std::string& name, const Options& options, const textkit::CodeMaps& maps);

}  // namespace pagetext

#endif
