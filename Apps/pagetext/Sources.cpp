#include "Sources.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace pagetext {

namespace {

constexpr std::size_t kBlockBytes = 1 << 16;

// How many bytes are left to read, 0 where that is not known.
std::uint64_t BytesOf(const std::string& name) {
    struct stat status = {};
    const bool standard_input = name == "-";
    if ((standard_input ? fstat(STDIN_FILENO, &status) : stat(name.c_str(), &status)) != 0) return 0;
    if (!S_ISREG(status.st_mode)) return 0;
    const off_t before = standard_input ? std::max<off_t>(lseek(STDIN_FILENO, 0, SEEK_CUR), 0) : 0;
    return static_cast<std::uint64_t>(std::max<off_t>(status.st_size - before, 0));
}

}  // namespace

bool GivenNames::Next(Item& item) {
    const std::size_t index = taken_.load();
    if (index == names_.size()) return false;
    item = {names_[index], {}, index + 1};
    taken_ = index + 1;
    return true;
}

double GivenNames::Share() const {
    return static_cast<double>(taken_) / static_cast<double>(std::max<std::size_t>(names_.size(), 1));
}

PiecesOfFiles::PiecesOfFiles(std::vector<std::string> files, char end, std::size_t most_bytes)
    : files_(std::move(files)), end_(end), most_bytes_(most_bytes), block_(kBlockBytes) {
    for (const std::string& name : files_) {
        const std::uint64_t bytes = BytesOf(name);
        if (bytes == 0) {
            total_bytes_ = 0;
            break;
        }
        total_bytes_ += bytes;
    }
}

PiecesOfFiles::~PiecesOfFiles() {
    Close();
}

double PiecesOfFiles::Share() const {
    if (total_bytes_ == 0) return -1;
    return std::min(static_cast<double>(read_bytes_) / static_cast<double>(total_bytes_), 1.0);
}

bool PiecesOfFiles::Open() {
    if (descriptor_ >= 0) return true;
    descriptor_ = files_[file_] == "-" ? STDIN_FILENO : open(files_[file_].c_str(), O_RDONLY | O_CLOEXEC);
    return descriptor_ >= 0;
}

void PiecesOfFiles::Close() {
    if (descriptor_ > STDIN_FILENO) close(descriptor_);
    descriptor_ = -1;
    rest_ = {};
}

PiecesOfFiles::Read PiecesOfFiles::Fill() {
    ssize_t bytes = 0;
    do {
        bytes = read(descriptor_, block_.data(), block_.size());
    } while (bytes < 0 && errno == EINTR);
    if (bytes <= 0) return bytes == 0 ? Read::kEnd : Read::kFailed;
    rest_ = {block_.data(), static_cast<std::size_t>(bytes)};
    read_bytes_ += rest_.size();
    return Read::kBytes;
}

// The file that is read gives nothing more, for this reason.
bool PiecesOfFiles::Fault(Item& item, int error) {
    item.text = files_[file_];
    item.fault = std::generic_category().message(error);
    Close();
    ++file_;
    return true;
}

bool PiecesOfFiles::Next(Item& item) {
    item = {};
    while (file_ < files_.size()) {
        if (!Open()) return Fault(item, errno);
        if (NextPiece(item)) return true;
        Close();
        ++file_;
    }
    return false;
}

// The next piece of the file that is open; false at its end.
bool PiecesOfFiles::NextPiece(Item& item) {
    bool too_long = false;
    bool begun = false;
    for (;;) {
        if (rest_.empty()) {
            const Read result = Fill();
            if (result == Read::kFailed) return Fault(item, errno);
            if (result == Read::kEnd && !begun) return false;
            if (result == Read::kEnd) break;
        }
        begun = true;
        const std::size_t bytes = std::min(rest_.find(end_), rest_.size());
        too_long = too_long || item.text.size() + bytes > most_bytes_;
        if (!too_long) item.text.append(rest_.substr(0, bytes));
        const bool ended = bytes < rest_.size();
        rest_.remove_prefix(bytes + (ended ? 1 : 0));
        if (ended) break;
    }
    item.number = ++number_;
    if (too_long) {
        item.text = files_[file_];
        item.fault =
            "entry " + std::to_string(item.number) + " is longer than " + std::to_string(most_bytes_) + " bytes";
    }
    return true;
}

}  // namespace pagetext
