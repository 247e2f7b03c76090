// The main function of every benchmark program: Google Benchmark's options and --texts=FOLDER.

#include <algorithm>
#include <cstring>
#include <iostream>
#include <string>

#include "Common/Contest.h"

namespace {

int wrong_answers = 0;

}  // namespace

void bench::ReportWrongAnswer(const std::string& name) {
    std::cerr << name << ": wrong answer\n";
    ++wrong_answers;
}

int main(int argc, char** argv) {
    constexpr char kTexts[] = "--texts=";
    char** const end = std::remove_if(argv + 1, argv + argc, [&](const char* argument) {
        if (std::strncmp(argument, kTexts, sizeof kTexts - 1) != 0) return false;
        bench::TakeTextsFrom(argument + sizeof kTexts - 1);
        return true;
    });
    argc = static_cast<int>(end - argv);
    benchmark::AddCustomContext("compiler", UTILITY_BENCHMARK_COMPILER);
    benchmark::AddCustomContext("flags", UTILITY_BENCHMARK_FLAGS);
    bench::SetUpContests();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return wrong_answers == 0 ? 0 : 1;
}
