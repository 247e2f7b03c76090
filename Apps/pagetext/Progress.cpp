#include "Progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace pagetext {

namespace {

constexpr std::size_t kBarColumns = 20;

std::size_t TerminalColumns() {
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// "0:30", "12:05", "3:00:00".
std::string Time(double seconds) {
    const auto whole = static_cast<long long>(std::min(std::ceil(seconds), 1e9));
    char text[40];
    if (whole < 3600)
        std::snprintf(text, sizeof text, "%lld:%02lld", whole / 60, whole % 60);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
    return text;
}

std::string Rate(double pages_a_second) {
    char text[40];
    std::snprintf(text, sizeof text, pages_a_second < 9.95 ? "%.1f/s" : "%.0f/s", pages_a_second);
    return text;
}

std::string Bar(double share) {
    const auto full = static_cast<std::size_t>(share * kBarColumns);
    std::string bar(full, '=');
    if (full < kBarColumns) bar += '>';
    bar.resize(kBarColumns, ' ');
    char percent[16];
    std::snprintf(percent, sizeof percent, "] %3.0f%%  ", std::floor(share * 100));
    return '[' + bar + percent;
}

// As many whole characters of the text as fit.
std::string_view Clip(std::string_view text, std::size_t columns) {
    std::size_t used = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= 0x80 && byte < 0xC0) continue;  // belongs to the character before
        used += byte < 0x80 ? 1 : 2;
        if (used > columns) return text.substr(0, i);
    }
    return text;
}

}  // namespace

std::string ProgressLine(const Standing& standing, const std::string& name, std::size_t columns) {
    std::string line;
    if (standing.share >= 0) line += Bar(std::min(standing.share, 1.0));
    line += std::to_string(standing.done);
    if (standing.total > 0) line += '/' + std::to_string(standing.total);
    if (standing.seconds > 0) line += "  " + Rate(static_cast<double>(standing.done) / standing.seconds);
    if (standing.share > 0 && standing.seconds > 0)
        line += "  " + Time(standing.seconds * (1 - standing.share) / standing.share) + " left";
    // The last column stays free: some terminals go to the next line there.
    return std::string(Clip(line + "  " + name, columns > 0 ? columns - 1 : 0));
}

Progress::Progress(bool wanted) {
    const char* terminal = std::getenv("TERM");
    shown_ = wanted && isatty(STDERR_FILENO) != 0 && (terminal == nullptr || std::string_view(terminal) != "dumb");
    shares_terminal_ = shown_ && isatty(STDOUT_FILENO) != 0;
}

void Progress::Show(Standing standing, const std::string& name) {
    const Clock::time_point now = Clock::now();
    if (!shown_ || (drawn_ && now - drawn_at_ < std::chrono::milliseconds(100))) return;
    standing.seconds = std::chrono::duration<double>(now - start_).count();
    std::cerr << "\r\033[K" << ProgressLine(standing, name, TerminalColumns()) << std::flush;
    drawn_ = true;
    drawn_at_ = now;
}

void Progress::Clear() {
    if (drawn_) std::cerr << "\r\033[K" << std::flush;
    drawn_ = false;
}

}  // namespace pagetext
