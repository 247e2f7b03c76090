#ifndef UTILITY_EXTRACTION_EMAILEXTRACTION_H
#define UTILITY_EXTRACTION_EMAILEXTRACTION_H

/** @file
 * The e-mail addresses in the lines of a mail header: From, To, Cc and their Chinese counterparts. */

#include <string>
#include <vector>

#include "../UtilityExport.h"

/** One address with what stands in front of it. Bytes are those of the text; no encoding is converted. */
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
struct UTILITY_API _email {
    std::string user;   /**< in front of the at sign: ASCII letters, folded to lower case, digits and `-._` */
    std::string domain; /**< behind it, made of the same */
    std::string prefix; /**< what stands in front of `name`, such as a name in Chinese characters */
    std::string name;   /**< the display name: ASCII letters, digits and `", -._` and tab */
    std::string type;   /**< the kind of line: "send", "recv", "copy_to" or "secret_to" */
};

/** Replaces the content of `emails` by one record for each address in `text`, in the order of the text.
 *
 * `text` is NUL-terminated, must not be null or lie in `emails`, and should be UTF-8: the characters below
 * are known in that form only. A line in GBK counts as a sender's, short of bytes that match by chance.
 *
 * The kind is that of the whole text: "recv" if 收 stands anywhere in front of the first at sign, else
 * "copy_to" for 抄, else "secret_to" for 密, else "send". So of several lines in one text all get the kind of
 * the first, and a name with such a character in it decides as well.
 *
 * Every at sign makes a record, whatever surrounds it, so `user` and `domain` may be empty. The domain is the
 * longest run of address characters behind the at sign. Should a double quote follow it, everything up to the
 * next `>` is skipped (where there is none, the rest of the text). Then `>;,` and white space are skipped,
 * and there the search for the next at sign begins; what lies in front of that place belongs to this address
 * and never to the next.
 *
 * Backwards from the at sign follow the user; any `<`, double quotes, blanks and tabs, which are skipped; the
 * name, as long a run as there is, whose commas, dashes, blanks and tabs at the end are dropped (not those at its
 * start, nor an opening quote); and the prefix, which reaches back to the nearest of `:;,` or to the end of
 * the address before. **The prefix is stepped over as double-byte text**: a byte from 80 up counts together
 * with the byte in front of it, whatever that is. So where an odd number of such bytes follows one of `:;,`,
 * the first of them is left out, as is one at the very beginning; and the marks ：。， of UTF-8 end the
 * prefix only where the steps happen to meet EF BC, 9A E3 or 80 82, bytes of their list at an even offset
 * (see CC_Find).
 *
 *     To: John <John.Smith@MAILHOST.Org>
 *         user "john.smith", domain "mailhost.org", prefix "", name " John", type "send"
 *
 * Linear in the text, whatever is in it; allocates for the records alone. Any thread may call at any time. */
UTILITY_API void ExtractEmail(const char* text, std::vector<_email>& emails);

#endif
