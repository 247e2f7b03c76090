#include "Utility/StringToolkit/StrLine.h"

#include <cstring>

namespace {

constexpr char kLineBreaks[] = "\r\n";
constexpr char kLineBreaksAndMark[] = "\r\n^";
constexpr char kLeadingBlanks[] = " \t\r\n";

// The first '^' of the pair that closes the record opened by the '^' at `mark`, or null where no whole record
// stands.
//
// The search stops at the next '^' whether that closes the record or not, and no line up to there has a '^'
// to search from, so all the calls over a text together pass each byte of it twice at most.
char* ClosingPair(char* mark) {
    if (mark[1] != '^') return nullptr;
    char* const content = mark + 2;
    if (*content == '\0' || *content == '\r' || *content == '\n') return nullptr;
    char* const closing = std::strchr(content + 1, '^');
    return closing != nullptr && closing[1] == '^' ? closing : nullptr;
}

}  // namespace

char* StrLine(char* text, char** next, char* saved, int* quoted, bool allow_quoted) {
    *next = nullptr;
    *saved = '\0';
    if (quoted != nullptr) *quoted = 0;
    if (text == nullptr) return nullptr;
    char* line = text + std::strspn(text, kLeadingBlanks);
    if (*line == '\0') return nullptr;

    // The break alone would be searched across all the records of a text that has no breaks, once a record.
    char* end = line + std::strcspn(line, allow_quoted ? kLineBreaksAndMark : kLineBreaks);
    if (*end == '^' && allow_quoted) {
        char* const closing = ClosingPair(end);
        if (closing == nullptr) {
            end += std::strcspn(end, kLineBreaks);
        } else if (end == line) {
            line += 2;
            *closing = '\0';
            end = closing + 2;
            *next = end;
            if (quoted != nullptr) *quoted = 1;
        }
    }
    if (*end != '\0') {
        *saved = *end;
        *end = '\0';
        *next = end;
    }
    return line;
}
