#ifndef UTILITY_BENCHMARKS_CONTEST_H
#define UTILITY_BENCHMARKS_CONTEST_H

// One operation on one text, done by several contenders, each of which must give the right answer before it is timed.
//
// Names are `operation/text/size/contender`, from which the scripts work out ratios: "ours" against each of "icu",
// "iconv", "libc", "std", "memcpy" and whatever else stands in that place.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "Common/Texts.h"

namespace bench {

// Makes the program fail in the end.
void ReportWrongAnswer(const std::string& name);

// Passes what a contender worked out to the optimiser's blind spot.
template <typename T>
void Keep(T&& value) {
    benchmark::DoNotOptimize(value);
    benchmark::ClobberMemory();
}

class Contest {
public:
    // `bytes` of work are done by each run. `right_answer` is called once, when the first contender starts.
    Contest(std::string operation, std::string text, std::string size, std::size_t bytes,
            std::function<std::string()> right_answer)
        : name_(operation + '/' + text + '/' + size + '/'), bytes_(bytes), answer_(std::make_shared<Answer>()) {
        answer_->make = std::move(right_answer);
    }
    Contest(std::string operation, Kind kind, std::size_t size, std::size_t bytes,
            std::function<std::string()> right_answer)
        : Contest(std::move(operation), NameOf(kind), NameOfSize(size), bytes, std::move(right_answer)) {}

    // `make()` is called before the timing and gives the function to time, whose buffers it owns; `answer()` is called
    // on that function's result after one run.
    //
    //     contest.Add("ours", [] { return [buffer = …]() mutable { …; return std::string_view(…); }; });
    //
    // The result, whatever its type, is turned into a string by `text_of` and compared with the right answer.
    template <typename Make, typename TextOf>
    Contest& Add(const std::string& contender, Make make, TextOf text_of) {
        const std::string name = name_ + contender;
        const auto answer = answer_;
        const std::size_t bytes = bytes_;
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
            auto run = make();
            if (text_of(run()) != answer->Get()) {
                ReportWrongAnswer(name);
                state.SkipWithError("wrong answer");
                return;
            }
            for (auto _ : state) Keep(run());
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
        });
        return *this;
    }
    // For a result that a string can be made of.
    template <typename Make>
    Contest& Add(const std::string& contender, Make make) {
        return Add(contender, make, [](const auto& result) { return std::string(result); });
    }

private:
    struct Answer {
        std::function<std::string()> make;
        std::string text;
        const std::string& Get() {
            if (make) text = std::exchange(make, nullptr)();
            return text;
        }
    };

    std::string name_;
    std::size_t bytes_;
    std::shared_ptr<Answer> answer_;
};

// Each benchmark program defines this one function, which sets up its contests.
void SetUpContests();

// The bytes at `data` as a result.
template <typename T>
std::string_view BytesAt(const T* data, std::size_t bytes) {
    return {reinterpret_cast<const char*>(data), bytes};
}

}  // namespace bench

#endif
