#ifndef UTILITY_CODETRANS_SCANFORM_H
#define UTILITY_CODETRANS_SCANFORM_H

// The automaton in the form that detection runs on, made when a data file is loaded: it takes a text a unit at a time,
// a byte below 80, or a byte from 80 up together with the next one. One look-up in a row says what such a unit scores
// and where it leads to, and a text's look-ups hardly wait for each other: where a unit leads to does not depend on the
// unit in front of it, but for few.
//
// Nothing is taken for granted about the automaton. A state takes units from 80 up by the row of its *hub*: the first
// state of its failure chain that has a transition on each byte from 80 up, or the root. Where it leads on from such
// bytes itself, what it says otherwise than the hub are its *exceptions*; they are few, and stand in a hash table
// without collisions. A state takes bytes below 80 by the row of its *ground*: the first state of its chain that leads
// on from any of these. There is room for some hubs and grounds, found by going on from the start of a text. A state
// that does not fit, or that says more by its exceptions than another score, has no row, and the scan takes its bytes
// one by one.
//
// Two characters of three bytes in UTF-8 make three units. A hub from which all of them, but for few, lead round
// through two others and back, with the same three scores, is the start of a *ring*: the scan takes any number of such
// characters by counting them.

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "CodeTrans/CodeMaps/StateSteps.h"

namespace utility::internal {

class ScanForm {
public:
    // How a state goes on, packed: its hub, its ground, and where its exceptions are.
    class Place {
    public:
        static constexpr unsigned kNone = 0xF;  // neither hub nor ground
        static constexpr std::uint32_t kShifts = 1u << 24;

        constexpr Place() = default;
        constexpr Place(unsigned hub, unsigned ground, std::uint32_t shift)
            : packed_(hub << 28 | ground << 24 | shift) {}
        unsigned hub() const { return packed_ >> 28; }
        unsigned ground() const { return packed_ >> 24 & 0xF; }
        // 0 without exceptions. Each state that has some has a shift of its own.
        std::uint32_t shift() const { return packed_ & (kShifts - 1); }
        bool operator==(const Place& other) const { return packed_ == other.packed_; }

    private:
        std::uint32_t packed_ = kNone << 28 | kNone << 24;
    };

    static constexpr std::size_t kUnits = 0x80 * 0x100;
    static constexpr std::size_t kLowBytes = 0x80;
    static constexpr Score kByteByByte = kVerdict;  // from here on a unit must be taken byte by byte

    struct Unit {
        Score score;
        Place next;
        bool operator!=(const Unit& other) const { return score != other.score || !(next == other.next); }
    };
    static constexpr std::uint32_t kNobodys = 0xFFFFFFFFu;
    struct Exception {
        std::uint32_t shift;  // whose it is; kNobodys for none
        Score score;
    };
    struct LowByte {
        Score score;
        Place next;
        std::uint32_t state;
    };
    struct Ground {
        LowByte row[kLowBytes];
        // Bytes that mean nothing: without a score they lead back to the ground. Text of these may be skipped.
        bool skips[kLowBytes];
        bool skips_printable;  // all of 20 to 7F
    };

    struct Ring {
        bool exists = false;
        Place start;           // a text that goes on like this goes round
        Score scores[3] = {};  // of each unit
        unsigned last_hub = Place::kNone;
        std::bitset<kUnits> leaves;  // the first units that do not lead round

        static constexpr std::ptrdiff_t kBytes = 6;
    };

    // States that the form can number.
    static constexpr std::size_t kMostStates = 0x80000000u;

    // Every failure link of the states leads to the root; there is one state at least, and kMostStates at most. Throws
    // std::bad_alloc.
    ScanForm(const _tTrieNode* states, std::size_t count);

    // How a text goes on from a state.
    Place place(std::size_t state) const { return places_[state]; }
    // By (first byte - 80) × 100 + second.
    const Unit* units(unsigned hub) const { return &units_[hub * kUnits]; }
    // The state behind a unit of units(hub).
    std::uint32_t behind(unsigned hub, std::size_t unit) const { return behind_[hub * kUnits + unit]; }
    const Exception* exceptions(std::uint32_t shift) const { return &exceptions_[shift]; }
    const Ground& ground(unsigned ground) const { return grounds_[ground]; }
    std::size_t hubs() const { return rings_.size(); }
    const Ring& ring(unsigned hub) const { return rings_[hub]; }

private:
    friend class ScanFormMaker;

    std::vector<Place> places_;
    std::vector<Unit> units_;
    std::vector<std::uint32_t> behind_;
    std::vector<Exception> exceptions_;
    std::vector<Ground> grounds_;
    std::vector<Ring> rings_;
};

}  // namespace utility::internal

#endif
