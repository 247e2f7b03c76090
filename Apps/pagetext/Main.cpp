// pagetext: pages of unknown encoding in, clean text out.

#include <TextKit.h>

#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <optional>

#include "Options.h"
#include "OrderedJobs.h"
#include "Pages.h"
#include "Progress.h"
#include "Records.h"
#include "Sources.h"

namespace pagetext {

namespace {

constexpr std::size_t kMostNameBytes = 1 << 16;

std::unique_ptr<Source> SourceOf(const Options& options) {
    if (options.records) return std::make_unique<PiecesOfFiles>(options.files, '\n', kMostRecordBytes);
    if (options.name_list)
        return std::make_unique<PiecesOfFiles>(std::vector<std::string>{*options.name_list}, '\0', kMostNameBytes);
    return std::make_unique<GivenNames>(options.files);
}

// What standard output and standard error get for an item; may run in several threads.
class Worker {
public:
    Worker(const Options& options, const textkit::CodeMaps& maps) : options_(options), maps_(maps) {}

    Outcome operator()(const Item& item) const {
        if (options_.records && (item.fault.empty() || item.number > 0)) {
            const std::string answer = item.fault.empty() ? AnswerRecord(item.text, item.number, options_, maps_)
                                                          : RefuseRecord(item.number, item.fault);
            return {"record " + std::to_string(item.number), answer + '\n', {}};
        }
        if (!item.fault.empty()) return {Printable(item.text), {}, {item.fault}};
        if (options_.name_list && item.text.empty()) return Refuse(item, "the name of a page is empty");
        if (options_.name_list == "-" && item.text == "-")
            return Refuse(item, "standard input holds the names already");
        return ConvertPage(item.text, options_, maps_);
    }

private:
    // A name in a list that no page can have.
    Outcome Refuse(const Item& item, const std::string& reason) const {
        return {Printable(*options_.name_list), {}, {"entry " + std::to_string(item.number) + ": " + reason}};
    }

    const Options& options_;
    const textkit::CodeMaps& maps_;
};

// Writes what the pages leave behind; in one thread.
class Output {
public:
    Output(const Source& source, bool with_progress) : source_(source), progress_(with_progress) {}

    // False where standard output takes no more.
    bool Write(const Outcome& outcome) {
        ++done_;
        if (!outcome.output.empty()) {
            progress_.ClearForOutput();
            std::cout << outcome.output << std::flush;
        }
        if (!outcome.complaints.empty()) {
            progress_.Clear();
            failed_ = true;
            for (const auto& complaint : outcome.complaints)
                std::cerr << "pagetext: " << outcome.name << ": " << complaint << '\n';
        }
        progress_.Show({done_, source_.Total(), source_.Share(), 0}, outcome.name);
        return std::cout.good();
    }

    int Finish() {
        progress_.Clear();
        if (!std::cout.flush().good()) {
            std::cerr << "pagetext: standard output cannot be written\n";
            return 1;
        }
        return failed_ ? 1 : 0;
    }

private:
    const Source& source_;
    Progress progress_;
    std::size_t done_ = 0;
    bool failed_ = false;
};

int Run(const Options& options) {
    textkit::CodeMaps maps;
    if (!options.data_file.empty()) {
        const std::optional<textkit::CodeMaps> loaded = textkit::CodeMaps::Load(options.data_file);
        if (!loaded) {
            std::cerr << "pagetext: " << Printable(options.data_file) << ": no code maps there\n";
            return 1;
        }
        maps = *loaded;
    }
    const std::unique_ptr<Source> source = SourceOf(options);
    Output output(*source, options.records || options.NamesMatter());
    RunInOrder<Item>(
        options.jobs, [&](Item& item) { return source->Next(item); }, Worker(options, maps),
        [&](const Outcome& outcome) { return output.Write(outcome); });
    return output.Finish();
}

}  // namespace

}  // namespace pagetext

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    try {
        pagetext::Options options;
        if (const std::optional<int> status = pagetext::ReadArguments(argc, argv, options)) return *status;
        return pagetext::Run(options);
    } catch (const std::bad_alloc&) {
        std::cerr << "pagetext: not enough memory\n";
    } catch (const std::exception& error) {
        std::cerr << "pagetext: " << error.what() << '\n';
    }
    return 1;
}
