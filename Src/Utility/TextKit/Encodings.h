#ifndef UTILITY_TEXTKIT_ENCODINGS_H
#define UTILITY_TEXTKIT_ENCODINGS_H

/** @file
 * Encodings: telling them, decoding to UTF-8, encoding from UTF-8.
 *
 * Texts come as views and go as owned strings; null views are empty texts. Nothing here reads or writes process-wide
 * state or a locale: every function may be called by any thread at any time. Nothing throws but std::bad_alloc. Each
 * call is one pass over its text, unless its comment says otherwise. */

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "../UtilityExport.h"

namespace textkit {

/** The encodings that the library reads and writes. */
enum class Encoding {
    kUnknown, /**< No decision, or: detect. */
    kUtf8,    /**< UTF-8. */
    kGbk,     /**< Code page 936: 21,791 two-byte codes, and byte 80 for U+20AC. */
    kBig5,    /**< Big5 of the WHATWG Encoding Standard, with its 1,713 codes of plane 2. */
    kUtf16Le, /**< UTF-16, low byte first, surrogate pairs included. */
    kUtf16Be, /**< The same, high byte first. */
};

/** The byte offset of what does not exist. */
inline constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

/** The tables behind the functions below: the maps of GBK and Big5 and the detector's automaton. Immutable; copies are
 * cheap and share their tables. All functions take one last and default to those compiled into the library. */
class UTILITY_API CodeMaps {
public:
    /** The tables compiled into the library. A library built without them (UTILITY_EMBED_CODEMAPS off) knows GBK, but
     * no code of Big5, and Detect sees marks and ASCII only. */
    CodeMaps() noexcept;
    // Copies only: an object moved from would have no tables.
    /** Shares the tables of the other. */
    CodeMaps(const CodeMaps&) = default;
    /** Shares the tables of the other. */
    CodeMaps& operator=(const CodeMaps&) = default;
    /** The tables of a data file as the build makes it (`codemaps.dat`), and the codes of Big5 for plane 2, which such
     * files do not hold; none where the file cannot be read or is too short. Reads the whole file and allocates about
     * 500 KiB more than its size.
     *
     *     if (std::optional<textkit::CodeMaps> maps = textkit::CodeMaps::Load("codemaps.dat"))
     *         textkit::Detect("\xD6\xD0\xB9\xFA", *maps).encoding;  // kGbk */
    static std::optional<CodeMaps> Load(const std::string& path);

    struct Tables;  // the library's own
    /** The tables, for the library's own functions. */
    const Tables& tables() const noexcept { return *tables_; }

private:
    explicit CodeMaps(std::shared_ptr<const Tables> tables) noexcept;
    std::shared_ptr<const Tables> tables_;
};

/** What Detect found. */
struct Detection {
    /** The likeliest encoding, kUnknown where none is likely. */
    Encoding encoding = Encoding::kUnknown;
    /** How sure that is, from 0 (kUnknown) to 1. A byte-order mark and pure ASCII are 1. Otherwise the detector weighs
     * the bytes for each encoding, and a lead of n points over the next best is n / (n + 12): two Chinese characters
     * give about 0.5, a short sentence more than 0.8. */
    double confidence = 0;
};

/** The encoding of `bytes`. A mark (EF BB BF, FF FE, FE FF) decides. Text of ASCII bytes without NUL, the empty text
 * too, is kUtf8 (even if it is UTF-16 without a mark whose bytes happen to be ASCII, as with one or two Chinese
 * characters they may). The marks of UTF-32 give kUnknown. Anything else goes by what its bytes are likely to mean in
 * each encoding; kUnknown where none is likely. UTF-16 without a mark is found in either byte order; a text whose bytes
 * are mostly ASCII other than NUL is never taken for it. Allocates nothing but, in the first call
 * with the tables compiled in, 6 MB that stay; looks at every byte, up to what is beyond doubt.
 *
 *     textkit::Detect("\xD6\xD0\xB9\xFA\xC8\xCB\xC3\xF1").encoding;  // kGbk: 中国人民
 *     textkit::Detect("plain").confidence;                             // 1 */
UTILITY_API Detection Detect(std::string_view bytes, const CodeMaps& maps = {});

/** The encoding of a page that may declare one ("<meta charset=…>", "<?xml encoding=…?>" and the like within its first
 * 4096 bytes). A page that declares UTF-8 and is well-formed UTF-8 is that, with confidence 1. Otherwise it is what
 * Detect says, unless that is less than half sure and the page declares a known label: then what it declares, with
 * confidence 0.5. A page readable enough to declare UTF-16 counts as one that declares UTF-8. Does not allocate.
 *
 *     textkit::DetectPage("<meta charset='big5'>\xFF.").encoding;  // kBig5 */
UTILITY_API Detection DetectPage(std::string_view bytes, const CodeMaps& maps = {});

/** The encoding that a label names: those of the WHATWG Encoding Standard for the encodings above ("gb2312", "GB18030"
 * and "x-gbk" are kGbk) and the code page numbers 936 and 950 ("cp936", "windows-950"). ASCII letters in any case,
 * ASCII blanks around it ignored; kUnknown for any other.
 *
 *     textkit::EncodingFromLabel("GB2312");  // kGbk */
UTILITY_API Encoding EncodingFromLabel(std::string_view label) noexcept;

/** The name of an encoding, a label that EncodingFromLabel knows; "unknown" for kUnknown. Static text.
 *
 *     textkit::EncodingName(textkit::Encoding::kUtf16Le);  // "utf-16le" */
UTILITY_API std::string_view EncodingName(Encoding encoding) noexcept;

/** Text out of bytes. */
struct Decoded {
    std::string text;                         /**< UTF-8, always well-formed, without a byte-order mark */
    std::size_t replaced = 0;                 /**< how often U+FFFD stands for what has no character */
    std::size_t first_replaced = kNoPosition; /**< byte offset in the input of the first such place */
    std::size_t gb18030_four_byte = 0;        /**< GBK: how many of them are four-byte characters of GB18030 */
};

/** Decodes `bytes` to UTF-8. The whole text is decoded, whatever it holds; a NUL is a character like others, a leading
 * mark of UTF-8 or UTF-16 is left out.
 *
 * Malformed input becomes U+FFFD as in the decoders of the WHATWG Encoding Standard: once for the longest start of a
 * UTF-8 sequence; once for a lead byte and a trail byte that make no character, but an ASCII byte in the trail's place
 * stays text; once for a lone surrogate or an odd last byte. Four bytes that make a character of GB18030 count as one
 * malformed character of GBK. The codes 8862, 8864, 88A3 and 88A5 of Big5 give two code points each. kUnknown: Detect
 * decides, and where it does not, the text is UTF-8 if it is well-formed UTF-8, else GBK. Allocates the text only.
 *
 *     textkit::Decode("\xD6\xD0" "A", textkit::Encoding::kGbk).text;  // "中A"
 *     textkit::Decode("a\xD6\n", textkit::Encoding::kGbk).text;       // "a\uFFFD\n", replaced 1, first_replaced 1 */
UTILITY_API Decoded Decode(std::string_view bytes, Encoding encoding, const CodeMaps& maps = {});

/** What Encode writes for a character that the target lacks. */
enum class Unmappable {
    kQuestionMark,     /**< "?" */
    kNumericReference, /**< "&#169;", as HTML forms do; text that holds such references itself becomes ambiguous */
};

/** Bytes out of text. */
struct Encoded {
    std::string bytes;                        /**< in the target encoding, without a mark */
    std::size_t replaced = 0;                 /**< how many characters the target lacks, malformed ones included */
    std::size_t first_replaced = kNoPosition; /**< byte offset in the input of the first of them */
};

/** Encodes UTF-8; kUnknown encodes to UTF-8. No mark is written.
 *
 * Malformed UTF-8 counts as U+FFFD, as in Decode: UTF-8 and UTF-16 get that character, GBK and Big5, which lack it,
 * what `unmappable` says. Where Big5 has two codes for a character, the encoder of the WHATWG Encoding Standard
 * chooses: none with a lead byte below A1, the last for U+2550, U+255E, U+2561, U+256A, U+5341 and U+5345, the first
 * for all others; so some characters that Decode knows are unmappable. Of those beyond U+FFFF, GBK has none and Big5
 * 291 of plane 2.
 *
 *     textkit::Encode("中", textkit::Encoding::kGbk).bytes;  // "\xD6\xD0"
 *     textkit::Encode("A©", textkit::Encoding::kGbk, textkit::Unmappable::kNumericReference).bytes;  // "A&#169;" */
UTILITY_API Encoded Encode(std::string_view utf8_text, Encoding encoding,
                           Unmappable unmappable = Unmappable::kQuestionMark, const CodeMaps& maps = {});

/** Whether `bytes` are well-formed UTF-8 throughout (no overlong form, surrogate, or value above U+10FFFF).
 *
 *     textkit::IsValidUtf8("中");        // true
 *     textkit::IsValidUtf8("\xC0\x80");  // false */
UTILITY_API bool IsValidUtf8(std::string_view bytes);

}  // namespace textkit

#endif
