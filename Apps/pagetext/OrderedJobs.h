#ifndef PAGETEXT_ORDEREDJOBS_H
#define PAGETEXT_ORDEREDJOBS_H

// Work by several threads whose results come out in the order of their items.

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace pagetext {

// Calls work(item) on each item that next(item) gives until that returns false, and emit(result) on each result, in the
// items' order, until that returns false.
//
// `next` is called by one thread at a time, `work` by as many as `jobs` says, `emit` by the calling thread. At most
// four items a thread are taken and not yet emitted. `next` may wait: what is worked out comes out meanwhile. An
// exception of any of them ends the run and reaches the caller.
template <typename Item, typename Result, typename Next, typename Work, typename Emit>
class OrderedJobs {
public:
    OrderedJobs(unsigned jobs, Next next, Work work, Emit emit)
        : jobs_(jobs), next_(std::move(next)), work_(std::move(work)), emit_(std::move(emit)), results_(jobs * 4) {}

    void Run() {
        if (jobs_ <= 1) {
            for (Item item; next_(item);)
                if (!emit_(work_(item))) return;
            return;
        }
        std::vector<std::thread> threads;
        try {
            Start(threads);
            EmitAll();
        } catch (...) {
            Fail();
        }
        Stop();
        for (std::thread& thread : threads) thread.join();
        if (failure_) std::rethrow_exception(failure_);
    }

private:
    // Where the system has no more threads, those that started do the work.
    void Start(std::vector<std::thread>& threads) {
        threads.reserve(jobs_);
        try {
            while (threads.size() < jobs_) threads.emplace_back([this] { WorkOff(); });
        } catch (const std::system_error&) {
            if (threads.empty()) throw;
        }
    }

    void WorkOff() {
        try {
            for (Item item; std::optional<std::size_t> index = Take(item);) {
                Result result = work_(item);
                const std::lock_guard<std::mutex> lock(mutex_);
                results_[*index % results_.size()] = std::move(result);
                if (*index == emitted_) ready_.notify_one();
            }
        } catch (...) {
            Fail();
        }
    }

    // The item's index; none at the end. Waits for room first; the mutex is free while `next` waits.
    std::optional<std::size_t> Take(Item& item) {
        const std::lock_guard<std::mutex> taking(taking_);
        {
            std::unique_lock<std::mutex> lock(mutex_);
            room_.wait(lock, [this] { return stopped_ || taken_ - emitted_ < results_.size(); });
            if (stopped_ || ended_) return std::nullopt;
        }
        const bool more = next_(item);
        const std::lock_guard<std::mutex> lock(mutex_);
        if (more) return taken_++;
        ended_ = true;
        ready_.notify_one();
        return std::nullopt;
    }

    void EmitAll() {
        for (;;) {
            std::optional<Result> result;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                std::optional<Result>& first = results_[emitted_ % results_.size()];
                ready_.wait(lock, [&] { return stopped_ || first || (ended_ && emitted_ == taken_); });
                if (stopped_ || !first) return;
                result.swap(first);
            }
            if (!emit_(std::move(*result))) return;
            const std::lock_guard<std::mutex> lock(mutex_);
            if (taken_ - emitted_++ == results_.size()) room_.notify_one();
        }
    }

    void Stop() {
        const std::lock_guard<std::mutex> lock(mutex_);
        stopped_ = true;
        ready_.notify_one();
        room_.notify_one();
    }

    void Fail() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            if (!failure_) failure_ = std::current_exception();
        }
        Stop();
    }

    const unsigned jobs_;
    Next next_;
    Work work_;
    Emit emit_;
    std::mutex taking_;                           // held around `next`; locked before mutex_
    std::mutex mutex_;                            // guards what follows
    std::condition_variable ready_;               // the calling thread waits for the next result in order, or the end
    std::condition_variable room_;                // the thread that takes waits for fewer items that are not emitted
    std::vector<std::optional<Result>> results_;  // of item i at i modulo the size, where it is worked out
    std::size_t taken_ = 0;
    std::size_t emitted_ = 0;
    bool ended_ = false;    // there is no next item
    bool stopped_ = false;  // nobody wants results
    std::exception_ptr failure_;
};

template <typename Item, typename Next, typename Work, typename Emit>
void RunInOrder(unsigned jobs, Next next, Work work, Emit emit) {
    using Result = decltype(work(std::declval<Item&>()));
    OrderedJobs<Item, Result, Next, Work, Emit>(jobs, std::move(next), std::move(work), std::move(emit)).Run();
}

}  // namespace pagetext

#endif
