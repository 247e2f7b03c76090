#ifndef UTILITY_TEXTKIT_DICTIONARY_H
#define UTILITY_TEXTKIT_DICTIONARY_H

/** @file
 * Dictionary: the longest word of a table that a text starts with. */

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "../UtilityExport.h"
#include "Encodings.h"

namespace textkit {

/** A table of words, built once and immutable; lookups by any number of threads need no lock.
 *
 * Words are bytes, UTF-8 or any other encoding that the texts are in; they may come in any order and more than once,
 * and the empty word is never found. The words are not kept: what is built takes 9 bytes for each byte that the words
 * do not share with the beginning of another, and a little more. Building sorts the words; std::bad_alloc beyond 4 GiB
 * of them. */
class UTILITY_API Dictionary {
public:
    /** What Longest found. */
    struct Match {
        std::size_t length = 0;          /**< in bytes; 0 for none */
        std::size_t index = kNoPosition; /**< place of the word in the table; of equal words the first */
    };

    /** The dictionary of `words`, which may go afterwards. */
    explicit Dictionary(const std::vector<std::string_view>& words);

    /** The longest word that `text` starts with. Looks no further into the text than the words reach; allocates
     * nothing.
     *
     *     const textkit::Dictionary words({"人民", "中华人民共和国", "中华"});
     *     words.Longest("中华人民").length;  // 6, and index 2 */
    Match Longest(std::string_view text) const noexcept;

private:
    // A tree of bytes, its nodes in the order of their depth, so that the children of a node stand in a row, in
    // ascending order: from first_child_ of the node to that of the next.
    std::vector<unsigned char> labels_;
    std::vector<std::uint32_t> first_child_;
    std::vector<std::uint32_t> words_;  // place of the word that ends at the node, and 1; 0 for none
};

}  // namespace textkit

#endif
