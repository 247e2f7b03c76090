#include "CodeTrans/CodeMaps/ScanForm.h"

#include <algorithm>
#include <iterator>

namespace utility::internal {

namespace {

// Found by going on from the start of a text; the trainer's automaton has 8 hubs and more grounds than these.
constexpr std::size_t kMostHubs = 10, kMostGrounds = 12;
static_assert(kMostHubs < ScanForm::Place::kNone && kMostGrounds < ScanForm::Place::kNone);

// Links followed for all rows, some 10 ms. Automata whose chains are longer than any text needs are left to be taken
// byte by byte in part.
constexpr std::size_t kMostFallbacks = std::size_t{1} << 22;

constexpr std::uint32_t kNobody = 0xFFFFFFFFu, kSeveral = 0xFFFFFFFEu;

// The bytes of well-formed three-byte characters as SkipThreeByteSequences() takes them, and the units that they make
// behind each other; `some` is one of these.
constexpr bool IsLead(unsigned byte) {
    return (byte & 0xF0) == 0xE0 && byte != 0xE0 && byte != 0xED;
}
constexpr bool IsTrail(unsigned byte) {
    return (byte & 0xC0) == 0x80;
}
struct ThreeByteUnits {
    bool (*first)(unsigned byte);
    bool (*second)(unsigned byte);
    std::size_t some;
};
constexpr ThreeByteUnits kRing[] = {{IsLead, IsTrail, 0x6180}, {IsTrail, IsLead, 0x00E1}, {IsTrail, IsTrail, 0x0080}};

// A ring that is left more often saves little.
constexpr std::size_t kMostLeaving = 100;

// What is known of a state that leads anywhere, or of the root.
struct Facts {
    std::uint32_t hub, ground;
    std::uint32_t holder;  // the one of its chain that has transitions on bytes from 80 up in front of the hub
};

}  // namespace

class ScanFormMaker {
public:
    ScanFormMaker(ScanForm& form, const States& states) : form_(form), states_(states) {}

    void Make() {
        SortByParent();
        FindResumed();
        FindFacts();
        FindRows();
        FindExceptions();
        PlaceExceptions();
        FillPlaces();
        FindRings();
    }

private:
    struct Holder {
        std::uint32_t state, first;  // of pending_
        std::uint32_t count;
    };
    struct Pending {
        std::uint16_t unit;
        Score score;
    };

    // Calls visit(child, byte) in order of the bytes, from `first` on.
    template <typename Visit>
    void ForEachChild(std::size_t state, unsigned first, const Visit& visit) const {
        for (std::size_t i = FirstFrom(state, first); i < first_child_[state + 1]; ++i)
            visit(children_[i], static_cast<unsigned>(std::int64_t{children_[i]} - states_.at[state].nBase));
    }
    std::size_t FirstFrom(std::size_t state, unsigned byte) const {
        const std::int64_t record = std::int64_t{states_.at[state].nBase} + byte;
        const auto begin = children_.begin();
        return static_cast<std::size_t>(
            std::lower_bound(begin + first_child_[state], begin + first_child_[state + 1], record) - begin);
    }
    Score ScoreOf(std::size_t state) const { return internal::ScoreOf(states_.at[state].nValue); }
    // What a text reaches from a state with a byte: a state that leads anywhere, or the root.
    struct Reached {
        std::uint32_t state;
        Score score;
    };
    Reached Step(std::uint32_t state, unsigned byte) {
        for (;; state = Above(state)) {
            const std::size_t entered = states_.Child(state, byte);
            if (entered != States::kNone) return {resumed_[entered], ScoreOf(entered)};
            if (state == 0) return {0, 0};
            if (fallbacks_ == kMostFallbacks) return {0, ScanForm::kByteByByte};
            ++fallbacks_;
        }
    }
    static std::size_t IndexOf(const std::vector<std::uint32_t>& list, std::uint32_t state) {
        return static_cast<std::size_t>(std::find(list.begin(), list.end(), state) - list.begin());
    }
    bool HasHub(std::size_t state) const { return IndexOf(hubs_, facts_[state].hub) < hubs_.size(); }

    // The states that each one leads to by itself, in order of their bytes.
    void SortByParent() {
        const auto for_each = [&](const auto& visit) {
            for (std::size_t i = 0; i < states_.count; ++i) {
                const std::int64_t parent = states_.at[i].nCheck;
                if (parent < 0 || static_cast<std::size_t>(parent) >= states_.count) continue;
                const std::int64_t byte = static_cast<std::int64_t>(i) - states_.at[parent].nBase;
                if (byte >= 0 && byte < 256) visit(static_cast<std::size_t>(parent), static_cast<std::uint32_t>(i));
            }
        };
        first_child_.assign(states_.count + 2, 0);
        for_each([&](std::size_t parent, std::uint32_t) { ++first_child_[parent + 2]; });
        for (std::size_t i = 2; i < first_child_.size(); ++i) first_child_[i] += first_child_[i - 1];
        children_.resize(first_child_.back());
        for_each([&](std::size_t parent, std::uint32_t child) { children_[first_child_[parent + 1]++] = child; });
        first_child_.pop_back();
    }

    // A state that leads nowhere hands every byte on to the state it falls back to, and so goes on as the first state
    // of its chain that leads anywhere. Chains share their ends, and each is walked only as far as that is not known
    // yet.
    void FindResumed() {
        resumed_.assign(states_.count, kNobody);
        resumed_[0] = 0;
        leading_.push_back(0);
        for (std::uint32_t state = 1; state < states_.count; ++state) {
            if (first_child_[state] == first_child_[state + 1]) continue;
            resumed_[state] = state;
            leading_.push_back(state);
        }
        std::vector<std::size_t> chain;
        for (std::size_t i = 0; i < states_.count; ++i) {
            std::size_t state = i;
            for (; resumed_[state] == kNobody; state = states_.Fallback(state)) chain.push_back(state);
            for (; !chain.empty(); chain.pop_back()) resumed_[chain.back()] = resumed_[state];
        }
    }

    // Each state after the one it falls back to.
    void FindFacts() {
        facts_.resize(states_.count);
        std::vector<bool> known(states_.count);
        std::vector<std::uint32_t> chain;
        for (const std::uint32_t leading : leading_) {
            for (std::uint32_t state = leading; !known[state]; state = Above(state)) {
                known[state] = true;
                chain.push_back(state);
            }
            for (; !chain.empty(); chain.pop_back()) facts_[chain.back()] = FactsOf(chain.back());
        }
    }
    std::uint32_t Above(std::uint32_t state) const { return resumed_[states_.Fallback(state)]; }
    Facts FactsOf(std::uint32_t state) const {
        const std::size_t first_high = FirstFrom(state, 0x80), high = first_child_[state + 1] - first_high;
        const bool low = first_high > first_child_[state];
        if (state == 0) return {0, 0, kNobody};
        Facts facts = facts_[Above(state)];
        if (low) facts.ground = state;
        if (high == 0x80) {
            facts.hub = state;
            facts.holder = kNobody;
        } else if (high > 0) {
            facts.holder = facts.holder == kNobody ? state : kSeveral;
        }
        return facts;
    }

    // Hubs and grounds that a text comes to.
    void FindRows() {
        Note(0);
        for (std::size_t hub = 0, ground = 0; hub < hubs_.size() || ground < grounds_.size();) {
            if (ground < grounds_.size()) {
                FillGround(grounds_[ground++]);
            } else {
                FillHub(hubs_[hub++]);
            }
        }
    }
    void Note(std::uint32_t state) {
        const Facts& facts = facts_[state];
        if (facts.hub == noted_hub_ && facts.ground == noted_ground_) return;
        noted_hub_ = facts.hub;
        noted_ground_ = facts.ground;
        const auto add = [](std::vector<std::uint32_t>& list, std::uint32_t what, std::size_t most) {
            if (list.size() < most && IndexOf(list, what) == list.size()) list.push_back(what);
        };
        add(hubs_, noted_hub_, kMostHubs);
        add(grounds_, noted_ground_, kMostGrounds);
    }
    void FillGround(std::uint32_t state) {
        ScanForm::Ground& ground = form_.grounds_.emplace_back();
        for (unsigned byte = 0; byte < ScanForm::kLowBytes; ++byte) {
            const Reached reached = Step(state, byte);
            ground.row[byte] = {reached.score, {}, reached.state};
            ground.skips[byte] = reached.score == 0 && facts_[reached.state].ground == state;
            Note(reached.state);
        }
        ground.skips_printable = std::find(ground.skips + 0x20, ground.skips + 0x80, false) == ground.skips + 0x80;
    }
    void FillHub(std::uint32_t hub) {
        if (form_.units_.empty()) {
            form_.units_.reserve(kMostHubs * ScanForm::kUnits);
            form_.behind_.reserve(kMostHubs * ScanForm::kUnits);
        }
        for (unsigned first = 0x80; first < 0x100; ++first) {
            const Reached middle = Step(hub, first);
            for (unsigned second = 0; second < 0x100; ++second) {
                const Reached reached = Step(middle.state, second);
                form_.units_.push_back({middle.score == 0 ? reached.score : ScanForm::kByteByByte, {}});
                form_.behind_.push_back(reached.state);
                Note(reached.state);
            }
        }
        // Exceptions may lead elsewhere.
        for (const std::uint32_t state : leading_)
            if (facts_[state].hub == hub && facts_[state].holder != kNobody)
                ForEachChild(state, 0x80, [&](std::uint32_t middle, unsigned) {
                    ForEachChild(middle, 0, [&](std::uint32_t child, unsigned) { Note(resumed_[child]); });
                });
    }

    void FindExceptions() {
        for (const std::uint32_t state : leading_) {
            if (facts_[state].holder != state || !HasHub(state)) continue;
            const auto first = static_cast<std::uint32_t>(pending_.size());
            if (AddExceptions(state)) {
                holders_.push_back({state, first, static_cast<std::uint32_t>(pending_.size()) - first});
            } else {
                pending_.resize(first);
            }
        }
    }
    // False where a state says otherwise than its hub about units that it has no transitions for.
    bool AddExceptions(std::uint32_t state) {
        const std::uint32_t hub = facts_[state].hub;
        const std::size_t row = IndexOf(hubs_, hub) * ScanForm::kUnits;
        bool alike = true;
        ForEachChild(state, 0x80, [&](std::uint32_t middle, unsigned first) {
            const Reached of_hub = Step(hub, first);
            alike = alike && of_hub.score == 0 && ScoreOf(middle) == 0 && Above(middle) == of_hub.state;
            ForEachChild(middle, 0, [&](std::uint32_t child, unsigned second) {
                const std::size_t unit = (first & 0x7F) << 8 | second;
                const bool same_way = resumed_[child] == form_.behind_[row + unit] &&
                                      form_.units_[row + unit].score < ScanForm::kByteByByte;
                pending_.push_back(
                    {static_cast<std::uint16_t>(unit), same_way ? ScoreOf(child) : ScanForm::kByteByByte});
            });
        });
        return alike;
    }

    // Each state's exceptions as they are, in order of their units, from a shift on at which all of them fall on free
    // places. Those who have most choose first. Half of the places stay free, so that a few tries find a shift.
    void PlaceExceptions() {
        constexpr std::uint32_t kTries = 256;
        std::stable_sort(holders_.begin(), holders_.end(),
                         [](const Holder& a, const Holder& b) { return a.count > b.count; });
        std::uint32_t shifts = 1u << 10;
        while (shifts < 2 * pending_.size() && shifts < ScanForm::Place::kShifts) shifts *= 2;
        form_.exceptions_.assign(shifts + ScanForm::kUnits, {ScanForm::kNobodys, 0});
        std::vector<bool> taken(shifts), used(form_.exceptions_.size());
        taken[0] = true;
        shift_of_.assign(states_.count, 0);
        std::uint32_t shift = 0;
        for (const Holder& holder : holders_) {
            const Pending* const first = pending_.data() + holder.first;
            const Pending* const last = first + holder.count;
            for (std::uint32_t tries = 0; tries < kTries; ++tries) {
                shift = (shift + 0x9E3779B1u) % shifts;  // odd: comes to all of them
                if (taken[shift] ||
                    std::any_of(first, last, [&](const Pending& one) { return used[shift + one.unit]; }))
                    continue;
                taken[shift] = true;
                for (const Pending* one = first; one != last; ++one) {
                    used[shift + one->unit] = true;
                    form_.exceptions_[shift + one->unit] = {shift, one->score};
                }
                shift_of_[holder.state] = shift;
                break;
            }
        }
    }

    void FillPlaces() {
        form_.places_.resize(states_.count);
        for (const std::uint32_t state : leading_) form_.places_[state] = PlaceOf(facts_[state]);
        for (std::size_t i = 0; i < states_.count; ++i) form_.places_[i] = form_.places_[resumed_[i]];
        for (std::size_t i = 0; i < form_.units_.size(); ++i) form_.units_[i].next = form_.places_[form_.behind_[i]];
        for (ScanForm::Ground& ground : form_.grounds_)
            for (ScanForm::LowByte& low : ground.row) low.next = form_.places_[low.state];
    }
    ScanForm::Place PlaceOf(const Facts& facts) const {
        constexpr unsigned kNone = ScanForm::Place::kNone;
        const std::size_t ground = IndexOf(grounds_, facts.ground), hub = IndexOf(hubs_, facts.hub);
        const std::uint32_t shift = facts.holder < kSeveral ? shift_of_[facts.holder] : 0;
        const bool by_hub = hub < hubs_.size() && (facts.holder == kNobody || shift != 0);
        return {by_hub ? static_cast<unsigned>(hub) : kNone,
                ground < grounds_.size() ? static_cast<unsigned>(ground) : kNone, by_hub ? shift : 0};
    }

    void FindRings() {
        form_.rings_.resize(hubs_.size());
        for (unsigned hub = 0; hub < hubs_.size(); ++hub) FindRing(hub);
    }
    // What the units of three-byte characters lead to from a hub, each of them but for the few noted as `leaving`.
    ScanForm::Unit CommonOf(unsigned hub, const ThreeByteUnits& units, std::bitset<ScanForm::kUnits>& leaving) const {
        const ScanForm::Unit* const row = form_.units(hub);
        const ScanForm::Unit common = row[units.some];
        for (unsigned first = 0x80; first < 0x100; ++first) {
            if (!units.first(first)) continue;
            for (unsigned second = 0x80; second < 0x100; ++second) {
                const std::size_t unit = (first & 0x7F) << 8 | second;
                if (units.second(second) && row[unit] != common) leaving.set(unit);
            }
        }
        return common;
    }
    void FindRing(unsigned hub) {
        ScanForm::Ring ring;
        std::bitset<ScanForm::kUnits> leaving;
        ScanForm::Unit unit{0, {hub, ScanForm::Place::kNone, 0}};
        for (std::size_t i = 0; i < std::size(kRing); ++i) {
            ring.last_hub = unit.next.hub();
            unit = CommonOf(ring.last_hub, kRing[i], i == 0 ? ring.leaves : leaving);
            ring.scores[i] = unit.score;
            if (unit.score >= ScanForm::kByteByByte || unit.next.hub() == ScanForm::Place::kNone ||
                unit.next.shift() != 0 || leaving.any() || ring.leaves.count() > kMostLeaving)
                return;
        }
        ring.start = unit.next;
        ring.exists = unit.next.hub() == hub;
        form_.rings_[hub] = ring;
    }

    ScanForm& form_;
    const States states_;
    std::vector<std::uint32_t> first_child_, children_;  // those of state i are from first_child_[i] on
    std::vector<std::uint32_t> leading_;                 // the states that lead anywhere, and the root
    std::vector<std::uint32_t> resumed_;                 // the one of these that each state goes on as
    std::vector<Facts> facts_;
    std::vector<std::uint32_t> hubs_, grounds_;
    std::size_t fallbacks_ = 0;
    std::uint32_t noted_hub_ = kNobody, noted_ground_ = kNobody;
    std::vector<Holder> holders_;
    std::vector<Pending> pending_;
    std::vector<std::uint32_t> shift_of_;
};

ScanForm::ScanForm(const _tTrieNode* states, std::size_t count) {
    ScanFormMaker(*this, {states, count}).Make();
}

}  // namespace utility::internal
