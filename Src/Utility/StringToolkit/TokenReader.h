#ifndef UTILITY_STRINGTOOLKIT_TOKENREADER_H
#define UTILITY_STRINGTOOLKIT_TOKENREADER_H

/** @file
 * A tokeniser that skips blanks, tells what separated the tokens and leaves the text as it found it. */

#include <vector>

#include "../UtilityExport.h"

/** Walks over the tokens of one text at a time, in place.
 *
 * The text belongs to the caller, must be writable and must outlive the walk. While a token is handed out, a
 * NUL stands over the byte behind it; the next call puts that byte back, so after the call that returned null
 * the text reads as before. A call with a new text forgets the old one without putting its last byte back; so
 * does the destructor.
 *
 * The fields may be read between calls; writing them makes the next call undefined. One object serves one
 * thread at a time and a copy shares the text; separate objects over separate texts are independent. */
class UTILITY_API CStrToken {
public:
    /** A reader without a text; `keep_inner_punct` switches inner-punctuation mode on (see GetToken). */
    explicit CStrToken(bool keep_inner_punct);
    ~CStrToken();

    /** The next token, or null when none is left.
     *
     * A non-null `text` starts a new walk, over [`text`, `end`), or up to its NUL when `end` is null;
     * afterwards pass null for both to go on. The byte at `end` must be a NUL: it ends a token that runs that
     * far. `delims` is a NUL-terminated set of bytes, not null, and may change from call to call.
     *
     * Blanks (space, tab, carriage return) and delimiters in front of a token are skipped; only a delimiter
     * ends it. Blanks inside and behind stay: " a b ,c" cut at "," gives "a b " and "c". No token is empty.
     * The result points into the text and is valid until the next call.
     *
     * In inner-punctuation mode a '.' of the delimiter set stays inside the token when a byte that is no
     * delimiter follows in the range, and a ',' when a digit (itself no delimiter) follows: with " .," as
     * delimiters "3.14, 1,000." gives "3.14" and "1,000". At the start of a token both are skipped like any
     * delimiter.
     *
     * Bytes are compared, not characters: delimiters below 0x40 are safe in GBK text, any ASCII delimiter in
     * UTF-8; others may cut a GBK character whose trail byte equals them. A NUL inside the range ends the
     * token before it; a call that finds one where a token would start returns null and steps past it.
     *
     * A walk is linear in the text plus, for each token, the length of `delims`. Only `m_vSeparators`
     * allocates. */
    char* GetToken(char* text, char* end, const char* delims);

    /** Inner-punctuation mode, as given to the constructor. */
    bool m_bKeepInnerPunct;
    /** False when a byte inside the range ended the last token; true when the token ran to the end of the
     * range or the rest held no token. A call that starts at the very end of its range, as with an empty
     * text, leaves it alone. */
    bool m_bReachedEnd;
    /** Start of the text. */
    char* m_pText;
    /** One past the last byte of the range. */
    char* m_pEnd;
    /** The byte under the NUL behind the last token; 0 when nothing is to be put back. */
    char m_cSaved;
    /** What followed the last token: the byte that ended it (NUL when it ran to the end of the range), then
     * the run of blanks and delimiters after that. "x, ,y" cut at ",": ',', ' ', ',' after "x" and NUL after
     * "y". */
    std::vector<char> m_vSeparators;
    /** The last separator taken, or the end of the range: the next call goes on from here. */
    char* m_pCur;
};

#endif
