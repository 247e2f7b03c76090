#ifndef UTILITY_CODETRANS_ENCODINGCODES_H
#define UTILITY_CODETRANS_ENCODINGCODES_H

/** @file
 * The codes by which the whole library names encodings, an int everywhere. 4 to 7 name none. */

/** As input: detect the encoding first. As a result: no decision. */
inline constexpr int ENCODE_UNKNOWN = 0;
/** UTF-8. */
inline constexpr int ENCODE_UTF8 = 1;
/** GBK, which function names call ANSI; also the verdict for text that tells nothing, pure ASCII for instance. */
inline constexpr int ENCODE_GBK = 2;
/** Big5. */
inline constexpr int ENCODE_BIG5 = 3;
/** Unicode. As a result of detection little-endian UCS-2; each conversion says which shape it reads and writes. */
inline constexpr int ENCODE_UNICODE = 8;

#endif
