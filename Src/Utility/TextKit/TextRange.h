#ifndef UTILITY_TEXTKIT_TEXTRANGE_H
#define UTILITY_TEXTKIT_TEXTRANGE_H

/** @file
 * What Characters, Sentences and Numbers have in common: a range over what a text holds, found one at a time. */

#include <cstddef>
#include <iterator>

namespace textkit {

/** What a text holds, in its order: a range to loop over, to give to an algorithm or to fill a container with. An item
 * is found when an iterator gets to it, and nothing is allocated. The text must outlive range and iterators; an
 * iterator outlives its range, and one of a copy of the range is as good. `Cursor` is the library's own: it stands at
 * an item. */
template <typename Cursor>
class TextRange {
public:
    /** Goes forward from item to item. */
    class iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = typename Cursor::Item;
        using difference_type = std::ptrdiff_t;
        using pointer = const value_type*;
        using reference = const value_type&;

        iterator() = default;
        /** The item is part of the iterator: a reference to it ends with the next step. */
        reference operator*() const { return cursor_.item; }
        pointer operator->() const { return &cursor_.item; }
        iterator& operator++() {
            at_item_ = cursor_.Advance();
            return *this;
        }
        iterator operator++(int) {
            iterator before = *this;
            ++*this;
            return before;
        }
        /** Whether both stand at the same place of one text, or both at the end. */
        friend bool operator==(const iterator& a, const iterator& b) {
            return a.at_item_ == b.at_item_ && (!a.at_item_ || a.cursor_.Place() == b.cursor_.Place());
        }
        friend bool operator!=(const iterator& a, const iterator& b) { return !(a == b); }

    private:
        friend class TextRange;
        explicit iterator(const Cursor& before_first) : cursor_(before_first) { ++*this; }

        Cursor cursor_{};
        bool at_item_ = false;
    };
    using const_iterator = iterator;          /**< nothing can be changed by either */
    using value_type = typename Cursor::Item; /**< what the text holds */

    /** At the first of them, which is found now; at the end where there is none. */
    iterator begin() const { return iterator(before_first_); }
    /** Behind the last. */
    iterator end() const { return {}; }
    /** Whether there is none: looks for the first. */
    bool empty() const { return begin() == end(); }

protected:
    /** What `before_first` finds. */
    explicit TextRange(const Cursor& before_first) : before_first_(before_first) {}

private:
    Cursor before_first_;
};

}  // namespace textkit

#endif
