#include "gui/desktop_app.h"

#include "app/program_identity.h"
#include "gui/native_text.h"
#include "platform/text/version_text.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <utility>

#include <wx/cmdline.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/msgout.h>

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

// Where there is a console; on Windows a program with windows has none, and shows a box.
void say(const wxString& text) {
#ifdef __WXMSW__
    wxMessageOutputBest().Output(text);
#else
    wxMessageOutputStderr(stdout).Output(text);
#endif
}

} // namespace

bool DesktopApp::OnInit() {
    SetAppName("veldara");
    SetAppDisplayName("Veldara");
    if (!wxApp::OnInit()) { // looks at the command line
        return false;
    }
    if (answered_) {
        return true;
    }
    wxLog::EnableLogging(false); // the program speaks through its own message boxes
    SetExitOnFrameDelete(false); // a photo may still be decoded when the last window has gone
    program_ = std::make_unique<DesktopProgram>([this] { ExitMainLoop(); });
    CallAfter([this] {
        program_->start();
        if (!toOpen_.empty()) {
            openWhenPainted();
        }
    });
    return true;
}

void DesktopApp::OnInitCmdLine(wxCmdLineParser& parser) {
    parser.AddSwitch("h", "help", "say how the program is started", wxCMD_LINE_OPTION_HELP);
    parser.AddLongSwitch("version", "print the version");
    parser.AddParam("photo or folder to open", wxCMD_LINE_VAL_STRING,
                    wxCMD_LINE_PARAM_OPTIONAL | wxCMD_LINE_PARAM_MULTIPLE);
}

bool DesktopApp::OnCmdLineHelp(wxCmdLineParser& parser) {
    say(parser.GetUsageString());
    answered_ = true;
    return true;
}

bool DesktopApp::OnCmdLineParsed(wxCmdLineParser& parser) {
    if (parser.Found("version")) {
        say(nativeText(programTitle() + " " + programVersion()));
        answered_ = true;
    } else if (parser.GetParamCount() > 0) {
        toOpen_ = fullPath(parser.GetParam()); // a poster is made of one photo: the first
    }
    return true;
}

int DesktopApp::OnRun() {
    return answered_ ? 0 : wxApp::OnRun();
}

// A message box that came before its window would be hidden behind it.
void DesktopApp::openWhenPainted() {
    frmMain& main = program_->mainWindow();
    wxTopLevelWindow* native = program_->screen().nativeOf(main);
    if (native == nullptr) {
        return; // closed already
    }
    native->Bind(wxEVT_PAINT, [this, &main, native, opened = false](wxPaintEvent& event) mutable {
        event.Skip();
        if (!std::exchange(opened, true)) {
            native->CallAfter([this, &main] { main.openPath(toOpen_); });
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
        dialogs.showMessage(criticalMessage("Error", sentence));
    } else {
        std::cerr << "veldara: " << sentence << '\n';
    }
    return true;
}

} // namespace veldara
