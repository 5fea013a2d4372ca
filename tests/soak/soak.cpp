#include "platform/text/path_text.h"
#include "soak/photos.h"
#include "soak/user.h"
#include "support/disk_file_system.h"
#include "support/test_platform.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <iterator>
#include <thread>

#include <malloc.h>
#include <unistd.h>

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

long memoryInUse() {
#ifdef __GLIBC__
    malloc_trim(0); // what the allocator keeps for later is not in use
#endif
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

// One figure for every 50 photos.
class MemoryLog {
  public:
    void photoLoaded(int saves) {
        if (++photos_ % 50 == 0) {
            figures_.push_back(memoryInUse());
            std::printf("%5d photos, %4d saves: %7ld KiB\n", photos_, saves, figures_.back());
            std::fflush(stdout);
        }
    }

    // The last third compared with the first after the first 50 photos. A tenth and 8 MiB are what
    // the chance of the last photo's size makes of it.
    bool grows() const {
        const std::size_t third = figures_.empty() ? 0 : (figures_.size() - 1) / 3;
        if (third == 0) {
            return false; // too short a day to tell
        }
        const auto least = [](auto from, auto to) { return *std::min_element(from, to); };
        const long early =
            least(figures_.begin() + 1, figures_.begin() + 1 + static_cast<std::ptrdiff_t>(third));
        const long late =
            least(figures_.end() - static_cast<std::ptrdiff_t>(third), figures_.end());
        return late > early + early / 10 + 8192;
    }
    int photos() const { return photos_; }

  private:
    int photos_ = 0;
    std::vector<long> figures_;
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
    Platform platform{fakes.registry, files,       fakes.specialFolders, drives, fakes.dialogs,
                      fakes.launcher, pump,        fakes.clock,          {},     disk.text(),
                      disk.text(),    "index.html"};
    fakes.registry.putText(preferencesKey, "last_folder", disk.text());
    frmMain main(platform, user, loadImage);
    main.picCur.setSize(300, 200);
    main.imgArrow.setSize(100, 100);
    main.load();
    user.sitDown(main);

    MemoryLog log;
    int refused = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        user.choosePhoto();
        refused += main.bImgSelected ? 0 : 1;
        log.photoLoaded(user.saves());
        for (int acts = user.pick(12); acts > 0; --acts) {
            user.actOnce();
            fakes.clock.now += 1;
            user.tickProgress();
        }
        forgetNotes(fakes, files);
    }
    const bool listed = main.lstFiles.count() == kinds;
    main.unload();
    std::printf("%d photos of %d kinds loaded, %d of them refused; %d saves\n", log.photos(), kinds,
                refused, user.saves());
    if (log.photos() == 0 || !listed || log.grows()) {
        std::puts(log.grows() ? "memory grows" : "the photos are not there");
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
    return veldara::test::runDay(std::atoi(arguments[1]), seed);
}
