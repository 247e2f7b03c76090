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

// A state that leads anywhere, or the root, which is 0, by its place among these. All that is known of states is kept
// for them alone, as they are few; what a text reaches otherwise goes on as one of them.
using Node = std::uint32_t;

struct Facts {
    Node hub, ground;
    Node holder;          // the one of its chain that has transitions on bytes from 80 up in front of the hub
    std::uint32_t shift;  // of its own exceptions; 0 without
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
        Node node;
        std::uint32_t first, count;  // of pending_
    };
    struct Pending {
        std::uint16_t unit;
        Score score;
    };

    // Calls visit(child, byte) in order of the bytes, from `first` on.
    template <typename Visit>
    void ForEachChild(Node node, unsigned first, const Visit& visit) const {
        for (std::size_t i = FirstFrom(node, first); i < first_child_[node + 1]; ++i)
            visit(children_[i], static_cast<unsigned>(std::int64_t{children_[i]} - states_.at[leading_[node]].nBase));
    }
    std::size_t FirstFrom(Node node, unsigned byte) const {
        const std::int64_t record = std::int64_t{states_.at[leading_[node]].nBase} + byte;
        const auto begin = children_.begin();
        return static_cast<std::size_t>(
            std::lower_bound(begin + first_child_[node], begin + first_child_[node + 1], record) - begin);
    }
    Score ScoreOf(std::size_t state) const { return internal::ScoreOf(states_.at[state].nValue); }
    // What a text reaches from a node with a byte.
    struct Reached {
        Node node;
        Score score;
    };
    Reached Step(Node node, unsigned byte) {
        for (;; node = Above(node)) {
            const std::size_t entered = states_.Child(leading_[node], byte);
            if (entered != States::kNone) return {resumed_[entered], ScoreOf(entered)};
            if (node == 0) return {0, 0};
            if (fallbacks_ == kMostFallbacks) return {0, ScanForm::kByteByByte};
            ++fallbacks_;
        }
    }
    static std::size_t IndexOf(const std::vector<Node>& list, Node node) {
        return static_cast<std::size_t>(std::find(list.begin(), list.end(), node) - list.begin());
    }
    bool HasHub(Node node) const { return IndexOf(hubs_, facts_[node].hub) < hubs_.size(); }

    // The nodes, and the states that each one leads to by itself, in order of their bytes.
    void SortByParent() {
        const auto for_each = [&](const auto& visit) {
            for (std::size_t i = 0; i < states_.count; ++i) {
                const std::int64_t parent = states_.at[i].nCheck;
                if (parent < 0 || static_cast<std::size_t>(parent) >= states_.count) continue;
                const std::int64_t byte = static_cast<std::int64_t>(i) - states_.at[parent].nBase;
                if (byte >= 0 && byte < 256) visit(static_cast<std::size_t>(parent), static_cast<std::uint32_t>(i));
            }
        };
        resumed_.assign(states_.count, 0);
        std::vector<std::uint32_t>& children_of = resumed_;  // how many, until it is what it is called
        for_each([&](std::size_t parent, std::uint32_t) { ++children_of[parent]; });
        // Two in front, so that the first of each node becomes the first of the next while they are filled in.
        first_child_ = {0, 0};
        for (std::uint32_t state = 0; state < states_.count; ++state) {
            const std::uint32_t count = children_of[state];
            resumed_[state] = kNobody;
            if (count == 0 && state != 0) continue;
            resumed_[state] = static_cast<Node>(leading_.size());
            leading_.push_back(state);
            first_child_.push_back(first_child_.back() + count);
        }
        children_.resize(first_child_.back());
        for_each(
            [&](std::size_t parent, std::uint32_t child) { children_[first_child_[resumed_[parent] + 1]++] = child; });
        first_child_.pop_back();
    }

    // A state that leads nowhere hands every byte on to the state it falls back to, and so goes on as the first node of
    // its chain. Chains share their ends, and each is walked only as far as that is not known yet.
    void FindResumed() {
        std::vector<std::size_t> chain;
        for (std::size_t i = 0; i < states_.count; ++i) {
            std::size_t state = i;
            for (; resumed_[state] == kNobody; state = states_.Fallback(state)) chain.push_back(state);
            for (; !chain.empty(); chain.pop_back()) resumed_[chain.back()] = resumed_[state];
        }
    }

    // Each node after the one it falls back to.
    void FindFacts() {
        facts_.resize(leading_.size());
        std::vector<bool> known(leading_.size());
        std::vector<Node> chain;
        for (Node i = 0; i < leading_.size(); ++i) {
            for (Node node = i; !known[node]; node = Above(node)) {
                known[node] = true;
                chain.push_back(node);
            }
            for (; !chain.empty(); chain.pop_back()) facts_[chain.back()] = FactsOf(chain.back());
        }
    }
    Node Above(Node node) const { return resumed_[states_.Fallback(leading_[node])]; }
    Facts FactsOf(Node node) const {
        const std::size_t first_high = FirstFrom(node, 0x80), high = first_child_[node + 1] - first_high;
        const bool low = first_high > first_child_[node];
        if (node == 0) return {0, 0, kNobody, 0};
        Facts facts = facts_[Above(node)];
        facts.shift = 0;
        if (low) facts.ground = node;
        if (high == 0x80) {
            facts.hub = node;
            facts.holder = kNobody;
        } else if (high > 0) {
            facts.holder = facts.holder == kNobody ? node : kSeveral;
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
    void Note(Node node) {
        const Facts& facts = facts_[node];
        if (facts.hub == noted_hub_ && facts.ground == noted_ground_) return;
        noted_hub_ = facts.hub;
        noted_ground_ = facts.ground;
        const auto add = [](std::vector<Node>& list, Node what, std::size_t most) {
            if (list.size() < most && IndexOf(list, what) == list.size()) list.push_back(what);
        };
        add(hubs_, noted_hub_, kMostHubs);
        add(grounds_, noted_ground_, kMostGrounds);
    }
    void FillGround(Node node) {
        ScanForm::Ground& ground = form_.grounds_.emplace_back();
        for (unsigned byte = 0; byte < ScanForm::kLowBytes; ++byte) {
            const Reached reached = Step(node, byte);
            ground.row[byte] = {reached.score, {}, leading_[reached.node]};
            ground.skips[byte] = reached.score == 0 && facts_[reached.node].ground == node;
            Note(reached.node);
        }
        ground.skips_printable = std::find(ground.skips + 0x20, ground.skips + 0x80, false) == ground.skips + 0x80;
    }
    void FillHub(Node hub) {
        if (form_.units_.empty()) {
            form_.units_.reserve(kMostHubs * ScanForm::kUnits);
            form_.behind_.reserve(kMostHubs * ScanForm::kUnits);
        }
        for (unsigned first = 0x80; first < 0x100; ++first) {
            const Reached middle = Step(hub, first);
            for (unsigned second = 0; second < 0x100; ++second) {
                const Reached reached = Step(middle.node, second);
                form_.units_.push_back({middle.score == 0 ? reached.score : ScanForm::kByteByByte, {}});
                form_.behind_.push_back(leading_[reached.node]);
                Note(reached.node);
            }
        }
        // Exceptions may lead elsewhere.
        for (Node node = 0; node < leading_.size(); ++node)
            if (facts_[node].hub == hub && facts_[node].holder != kNobody)
                ForEachSecond(node, [&](std::uint32_t child, std::size_t) { Note(resumed_[child]); });
    }
    // Calls visit(child, unit) for what a node leads to by itself in two steps, the first with a byte from 80 up.
    template <typename Visit>
    void ForEachSecond(Node node, const Visit& visit) const {
        ForEachChild(node, 0x80, [&](std::uint32_t middle, unsigned first) {
            if (leading_[resumed_[middle]] != middle) return;
            ForEachChild(resumed_[middle], 0, [&](std::uint32_t child, unsigned second) {
                visit(child, std::size_t{(first & 0x7F) << 8 | second});
            });
        });
    }

    void FindExceptions() {
        for (Node node = 0; node < leading_.size(); ++node) {
            if (facts_[node].holder != node || !HasHub(node)) continue;
            const auto first = static_cast<std::uint32_t>(pending_.size());
            if (AddExceptions(node)) {
                holders_.push_back({node, first, static_cast<std::uint32_t>(pending_.size()) - first});
            } else {
                pending_.resize(first);
            }
        }
    }
    // False where a node says otherwise than its hub about units that it has no transitions for.
    bool AddExceptions(Node node) {
        const Node hub = facts_[node].hub;
        const std::size_t row = IndexOf(hubs_, hub) * ScanForm::kUnits;
        bool alike = true;
        ForEachChild(node, 0x80, [&](std::uint32_t middle, unsigned first) {
            const Reached of_hub = Step(hub, first);
            alike =
                alike && of_hub.score == 0 && ScoreOf(middle) == 0 && resumed_[states_.Fallback(middle)] == of_hub.node;
        });
        ForEachSecond(node, [&](std::uint32_t child, std::size_t unit) {
            const bool same_way = leading_[resumed_[child]] == form_.behind_[row + unit] &&
                                  form_.units_[row + unit].score < ScanForm::kByteByByte;
            pending_.push_back({static_cast<std::uint16_t>(unit), same_way ? ScoreOf(child) : ScanForm::kByteByByte});
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
                facts_[holder.node].shift = shift;
                break;
            }
        }
    }

    void FillPlaces() {
        form_.places_.resize(states_.count);
        std::vector<ScanForm::Place> of_node(leading_.size());
        for (Node node = 0; node < leading_.size(); ++node) of_node[node] = PlaceOf(facts_[node]);
        for (std::size_t i = 0; i < states_.count; ++i) form_.places_[i] = of_node[resumed_[i]];
        for (std::size_t i = 0; i < form_.units_.size(); ++i) form_.units_[i].next = form_.places_[form_.behind_[i]];
        for (ScanForm::Ground& ground : form_.grounds_)
            for (ScanForm::LowByte& low : ground.row) low.next = form_.places_[low.state];
    }
    ScanForm::Place PlaceOf(const Facts& facts) const {
        constexpr unsigned kNone = ScanForm::Place::kNone;
        const std::size_t ground = IndexOf(grounds_, facts.ground), hub = IndexOf(hubs_, facts.hub);
        const std::uint32_t shift = facts.holder < kSeveral ? facts_[facts.holder].shift : 0;
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
    std::vector<std::uint32_t> leading_;                 // the state that each node is
    std::vector<std::uint32_t> first_child_, children_;  // those of node i are from first_child_[i] on
    std::vector<Node> resumed_;                          // the one that each state goes on as
    std::vector<Facts> facts_;
    std::vector<Node> hubs_, grounds_;
    std::size_t fallbacks_ = 0;
    Node noted_hub_ = kNobody, noted_ground_ = kNobody;
    std::vector<Holder> holders_;
    std::vector<Pending> pending_;
};

ScanForm::ScanForm(const _tTrieNode* states, std::size_t count) {
    ScanFormMaker(*this, {states, count}).Make();
}

}  // namespace utility::internal
