#include "platform/text/path_text.h"
#include "soak/photos.h"
#include "soak/user.h"
#include "support/disk_file_system.h"
#include "support/test_platform.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <functional>
#include <iterator>
#include <thread>

#include <malloc.h>
#include <unistd.h>
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Of the sanitizers' library; gcc ships the function without its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace veldara::test {
namespace {

// Work runs on a thread of its own, as in the program, and the user does not wait for its end.
class ThreadedPump : public EventPump {
  public:
    explicit ThreadedPump(RandomUser& user) : user_(user) {}

    void doEvents() override { user_.tickProgress(); }

    void runWhileServing(const std::function<void()>& work) override {
        std::exception_ptr failure;
        std::thread thread([&] {
            try {
                work();
            } catch (...) {
                failure = std::current_exception();
            }
        });
        ++depth_;
        if (depth_ < 3 && user_.pick(8) == 0) {
            user_.actOnce();
        }
        --depth_;
        thread.join();
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

  private:
    RandomUser& user_;
    int depth_ = 0;
};

// In KiB. The bytes that the program holds say whether it leaks; the pages that it occupies say
// what the allocator keeps.
struct MemoryFigure {
    long held = 0;
    long resident = 0;
};

MemoryFigure memoryNow() {
    malloc_trim(0); // what the allocator keeps for later is not occupied
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const std::size_t held = __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 heap = mallinfo2();
    const std::size_t held = heap.uordblks + heap.hblkhd;
#endif
    return {static_cast<long>(held / 1024), resident * sysconf(_SC_PAGESIZE) / 1024};
}

long median(std::vector<long> figures) {
    const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::nth_element(figures.begin(), middle, figures.end());
    return *middle;
}

// One figure for every 50 photos.
class MemoryLog {
  public:
    static constexpr int photosPerFigure = 50;

    void note(int photos, int saves) {
        const MemoryFigure now = memoryNow();
        figures_.push_back(now);
        std::printf("%6d photos, %5d saves: %7ld KiB held, %7ld KiB resident\n", photos, saves,
                    now.held, now.resident);
        std::fflush(stdout);
    }

    // The middle value of the later half against that of the earlier half, the first 50 photos left
    // out. The same photo is loaded whenever a figure is taken, so what differs between two is the
    // preview's size (at most 2 MiB) and what the threads' caches hold of small blocks.
    bool grows() const {
        const std::size_t half = figures_.empty() ? 0 : (figures_.size() - 1) / 2;
        if (half < 5) {
            return false; // too short a day to tell
        }
        const auto middleOf = [this, half](std::size_t first) {
            std::vector<long> held;
            for (std::size_t i = first; i < first + half; ++i) {
                held.push_back(figures_[i].held);
            }
            return median(std::move(held));
        };
        const long early = middleOf(1);
        const long late = middleOf(figures_.size() - half);
        std::printf("held in the middle: %ld KiB early, %ld KiB late\n", early, late);
        return late > early + 1024;
    }

  private:
    std::vector<MemoryFigure> figures_;
};

// What the fakes note down is the tests' memory, not the program's.
void forgetNotes(TestPlatform& fakes, DiskFileSystem& files) {
    fakes.dialogs.messages.clear();
    fakes.dialogs.textRequests.clear();
    fakes.registry.log.clear();
    fakes.launcher.log.clear();
    fakes.specialFolders.asked.clear();
    files.spaceAskedOf.clear();
}

int runDay(int seconds, unsigned seed) {
    const TempFolder disk = TempFolder::inMemory();
    const int kinds = writePhotos(disk.path());
    TestPlatform fakes(platformSeparator);
    DiskFileSystem files;
    DiskDrives drives(disk.path());
    RandomUser user(seed);
    ThreadedPump pump(user);
    Platform platform{
        fakes.registry, files,       fakes.specialFolders, drives,         fakes.dialogs,
        fakes.launcher, pump,        fakes.clock,          fakes.printing, {},
        disk.text(),    disk.text(), "index.html"};
    fakes.registry.putText(preferencesKey, "last_folder", disk.text());
    frmMain main(platform, user, loadImage);
    main.picCur.setSize(300, 200);
    main.imgArrow.setSize(100, 100);
    main.load();
    user.sitDown(main);

    MemoryLog log;
    int photos = 0;
    int refused = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        user.choosePhoto();
        refused += main.bImgSelected ? 0 : 1;
        if (++photos % MemoryLog::photosPerFigure == 0) {
            main.lstFiles.userClick(0);
            log.note(photos, user.saves());
        }
        for (int acts = user.pick(12); acts > 0; --acts) {
            user.actOnce();
            fakes.clock.now += 1;
            user.tickProgress();
        }
        forgetNotes(fakes, files);
    }
    const bool listed = main.lstFiles.count() == kinds;
    main.unload();
    std::printf("%d photos of %d kinds loaded, %d of them refused; %d saves\n", photos, kinds,
                refused, user.saves());
    if (photos == 0 || !listed) {
        std::puts("the photos are not there");
        return 1;
    }
    if (log.grows()) {
        std::puts("memory grows");
        return 1;
    }
    return 0;
}

} // namespace
} // namespace veldara::test

int main(int count, char** arguments) {
    if (count < 2) {
        std::puts("usage: soak SECONDS [SEED]");
        return 2;
    }
    const unsigned seed = count > 2 ? static_cast<unsigned>(std::atoi(arguments[2])) : 20260721U;
    try {
        return veldara::test::runDay(std::atoi(arguments[1]), seed);
    } catch (const std::exception& failure) {
        std::puts(failure.what());
        return 1;
    }
}
