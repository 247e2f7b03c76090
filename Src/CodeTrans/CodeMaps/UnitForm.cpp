#include "CodeTrans/CodeMaps/UnitForm.h"

#include <algorithm>

namespace utility::internal {

namespace {

// Found by going on from the start of a text; automata of the trainer have 6 and 8.
constexpr std::size_t kMostHubs = 8, kMostGrounds = 12;
static_assert(kMostHubs < UnitForm::Place::kNone && kMostGrounds < UnitForm::Place::kNone);

constexpr std::uint32_t kNobody = 0xFFFFFFFFu, kSeveral = 0xFFFFFFFEu;

// What is known of a state that leads anywhere, or of the root.
struct Facts {
    std::uint32_t hub, ground;
    std::uint32_t holder;  // the one of its chain that has transitions on bytes from 80 up in front of the hub
    bool low = false;      // leads on from bytes below 80 itself
};

}  // namespace

class UnitFormMaker {
public:
    UnitFormMaker(UnitForm& form, const States& states, const std::vector<std::uint32_t>& resumed)
        : form_(form), states_(states), resumed_(resumed) {}

    void Make() {
        SortByParent();
        FindFacts();
        FindRows();
        FindExceptions();
        PlaceExceptions();
        FillPlaces();
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

    unsigned ByteOf(std::uint32_t child) const {
        return static_cast<unsigned>(std::int64_t{child} - states_.at[states_.at[child].nCheck].nBase);
    }
    template <typename Visit>
    void ForEachChild(std::size_t state, const Visit& visit) const {
        for (std::uint32_t i = first_child_[state]; i < first_child_[state + 1]; ++i) visit(children_[i]);
    }
    std::size_t HighChildren(std::size_t state) const {
        std::size_t high = 0;
        ForEachChild(state, [&](std::uint32_t child) { high += ByteOf(child) >= 0x80; });
        return high;
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

    // Each state after the one it falls back to.
    void FindFacts() {
        facts_.resize(states_.count);
        std::vector<bool> known(states_.count);
        std::vector<std::uint32_t> chain;
        for (std::uint32_t i = 0; i < states_.count; ++i) {
            if (resumed_[i] != i) continue;
            for (std::uint32_t state = i; !known[state]; state = Above(state)) {
                known[state] = true;
                chain.push_back(state);
            }
            for (; !chain.empty(); chain.pop_back()) facts_[chain.back()] = FactsOf(chain.back());
        }
    }
    std::uint32_t Above(std::uint32_t state) const { return resumed_[states_.Fallback(state)]; }
    Facts FactsOf(std::uint32_t state) const {
        const std::size_t high = HighChildren(state);
        const bool low = first_child_[state + 1] - first_child_[state] > high;
        if (state == 0) return {0, 0, kNobody, low};
        Facts facts = facts_[Above(state)];
        if (low) facts.ground = state;
        facts.low = low;
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
        const auto add = [](std::vector<std::uint32_t>& list, std::uint32_t what, std::size_t most) {
            if (list.size() < most && IndexOf(list, what) == list.size()) list.push_back(what);
        };
        add(hubs_, facts_[state].hub, kMostHubs);
        add(grounds_, facts_[state].ground, kMostGrounds);
    }
    void FillGround(std::uint32_t state) {
        UnitForm::Ground& ground = form_.grounds_.emplace_back();
        for (unsigned byte = 0; byte < UnitForm::kLowBytes; ++byte) {
            const States::Reached reached = states_.Step(state, byte);
            const std::uint32_t next = resumed_[reached.state];
            ground.row[byte] = {reached.score, {}, next};
            ground.skips[byte] = reached.score == 0 && facts_[next].ground == state;
            Note(next);
        }
        ground.skips_printable = std::find(ground.skips + 0x20, ground.skips + 0x80, false) == ground.skips + 0x80;
    }
    void FillHub(std::uint32_t hub) {
        for (unsigned first = 0x80; first < 0x100; ++first) {
            const States::Reached middle = states_.Step(hub, first);
            for (unsigned second = 0; second < 0x100; ++second) {
                const States::Reached reached = states_.Step(resumed_[middle.state], second);
                const std::uint32_t next = resumed_[reached.state];
                form_.units_.push_back({middle.score == 0 ? reached.score : UnitForm::kByteByByte, {}});
                form_.behind_.push_back(next);
                Note(next);
            }
        }
        // Exceptions may lead elsewhere.
        for (std::uint32_t state = 0; state < states_.count; ++state)
            if (resumed_[state] == state && facts_[state].hub == hub && facts_[state].holder != kNobody)
                ForEachChild(state, [&](std::uint32_t middle) {
                    ForEachChild(middle, [&](std::uint32_t child) { Note(resumed_[child]); });
                });
    }

    void FindExceptions() {
        for (std::uint32_t state = 0; state < states_.count; ++state) {
            if (resumed_[state] != state || facts_[state].holder != state || !HasHub(state)) continue;
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
        const std::size_t row = IndexOf(hubs_, hub) * UnitForm::kUnits;
        bool alike = true;
        ForEachChild(state, [&](std::uint32_t middle) {
            const unsigned first = ByteOf(middle);
            if (first < 0x80) return;
            const States::Reached of_hub = states_.Step(hub, first);
            alike = alike && of_hub.score == 0 && ScoreOf(states_.at[middle].nValue) == 0 &&
                    Above(middle) == resumed_[of_hub.state];
            ForEachChild(middle, [&](std::uint32_t child) {
                const std::size_t unit = (first & 0x7F) << 8 | ByteOf(child);
                const bool same_way = resumed_[child] == form_.behind_[row + unit] &&
                                      form_.units_[row + unit].score < UnitForm::kByteByByte;
                pending_.push_back({static_cast<std::uint16_t>(unit),
                                    same_way ? ScoreOf(states_.at[child].nValue) : UnitForm::kByteByByte});
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
        while (shifts < 2 * pending_.size() && shifts < UnitForm::Place::kShifts) shifts *= 2;
        form_.exceptions_.assign(shifts + UnitForm::kUnits, {0, 0});
        std::vector<bool> taken(shifts);
        taken[0] = true;
        shift_of_.assign(states_.count, 0);
        std::uint32_t shift = 0;
        for (const Holder& holder : holders_) {
            const Pending* const first = &pending_[holder.first];
            const Pending* const last = first + holder.count;
            for (std::uint32_t tries = 0; tries < kTries; ++tries) {
                shift = (shift + 0x9E3779B1u) % shifts;  // odd: comes to all of them
                UnitForm::Exception* const places = &form_.exceptions_[shift];
                if (taken[shift] ||
                    std::any_of(first, last, [&](const Pending& one) { return places[one.unit].shift != 0; }))
                    continue;
                taken[shift] = true;
                for (const Pending* one = first; one != last; ++one) places[one->unit] = {shift, one->score};
                shift_of_[holder.state] = shift;
                break;
            }
        }
    }

    void FillPlaces() {
        form_.places_.resize(states_.count);
        for (std::uint32_t state = 0; state < states_.count; ++state)
            if (resumed_[state] == state) form_.places_[state] = PlaceOf(facts_[state]);
        form_.places_[0] = PlaceOf(facts_[0]);
        for (std::size_t i = 0; i < form_.units_.size(); ++i) form_.units_[i].next = form_.places_[form_.behind_[i]];
        for (UnitForm::Ground& ground : form_.grounds_)
            for (UnitForm::LowByte& low : ground.row) low.next = form_.places_[low.state];
    }
    UnitForm::Place PlaceOf(const Facts& facts) const {
        constexpr unsigned kNone = UnitForm::Place::kNone;
        const std::size_t ground = IndexOf(grounds_, facts.ground), hub = IndexOf(hubs_, facts.hub);
        const std::uint32_t shift = facts.holder < kSeveral ? shift_of_[facts.holder] : 0;
        const bool by_hub = hub < hubs_.size() && (facts.holder == kNobody || shift != 0);
        return {by_hub ? static_cast<unsigned>(hub) : kNone,
                ground < grounds_.size() ? static_cast<unsigned>(ground) : kNone, by_hub ? shift : 0};
    }

    UnitForm& form_;
    const States& states_;
    const std::vector<std::uint32_t>& resumed_;
    std::vector<std::uint32_t> first_child_, children_;
    std::vector<Facts> facts_;
    std::vector<std::uint32_t> hubs_, grounds_;
    std::vector<Holder> holders_;
    std::vector<Pending> pending_;
    std::vector<std::uint32_t> shift_of_;
};

UnitForm::UnitForm(const States& states, const std::vector<std::uint32_t>& resumed) {
    UnitFormMaker(*this, states, resumed).Make();
}

}  // namespace utility::internal
