#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace Repository::Documents {

// Hands items in their order from the thread that makes them to what is done with them, which is done on a
// second thread as soon as there are many, so that both go on at once. With few items, a single processor or
// no further thread, it is done at once. For one thread; the consumer is never called by two at once.
template <typename Item>
class Pipeline
{
public:
    // False to hear of no more items. What it throws, the maker gets.
    using Consumer = std::function<bool(Item& item)>;

    explicit Pipeline(Consumer itemConsumer) : consume(std::move(itemConsumer)) {}

    ~Pipeline()
    {
        if (thread.joinable())
            end();
    }
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    // Where the next item is to be made, in place of a former one.
    Item& next() { return isThreaded ? batches[made % batchCount][filled] : single; }

    // Hands that over. False when no more are wanted.
    bool put()
    {
        if (!isThreaded)
            return putAlone();
        return ++filled < batchSize || handOver();
    }

    // When all are handed over: waits until they are consumed.
    void finish()
    {
        if (thread.joinable()) {
            handOver();
            end();
        }
        if (failure)
            std::rethrow_exception(std::exchange(failure, nullptr));
    }

private:
    // To wake a thread costs as much as a hundred items: one that waits is woken when half of the batches are
    // ready for it.
    static constexpr std::size_t batchCount = 16;
    static constexpr std::size_t batchSize = 256;
    static constexpr std::size_t few = 4096; // take less time than a thread is worth

    bool putAlone()
    {
        if (isStopped || !consume(single)) {
            isStopped = true;
            return false;
        }
        if (++alone == few && std::thread::hardware_concurrency() > 1)
            start();
        return true;
    }

    void start()
    {
        try {
            for (std::vector<Item>& batch : batches)
                batch.resize(batchSize);
            thread = std::thread([this] { run(); });
            isThreaded = true;
        } catch (const std::system_error&) { // it goes on alone
        } catch (const std::bad_alloc&) {
        }
    }

    bool handOver()
    {
        std::unique_lock lock(mutex);
        sizes[made % batchCount] = filled;
        filled = 0;
        ++made;
        if (made - consumed >= batchCount / 2)
            changed.notify_all();
        changed.wait(lock, [this] { return made - consumed < batchCount; });
        return !isStopped;
    }

    void end()
    {
        {
            const std::lock_guard lock(mutex);
            isAtEnd = true;
        }
        changed.notify_all();
        thread.join();
    }

    void run()
    {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return made > consumed || isAtEnd; });
            if (made == consumed)
                return;
            const bool isWanted = !isStopped;
            lock.unlock();
            const bool goesOn = isWanted && consumeBatch(consumed % batchCount);
            lock.lock();
            isStopped = !goesOn;
            ++consumed;
            if (made - consumed <= batchCount / 2)
                changed.notify_all();
        }
    }

    bool consumeBatch(std::size_t number)
    {
        try {
            for (std::size_t i = 0; i < sizes[number]; ++i) {
                if (!consume(batches[number][i]))
                    return false;
            }
            return true;
        } catch (...) {
            failure = std::current_exception();
            return false;
        }
    }

    const Consumer consume;
    Item single; // while there is no thread
    std::size_t alone = 0;
    bool isThreaded = false;
    std::size_t filled = 0; // of the batch that is being made

    std::thread thread;
    std::mutex mutex; // guards what follows, but for batches: each is of the maker until it is handed over
    std::condition_variable changed;
    std::array<std::vector<Item>, batchCount> batches;
    std::array<std::size_t, batchCount> sizes{};
    std::size_t made = 0; // batches
    std::size_t consumed = 0;
    bool isAtEnd = false;
    bool isStopped = false;
    std::exception_ptr failure; // read when the thread is at its end
};

} // namespace Repository::Documents
