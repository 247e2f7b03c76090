// Intersections and differences of sorted lists of integers.

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "Common/Contest.h"
#include "IntegerSets/IntArray.h"
#include "IntegerSets/SetOperations.h"

namespace {

using namespace bench;

using List = std::vector<int>;

// `count` different numbers below `limit`, of which the same call gives the same.
List Sorted(std::size_t count, unsigned limit, unsigned seed) {
    std::mt19937 random(seed);
    List list;
    while (list.size() < count) {
        while (list.size() < count + count / 8 + 8) list.push_back(static_cast<int>(random() % limit));
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    std::shuffle(list.begin(), list.end(), random);
    list.resize(count);
    std::sort(list.begin(), list.end());
    return list;
}

std::string SumOf(const List& list) {
    unsigned sum = 0;
    for (const int value : list) sum = sum * 31 + static_cast<unsigned>(value);
    return std::to_string(list.size()) + ' ' + std::to_string(sum);
}

using Lists = std::vector<List>;

// Several pairs of short lists, so that none is learnt by heart by the processor's branch predictor.
Lists SortedLists(std::size_t count, unsigned limit, unsigned seed) {
    Lists lists;
    for (unsigned i = 0; i == 0 || i * count < 10000; ++i) lists.push_back(Sorted(count, limit, seed + 100 * i));
    return lists;
}

void AddIntersection(const std::string& name, const Lists& a, const Lists& b) {
    const auto by_std = [](const List& first, const List& second, List& common) {
        std::set_intersection(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(common));
    };
    const auto ours = [](const List& first, const List& second, List& common) {
        Intersection(first, second, 0, common);
    };
    const auto with = [a, b](auto intersect) {
        return [=] {
            return [a, b, intersect, common = List()]() mutable -> const List& {
                common.clear();
                for (std::size_t i = 0; i < a.size(); ++i) intersect(a[i], b[i % b.size()], common);
                return common;
            };
        };
    };
    Contest contest("Intersection", name, std::to_string(a[0].size()),
                    a.size() * (a[0].size() + b[0].size()) * sizeof(int), [=] { return SumOf(with(by_std)()()); });
    contest.Add("ours", with(ours), SumOf);
    contest.Add("std", with(by_std), SumOf);
}

void AddDifference(const List& a, const List& b) {
    const auto by_std = [](List& first, const List& second) {
        List left;
        std::set_difference(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(left));
        first = std::move(left);
    };
    const auto with = [a, b](auto subtract) {
        return [=] {
            return [a, b, subtract, left = List()]() mutable -> const List& {
                left = a;
                subtract(left, b);
                return left;
            };
        };
    };
    Contest contest("Not", "even", std::to_string(a.size()), (a.size() + b.size()) * sizeof(int),
                    [=] { return SumOf(with(by_std)()()); });
    contest.Add("ours", with([](List& first, const List& second) { Not(first, second); }), SumOf);
    contest.Add("std", with(by_std), SumOf);
}

void AddPoolTests(std::size_t count) {
    const List listed = Sorted(count, 2 * static_cast<unsigned>(count), 8);
    List even(listed), odd(listed);
    for (int& value : even) value *= 2;
    for (int& value : odd) value = value * 2 + 1;
    const auto with = [=](const List& sought, bool all, bool ours) {
        return [=, sought = sought] {
            auto pool = std::make_shared<CIntArray>();
            _tIntArray range;
            pool->GenerateIntList(even, range);
            return [=] {
                const int length = static_cast<int>(sought.size());
                if (ours) return all ? pool->And(sought.data(), length, range) : pool->Or(sought.data(), length, range);
                if (all) return std::includes(sought.begin(), sought.end(), even.begin(), even.end());
                List common;
                std::set_intersection(even.begin(), even.end(), sought.begin(), sought.end(),
                                      std::back_inserter(common));
                return !common.empty();
            };
        };
    };
    const auto text_of = [](bool found) { return std::string(found ? "yes" : "no"); };
    for (const bool all : {false, true}) {
        const List& sought = all ? even : odd;
        Contest contest(all ? "CIntArray-And" : "CIntArray-Or", all ? "equal" : "disjoint", std::to_string(count),
                        2 * count * sizeof(int), [=] { return std::string(all ? "yes" : "no"); });
        contest.Add("ours", with(sought, all, true), text_of);
        contest.Add("std", with(sought, all, false), text_of);
    }
}

}  // namespace

void bench::SetUpContests() {
    for (const unsigned count : {100u, 10000u, 1000000u}) {
        AddIntersection("even-half", SortedLists(count, 2 * count, 1), SortedLists(count, 2 * count, 2));
        AddIntersection("even-few", SortedLists(count, 50 * count, 3), SortedLists(count, 50 * count, 4));
        AddDifference(Sorted(count, 2 * count, 1), Sorted(count, 2 * count, 2));
        AddPoolTests(count);
    }
    for (const unsigned factor : {10u, 100u, 1000u}) {
        const Lists rare = {Sorted(1000, 2000000, 5)}, frequent = {Sorted(1000 * factor, 2000000, 6)};
        AddIntersection("short-by-" + std::to_string(factor), rare, frequent);
        AddIntersection("long-by-" + std::to_string(factor), frequent, rare);
    }
}
