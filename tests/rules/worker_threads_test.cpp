// The threads that make tiles: as many as are asked for, or as many as the machine allows.
#include "output/worker_threads.h"
#include "platform/error.h"

#include <atomic>
#include <system_error>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

void joinAll(std::vector<std::thread>& workers) {
    for (std::thread& worker : workers) {
        worker.join();
    }
}

// A thread takes a copy of its work, so work that cannot be copied is a thread that cannot be
// started.
class Work {
  public:
    Work(std::atomic<int>& done, int& startable) : done_(&done), startable_(&startable) {}
    Work(const Work& other) : done_(other.done_), startable_(other.startable_) {
        if ((*startable_)-- == 0) {
            throw std::system_error(
                std::make_error_code(std::errc::resource_unavailable_try_again));
        }
    }
    Work(Work&&) = default;
    Work& operator=(const Work&) = delete;
    Work& operator=(Work&&) = delete;
    ~Work() = default;

    void operator()() const { ++*done_; }

  private:
    std::atomic<int>* done_;
    int* startable_;
};

class WorkerThreads : public testing::Test {
  protected:
    void start(std::size_t count, int startable) {
        const std::function<void()> work = Work(done, left); // takes a copy
        left = startable;
        startWorkers(workers, count, work);
    }

    std::vector<std::thread> workers;
    std::atomic<int> done{0};
    int left = 1;
};

TEST_F(WorkerThreads, AreAsManyAsAskedFor) {
    start(3, 100);
    EXPECT_EQ(workers.size(), 3U);
    joinAll(workers);
    EXPECT_EQ(done, 3);
}

TEST_F(WorkerThreads, AreAddedToThoseThatAreThere) {
    start(1, 100);
    start(2, 100);
    EXPECT_EQ(workers.size(), 3U);
    joinAll(workers);
    EXPECT_EQ(done, 3);
}

TEST_F(WorkerThreads, AreFewerWhenTheMachineAllowsNoMore) {
    start(3, 2);
    EXPECT_EQ(workers.size(), 2U);
    joinAll(workers);
    EXPECT_EQ(done, 2);
}

TEST_F(WorkerThreads, WithoutAnyThereAreNoTiles) {
    try {
        start(3, 0);
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "The machine has no thread left to make the tiles with.");
    }
    EXPECT_TRUE(workers.empty());
}

} // namespace
} // namespace veldara::test
