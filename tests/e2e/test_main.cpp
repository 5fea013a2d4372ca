// The end-to-end tests' own application object: the main thread serves the windows, the tests run
// on another one.
#include <thread>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

namespace {

class TestApp : public wxApp {
  public:
    bool OnInit() override {
        wxLog::EnableLogging(false);
        SetExitOnFrameDelete(false);
        return true;
    }

    int OnRun() override {
        int result = 1;
        std::thread tests;
        CallAfter([&] {
            tests = std::thread([this, &result] {
                result = RUN_ALL_TESTS();
                CallAfter([this] { ExitMainLoop(); });
            });
        });
        MainLoop();
        tests.join();
        return result;
    }
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS(); // needs no display
    }
    wxApp::SetInstance(new TestApp);
    return wxEntry(argc, argv);
}
