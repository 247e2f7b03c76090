#include "Detector/Automaton.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace tools {

using utility::internal::_tTrieNode;
using utility::internal::kNeutralValue;

namespace {

constexpr int kNoParent = -1;
constexpr _tTrieNode kUnused = {0, kNoParent, 0, kNeutralValue};

// Finds room for sets of children in the double array, lowest base first.
class Layout {
public:
    explicit Layout(std::size_t taken) : used_(taken, true) {}

    int Place(const std::map<unsigned char, int>& children) {
        while (first_free_ < used_.size() && used_[first_free_]) ++first_free_;
        const std::size_t lowest = children.begin()->first;
        std::size_t base = first_free_ > lowest ? first_free_ - lowest : 0;
        while (!Fits(base, children)) ++base;
        if (used_.size() < base + 256) used_.resize(base + 256);
        for (const auto& child : children) used_[base + child.first] = true;
        return static_cast<int>(base);
    }

    std::size_t size() const { return used_.size(); }

private:
    bool Fits(std::size_t base, const std::map<unsigned char, int>& children) const {
        return std::all_of(children.begin(), children.end(), [&](const auto& child) {
            return base + child.first >= used_.size() || !used_[base + child.first];
        });
    }

    std::vector<bool> used_;
    std::size_t first_free_ = 0;
};

// Whether the chain from each record ends at the root. Each record is looked at once.
std::vector<bool> ChainsThatEnd(const Records& records) {
    enum Mark : unsigned char { kNew, kOpen, kEnds, kNever };
    std::vector<Mark> marks(records.size(), kNew);
    marks[0] = kEnds;
    for (std::size_t start = 0; start < records.size(); ++start) {
        std::vector<std::size_t> chain;
        std::size_t record = start;
        while (record < records.size() && marks[record] == kNew) {
            marks[record] = kOpen;
            chain.push_back(record);
            record = static_cast<std::size_t>(records[record].nFail);
        }
        const Mark end = record < records.size() && marks[record] == kEnds ? kEnds : kNever;
        for (const std::size_t passed : chain) marks[passed] = end;
    }
    std::vector<bool> ends;
    ends.reserve(marks.size());
    for (const Mark mark : marks) ends.push_back(mark == kEnds);
    return ends;
}

}  // namespace

Automaton::Automaton(const std::vector<Pattern>& patterns) : states_(2), has_effect_(2) {
    states_[kRoot].at_start = true;
    for (int byte = 0; byte < 256; ++byte) {
        Child(kRoot, static_cast<unsigned char>(byte));
        Child(kGround, static_cast<unsigned char>(byte));
    }
    for (const Pattern& pattern : patterns) Add(pattern);
    LinkMiddle(chosen_fallbacks_);
    LinkStart();
}

int Automaton::Child(int state, unsigned char byte) {
    const auto index = static_cast<std::size_t>(state);
    const auto [place, added] = states_[index].next.try_emplace(byte, static_cast<int>(states_.size()));
    const int child = place->second;
    if (added) {
        State fresh;
        fresh.at_start = states_[index].at_start;
        fresh.bytes = states_[index].bytes + static_cast<char>(byte);
        states_.push_back(std::move(fresh));
        has_effect_.push_back(false);
    }
    return child;
}

void Automaton::Add(const Pattern& pattern) {
    if (pattern.at_start && pattern.fallback)
        throw std::runtime_error("a pattern at the start of the text falls back to the same bytes elsewhere");
    ForEachString(pattern, [&](const std::string& bytes) {
        int state = pattern.at_start ? kRoot : kGround;
        for (const char c : bytes) state = Child(state, static_cast<unsigned char>(c));
        const auto index = static_cast<std::size_t>(state);
        if (pattern.effect) {
            states_[index].effect = *pattern.effect;
            has_effect_[index] = true;
        }
        if (pattern.fallback) chosen_fallbacks_[state] = *pattern.fallback;
    });
}

int Automaton::Step(int state, unsigned char byte) const {
    for (;;) {
        const State& from = states_[static_cast<std::size_t>(state)];
        const auto next = from.next.find(byte);
        if (next != from.next.end()) return next->second;
        state = from.fallback;  // the ground has every transition, so this ends
    }
}

int Automaton::Walk(std::string_view bytes) const {
    int state = kGround;
    for (const char c : bytes) state = Step(state, static_cast<unsigned char>(c));
    return state;
}

int Automaton::Find(const std::string& bytes) const {
    int state = kGround;
    for (const char c : bytes) {
        const auto& next = states_[static_cast<std::size_t>(state)].next;
        const auto found = next.find(static_cast<unsigned char>(c));
        if (found == next.end()) throw std::runtime_error("no pattern begins with " + FormatBytes(bytes));
        state = found->second;
    }
    return state;
}

bool Automaton::FallsBackTo(int state, int target) const {
    while (state != target && state != kGround) state = states_[static_cast<std::size_t>(state)].fallback;
    return state == target;
}

// Breadth first, so that the shorter states that a state falls back to are linked before it.
void Automaton::LinkMiddle(const std::map<int, std::string>& chosen) {
    states_[kGround].fallback = kRoot;  // never taken, but a chain must end
    std::vector<int> queue = {kGround};
    for (std::size_t head = 0; head < queue.size(); ++head) {
        const int parent = queue[head];
        for (const auto& [byte, child] : states_[static_cast<std::size_t>(parent)].next) {
            queue.push_back(child);
            State& state = states_[static_cast<std::size_t>(child)];
            const auto choice = chosen.find(child);
            if (choice == chosen.end()) {
                if (parent != kGround) state.fallback = Step(states_[static_cast<std::size_t>(parent)].fallback, byte);
                continue;
            }
            state.fallback = Find(choice->second);
            // What comes behind a state is linked by way of its fallback, which must be linked by then.
            if ((choice->second.size() > state.bytes.size() && !state.next.empty()) ||
                FallsBackTo(state.fallback, child))
                throw std::runtime_error(FormatBytes(state.bytes) + " falls back to a longer pattern or in a circle");
        }
    }
}

// A text's first characters count as they do anywhere else, unless a pattern at the start says otherwise.
void Automaton::LinkStart() {
    for (std::size_t index = 2; index < states_.size(); ++index) {
        State& state = states_[index];
        if (!state.at_start) continue;
        state.fallback = Walk(state.bytes);
        if (!has_effect_[index]) state.effect = states_[static_cast<std::size_t>(state.fallback)].effect;
    }
}

// States that lead nowhere are of no use as a fallback.
int Automaton::UsefulFallback(const State& state) const {
    int fallback = state.fallback;
    while (states_[static_cast<std::size_t>(fallback)].next.empty())
        fallback = states_[static_cast<std::size_t>(fallback)].fallback;
    return fallback;
}

Records Automaton::Pack(std::vector<int>& record_of) const {
    std::vector<int> order(states_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return states_[static_cast<std::size_t>(a)].next.size() > states_[static_cast<std::size_t>(b)].next.size();
    });
    Layout layout(2);  // the root and the ground
    std::vector<int> base_of(states_.size());
    record_of.assign(states_.size(), 0);
    record_of[kGround] = 1;
    for (const int state : order) {
        const auto& children = states_[static_cast<std::size_t>(state)].next;
        if (children.empty()) continue;
        const int base = base_of[static_cast<std::size_t>(state)] = layout.Place(children);
        for (const auto& [byte, child] : children) record_of[static_cast<std::size_t>(child)] = base + byte;
    }
    Records records(layout.size(), kUnused);
    for (std::size_t index = 0; index < states_.size(); ++index) {
        const State& state = states_[index];
        _tTrieNode& record = records[static_cast<std::size_t>(record_of[index])];
        record.nBase = base_of[index];
        record.nFail = record_of[static_cast<std::size_t>(UsefulFallback(state))];
        record.nValue = PackEffect(state.effect);
        for (const auto& child : state.next)
            records[static_cast<std::size_t>(base_of[index]) + static_cast<std::size_t>(child.first)].nCheck =
                record_of[index];
    }
    records[0].nFail = 0;
    return records;
}

std::vector<std::string> FindFaults(const Records& records) {
    std::vector<std::string> faults;
    if (records.empty()) return {"there is no root"};
    const auto size = static_cast<std::int64_t>(records.size());
    const std::vector<bool> ends = ChainsThatEnd(records);
    for (std::int64_t index = 0; index < size; ++index) {
        const _tTrieNode& record = records[static_cast<std::size_t>(index)];
        const auto report = [&](const char* what) {
            faults.push_back("record " + std::to_string(index) + ": " + what);
        };
        if (record.nBase < 0 || record.nBase + std::int64_t{255} >= size) report("transitions leave the table");
        if (record.nCheck < kNoParent || record.nCheck >= size) {
            report("entered from outside the table");
        } else if (record.nCheck >= 0) {
            const std::int64_t byte = index - records[static_cast<std::size_t>(record.nCheck)].nBase;
            if (byte < 0 || byte > 255) report("its parent leads elsewhere");
        }
        if (record.nFail < 0 || record.nFail >= size) {
            report("falls back out of the table");
        } else if (!ends[static_cast<std::size_t>(index)]) {
            report("its failure chain never ends");
        }
        const Effect effect = UnpackEffect(record.nValue);
        if (effect.verdict < 0 || effect.verdict > 8 || (effect.verdict > 3 && effect.verdict < 8))
            report("a verdict that is no encoding");
        try {
            if (effect.verdict >= 0 && PackEffect(effect) != record.nValue) report("bits 18 or 19 are set");
        } catch (const std::exception& error) {
            report(error.what());
        }
    }
    return faults;
}

}  // namespace tools
