#include "gui/desktop_app.h"

#include "gui/native_text.h"

#include <exception>
#include <iostream>
#include <string>
#include <utility>

#include <wx/filename.h>
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

// Of a photo or folder as it is named on a command line; in its own spelling where names have two.
std::string fullPath(const wxString& named) {
    wxFileName path(named);
    path.Normalize(wxPATH_NORM_ABSOLUTE | wxPATH_NORM_DOTS | wxPATH_NORM_LONG);
    return portableText(path.GetFullPath());
}

} // namespace

bool DesktopApp::OnInit() {
    SetAppName("veldara");
    SetAppDisplayName("Veldara");
    wxLog::EnableLogging(false); // the program speaks through its own message boxes
    SetExitOnFrameDelete(false); // a photo may still be decoded when the last window has gone
    program_ = std::make_unique<DesktopProgram>([this] { ExitMainLoop(); });
    CallAfter([this] {
        program_->start();
        if (argc > 1) {
            openWhenPainted(fullPath(argv[1]));
        }
    });
    return true;
}

// A message box that came before its window would be hidden behind it.
void DesktopApp::openWhenPainted(const std::string& path) {
    frmMain& main = program_->mainWindow();
    wxTopLevelWindow* native = program_->screen().nativeOf(main);
    if (native == nullptr) {
        return; // closed already
    }
    native->Bind(wxEVT_PAINT, [&main, native, path, opened = false](wxPaintEvent& event) mutable {
        event.Skip();
        if (!std::exchange(opened, true)) {
            native->CallAfter([&main, path] { main.openPath(path); });
        }
    });
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
