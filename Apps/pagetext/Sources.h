#ifndef PAGETEXT_SOURCES_H
#define PAGETEXT_SOURCES_H

// Where the names of pages and the records come from, one after another: memory does not grow with their number.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagetext {

// One thing to do.
struct Item {
    std::string text;        // a name, or a line of records without its line end
    std::string fault;       // why `text`, the name of what was to be read, gives nothing; "" where all is well
    std::size_t number = 0;  // counted from 1
};

class Source {
public:
    Source() = default;
    virtual ~Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    // The next item; false at the end. One thread at a time.
    virtual bool Next(Item& item) = 0;
    // How many items there are, 0 where that is not known. Any thread.
    virtual std::size_t Total() const { return 0; }
    // How much of the input has been taken, from 0 to 1; negative where its size is not known. Any thread.
    virtual double Share() const = 0;
};

// The names of a list.
class GivenNames : public Source {
public:
    explicit GivenNames(std::vector<std::string> names) : names_(std::move(names)) {}
    bool Next(Item& item) override;
    std::size_t Total() const override { return names_.size(); }
    double Share() const override;

private:
    std::vector<std::string> names_;
    std::atomic<std::size_t> taken_ = 0;
};

// The pieces of files, each up to a byte that ends it or to the end of its file. A file that cannot be read is an item
// with a fault; so is a piece that is longer than `most_bytes`, which stays out of memory.
class PiecesOfFiles : public Source {
public:
    PiecesOfFiles(std::vector<std::string> files, char end, std::size_t most_bytes);
    ~PiecesOfFiles() override;
    bool Next(Item& item) override;
    double Share() const override;

private:
    enum class Read { kBytes, kEnd, kFailed };

    bool Open();
    Read Fill();
    void Close();
    bool NextPiece(Item& item);
    bool Fault(Item& item, int error);

    std::vector<std::string> files_;
    const char end_;
    const std::size_t most_bytes_;
    std::size_t file_ = 0;  // index of the file that is read
    int descriptor_ = -1;
    std::size_t number_ = 0;
    std::vector<char> block_;
    std::string_view rest_;          // of the block
    std::uint64_t total_bytes_ = 0;  // of all files; 0 where one has no size
    std::atomic<std::uint64_t> read_bytes_ = 0;
};

}  // namespace pagetext

#endif
