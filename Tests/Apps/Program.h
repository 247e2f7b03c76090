#ifndef UTILITY_TESTS_PROGRAM_H
#define UTILITY_TESTS_PROGRAM_H

// pagetext as its users start it.

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace test_program {

struct Outcome {
    int status;
    std::string output;  // standard output and standard error
};

// What a command of the shell prints.
inline Outcome Shell(const std::string& command) {
    std::FILE* pipe = popen(("exec 2>&1; " + command).c_str(), "r");
    Outcome outcome{-1, {}};
    if (pipe == nullptr) return outcome;
    char block[4096];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, pipe)) > 0;) outcome.output.append(block, n);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

inline const std::string kPageText = PAGETEXT_PROGRAM " " PAGETEXT_ARGUMENTS " ";

inline Outcome PageText(const std::string& arguments, const std::string& folder = ".") {
    return Shell("cd " + folder + " && " + kPageText + arguments);
}

inline std::string Page(const std::string& name) {
    return std::string(UTILITY_TEST_SOURCE_DIR) + "/Examples/pages/" + name;
}

}  // namespace test_program

#endif
