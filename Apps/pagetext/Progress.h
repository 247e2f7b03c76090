#ifndef PAGETEXT_PROGRESS_H
#define PAGETEXT_PROGRESS_H

// How far the run is, on one line of standard error that is written over as the pages go by, where a person is looking.

#include <chrono>
#include <cstddef>
#include <string>

namespace pagetext {

struct Standing {
    std::size_t done = 0;   // pages
    std::size_t total = 0;  // 0: not known
    double share = -1;      // of the input, from 0 to 1; negative: not known
    double seconds = 0;     // since the start
};

// The line for a terminal of so many columns, without its end: a bar, the count, pages a second, time left, and as much
// of the page's name (UTF-8, shown two columns for what is not ASCII) as there is room for.
//
//     ProgressLine({50, 200, 0.25, 10}, "a.html", 80)  // "[=====>              ]  25%  50/200  5/s  0:30 left  a.html"
std::string ProgressLine(const Standing& standing, const std::string& name, std::size_t columns);

class Progress {
public:
    // Shows nothing where `wanted` is false or standard error is no terminal that can write over a line.
    explicit Progress(bool wanted);
    // Ten times a second at most, and whenever the line was cleared.
    void Show(Standing standing, const std::string& name);
    // Before anything else is written to standard error, or to standard output where that is a terminal too.
    void Clear();
    void ClearForOutput() {
        if (shares_terminal_) Clear();
    }

private:
    using Clock = std::chrono::steady_clock;

    bool shown_ = false;
    bool shares_terminal_ = false;  // with standard output
    bool drawn_ = false;
    Clock::time_point start_ = Clock::now();
    Clock::time_point drawn_at_;
};

}  // namespace pagetext

#endif
