#include "e2e/window_thread.h"

#include <iostream>
#include <thread>
#include <utility>

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

namespace veldara::test {

namespace {

class DrivenApp : public wxApp {
  public:
    explicit DrivenApp(std::function<int()> act) : act_(std::move(act)) {}

    bool OnInit() override {
        wxLog::EnableLogging(false);
        SetExitOnFrameDelete(false);
        return true;
    }

    // A failed check of the toolkit fails the run, without a dialog that nobody would answer.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                         const wxChar* condition, const wxChar* message) override {
        std::cerr << wxString(file) << ':' << line << ": " << wxString(function) << ": "
                  << wxString(condition) << ' ' << wxString(message) << '\n';
        ++failedChecks_;
    }

    int OnRun() override {
        int result = 1;
        std::thread driving;
        CallAfter([&] {
            driving = std::thread([this, &result] {
                result = act_();
                CallAfter([this] { ExitMainLoop(); });
            });
        });
        MainLoop();
        driving.join();
        return failedChecks_ > 0 ? 1 : result;
    }

  private:
    std::function<int()> act_;
    int failedChecks_ = 0;
};

} // namespace

int runBesideWindows(int argc, char** argv, std::function<int()> act) {
    wxApp::SetInstance(new DrivenApp(std::move(act))); // the toolkit deletes it
    return wxEntry(argc, argv);
}

} // namespace veldara::test
