// Times what a person waits for, in the real window with a photo of 24 megapixels, and tells it as
// a ratio to one decoding of the same photo by djpeg in the same run.
//
//   tests/e2e/in_virtual_display.sh build/bin/bench_gui [PHOTO.jpg]
//
// With tests/e2e/with_print_server.sh before the program's name it prints, too.
#include "e2e/print_dialog.h"
#include "e2e/printed_job.h"
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "e2e/window_thread.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <limits>

#include <wx/slider.h>

namespace veldara::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int rounds = 5;

template <typename Act>
double milliseconds(Act act) {
    const Clock::time_point start = Clock::now();
    act();
    return Milliseconds(Clock::now() - start).count();
}

template <typename Act>
double best(Act act) {
    double shortest = std::numeric_limits<double>::max();
    for (int i = 0; i < rounds; ++i) {
        shortest = std::min(shortest, act());
    }
    return shortest;
}

double decodeByDjpeg(const fs::path& photo, const fs::path& folder) {
    const std::string command =
        "djpeg -outfile '" + (folder / "decoded.ppm").string() + "' '" + photo.string() + "'";
    return best([&] {
        return milliseconds([&] {
            if (std::system(command.c_str()) != 0) {
                throw DriverError("djpeg does not run.");
            }
        });
    });
}

class Bench {
  public:
    explicit Bench(const fs::path& photo) {
        const auto place = [&](const char* name) {
            const fs::path copy = stage_.photos() / name;
            if (photo.empty()) {
                writeJpeg(copy, 6000, 4000);
            } else {
                fs::copy_file(photo, copy);
            }
        };
        place("a.jpg");
        place("b.jpg");
        stage_.store("paperRegLine", letterLine);
        stage_.store("prefs_numTiles", "w02h01");
        stage_.store("prefs_showTiles", "1");
        stage_.store("printer", "office");
        decode_ = decodeByDjpeg(stage_.photos() / "a.jpg", stage_.home().path());
        stage_.start();
        stage_.pickPhoto("a.jpg");
    }

    void run() {
        std::cout << "one decoding by djpeg: " << decode_ << " ms\n";
        report("click to first preview", best([this] { return clickToPreview(); }));
        report("redraw while dragging", dragRedraw());
        report("zoom step", zoomStep());
        report("full-screen resampling", best([this] { return fullScreen(); }));
        report("save of 3 x 2 tiles", best([this] { return save(); }));
        if (std::getenv("VELDARA_PRINTED") != nullptr) {
            report("print of 3 x 2 sheets", best([this] { return print(); }));
            reportMemory("3 x 2 sheets");
            chooseTiles(12, 8);
            reportMemory("12 x 8 sheets");
        }
    }

  private:
    void report(const std::string& what, double time) const {
        std::cout << std::left << std::setw(24) << what << std::right << std::fixed
                  << std::setprecision(2) << std::setw(10) << time << " ms" << std::setw(10)
                  << std::setprecision(3) << time / decode_ << " of a decoding\n";
    }

    double clickToPreview() {
        const bool first = stage_.user().text("frmMain", "lstFiles") == "a.jpg";
        const int other = first ? 1 : 0;
        const wxPoint at = stage_.user().onWindowThread([other] {
            auto* list = dynamic_cast<wxListBox*>(Driver::widget("frmMain", "lstFiles"));
            int y = 1;
            while (list->HitTest(wxPoint(12, y)) != other && y < list->GetClientSize().y) {
                ++y;
            }
            return list->ClientToScreen(wxPoint(12, y + 5));
        });
        hands_.moveTo(at);
        stage_.user().pause(std::chrono::milliseconds(700)); // no double click
        return milliseconds([&] {
            hands_.click();
            while (!stage_.ask([other](frmMain& main) {
                return main.lstFiles.listIndex() == other && main.bImgSelected &&
                       main.picCur.pixels();
            })) {
            }
            stage_.user().onWindowThread([] { Driver::widget("frmMain", "picCur")->Update(); });
        });
    }

    double dragRedraw() {
        constexpr int moves = 200;
        return stage_.ask([](frmMain& main) {
            wxWindow* box = Driver::widget("frmMain", "picCur");
            const int x = main.picCur.pixels()->width() / 2;
            const int y = main.picCur.pixels()->height() / 2;
            main.scrZoom.userSetValue(60);
            main.picCur.userMouseDown(MouseButton::left, x, y);
            box->Update();
            const double time = milliseconds([&] {
                for (int i = 0; i < moves; ++i) {
                    main.picCur.userMouseMove(x + i % 50, y + i % 20);
                    box->Update();
                }
            });
            main.picCur.userMouseUp(MouseButton::left, x, y);
            return time / moves;
        });
    }

    double zoomStep() {
        constexpr int steps = 100;
        return stage_.ask([](frmMain& main) {
            wxWindow* box = Driver::widget("frmMain", "picCur");
            const double time = milliseconds([&] {
                for (int i = 0; i < steps; ++i) {
                    main.scrZoom.userSetValue(100 + i);
                    box->Update();
                }
            });
            main.scrZoom.userSetValue(0);
            return time / steps;
        });
    }

    // The whole photo, but for what the tiles' shape leaves out, for the full-screen preview.
    double fullScreen() {
        return stage_.ask([](frmMain& main) {
            Picture box;
            box.setSize(1920, 1080);
            return milliseconds([&] { main.FillPreview(box); });
        });
    }

    // From the key in the print dialog until the print server has every byte.
    double print() {
        PrintDialog dialog(stage_.user());
        stage_.user().waitForWindow("frmMain");
        stage_.user().key('P', wxMOD_CONTROL);
        dialog.waitFor("office");
        const std::size_t printed = countPrinted("office");
        const std::size_t queued = countQueued();
        const double time = milliseconds([&] {
            hands_.key('P', wxMOD_ALT);
            while (countQueued() == queued) {
                stage_.user().pause(std::chrono::milliseconds(1));
            }
        });
        waitForPrinted(stage_.user(), "office", printed);
        return time;
    }

    // The jobs that the server has taken, by its own log.
    static std::size_t countQueued() {
        std::ifstream log(fs::path(std::getenv("VELDARA_PRINTED")).parent_path() / "log/error");
        std::size_t jobs = 0;
        for (std::string line; std::getline(log, line);) {
            jobs += line.find("Queued on \"office\"") != std::string::npos ? 1U : 0U;
        }
        return jobs;
    }

    void chooseTiles(int wide, int high) {
        stage_.ask([=](frmMain& main) {
            main.cmbTilesWide.userSelect(wide - 1);
            main.cmbTilesHigh.userSelect(high - 1);
        });
    }

    // What printing takes beside the window and the photo in it.
    void reportMemory(const std::string& what) {
        const long before = residentKilobytes("VmRSS:");
        std::ofstream("/proc/self/clear_refs") << 5; // forgets the peak
        print();
        std::cout << "memory for " << what << ": " << (residentKilobytes("VmHWM:") - before) / 1024
                  << " MB\n";
    }

    static long residentKilobytes(const std::string& name) {
        std::ifstream status("/proc/self/status");
        std::string word;
        while (status >> word && word != name) {
        }
        long kilobytes = 0;
        status >> kilobytes;
        return kilobytes;
    }

    double save() {
        Driver& user = stage_.user();
        fs::remove_all(stage_.photos() / "a_poster_images");
        fs::remove_all(stage_.photos() / "b_poster_images");
        user.click("frmMain", "cmdSaveNow");
        user.waitForWindow("frmSaveTiles");
        const wxSize size = user.sizeOf("frmSaveTiles", "cmdSaveNow");
        hands_.moveTo(user.onWindowThread([size] {
            return Driver::widget("frmSaveTiles", "cmdSaveNow")
                ->ClientToScreen(wxPoint(size.x / 2, size.y / 2));
        }));
        user.pause(std::chrono::milliseconds(700));
        const double time = milliseconds([&] {
            hands_.click();
            while (!user.isShown("frmSimpleMsg")) {
            }
        });
        user.click("frmSimpleMsg", "cmdOk");
        user.waitForWindowToGo("frmSimpleMsg");
        return time;
    }

    Stage stage_;
    Hands hands_;
    double decode_ = 0;
};

} // namespace

} // namespace veldara::test

int main(int argc, char** argv) {
    const std::filesystem::path photo = argc > 1 ? argv[1] : "";
    return veldara::test::runBesideWindows(argc, argv, [photo] {
        try {
            veldara::test::Bench(photo).run();
            return 0;
        } catch (const std::exception& error) {
            std::cerr << "bench_gui: " << error.what() << '\n';
            return 1;
        }
    });
}
