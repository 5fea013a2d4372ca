#include "gui/desktop_app.h"

#include <exception>
#include <iostream>
#include <string>

#include <wx/log.h>

namespace veldara {

namespace {

// The sentence of the exception that is being handled.
std::string currentSentence() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "There is not enough memory for this.";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "An error of an unknown kind has occurred.";
    }
}

} // namespace

bool DesktopApp::OnInit() {
    SetAppName("veldara");
    SetAppDisplayName("Veldara");
    wxLog::EnableLogging(false); // the program speaks through its own message boxes
    SetExitOnFrameDelete(false); // a photo may still be decoded when the last window has gone
    program_ = std::make_unique<DesktopProgram>([this] { ExitMainLoop(); });
    CallAfter([this] { program_->start(); });
    return true;
}

int DesktopApp::OnExit() {
    program_.reset();
    return wxApp::OnExit();
}

bool DesktopApp::OnExceptionInMainLoop() {
    const std::string sentence = currentSentence();
    if (program_) {
        WxDialogs dialogs([this] { return program_->screen().dialogParent(); });
        dialogs.showMessage({sentence, "Error", MessageIcon::critical, MessageButtons::ok});
    } else {
        std::cerr << "veldara: " << sentence << '\n';
    }
    return true;
}

} // namespace veldara
