#include "gui/wx_dialogs.h"

#include "gui/accessibility.h"
#include "gui/drawings.h"
#include "gui/layout.h"
#include "gui/message_dialog.h"
#include "gui/native_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#endif

namespace veldara {

namespace {

constexpr const char* programTitle = "Veldara";
constexpr int inputLength = 260;

#ifdef __WXMSW__
UINT iconOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::critical:
        return MB_ICONERROR;
    case MessageIcon::question:
        return MB_ICONQUESTION;
    case MessageIcon::exclamation:
        return MB_ICONWARNING;
    case MessageIcon::information:
        return MB_ICONINFORMATION;
    case MessageIcon::none:
        break;
    }
    return 0;
}

// The button that Enter presses. Cancel is the second of two buttons, the third of three.
UINT defaultOf(const Message& message) {
    if (message.defaultAnswer == Answer::no) {
        return MB_DEFBUTTON2;
    }
    if (message.defaultAnswer == Answer::cancel) {
        return message.buttons == MessageButtons::yesNoCancel ? MB_DEFBUTTON3 : MB_DEFBUTTON2;
    }
    return MB_DEFBUTTON1;
}

UINT buttonsOf(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::okCancel:
        return MB_OKCANCEL;
    case MessageButtons::yesNo:
        return MB_YESNO;
    case MessageButtons::yesNoCancel:
        return MB_YESNOCANCEL;
    case MessageButtons::ok:
        break;
    }
    return MB_OK;
}

// The system's plain box: the toolkit's would make a heading of a first paragraph.
Answer showNatively(wxWindow* parent, const Message& message) {
    const wxString text = nativeText(message.text);
    const wxString title = nativeText(message.title);
    const HWND owner = parent == nullptr ? nullptr : static_cast<HWND>(parent->GetHWND());
    const UINT modality = parent == nullptr ? MB_TASKMODAL : MB_APPLMODAL;
    switch (::MessageBoxW(owner, text.wc_str(), title.wc_str(),
                          iconOf(message.icon) | buttonsOf(message.buttons) | defaultOf(message) |
                              modality)) {
    case IDYES:
        return Answer::yes;
    case IDNO:
        return Answer::no;
    case IDCANCEL:
        return message.buttons == MessageButtons::ok ? Answer::ok : Answer::cancel;
    default:
        return Answer::ok;
    }
}
#else
Answer showNatively(wxWindow* parent, const Message& message) {
    MessageDialog dialog(parent, message);
    return dialog.ask();
}
#endif

wxString wildcardOf(const std::vector<FileFilter>& filters) {
    wxString wildcard;
    for (const FileFilter& filter : filters) {
        wildcard += (wildcard.empty() ? "" : "|") + nativeText(filter.label) + "|" +
                    nativeText(filter.pattern);
    }
    return wildcard;
}

// "*.bmp" gives "bmp".
wxString extensionOf(const FileFilter& filter) {
    return nativeText(filter.pattern).AfterLast('.');
}

} // namespace

WxDialogs::WxDialogs(std::function<wxWindow*()> parent) : parent_(std::move(parent)) {}

Answer WxDialogs::showMessage(const Message& message) {
    Message titled = message;
    if (titled.title.empty()) {
        titled.title = programTitle;
    }
    return showNatively(parent_(), titled);
}

std::string WxDialogs::askText(const std::string& prompt, const std::string& title,
                               const std::string& proposed) {
    wxTextEntryDialog dialog(parent_(), nativeText(prompt), nativeText(title),
                             nativeText(proposed));
    dialog.SetName("input");
    dialog.SetIcons(programIcons());
    for (wxWindow* child : dialog.GetChildren()) {
        if (auto* field = dynamic_cast<wxTextCtrl*>(child)) {
            setFieldLength(*field, inputLength);
            wxString words = nativeText(prompt);
            words.EndsWith(":", &words);
            setAccessibleName(*field, words);
            field->Bind(wxEVT_TEXT, [field](wxCommandEvent& event) {
                enteredLine(*field);
                event.Skip();
            });
            field->CallAfter([field] { field->SelectAll(); }); // the dialog fills it as it comes up
        }
    }
    dialog.Fit();
    dialog.CentreOnParent();
    return dialog.ShowModal() == wxID_OK ? portableText(dialog.GetValue()) : std::string();
}

std::string WxDialogs::askOpenFile(const OpenFileRequest& request) {
    wxFileDialog dialog(parent_(), nativeText(request.title), nativeText(request.folder),
                        wxString(), wildcardOf(request.filters), wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    return dialog.ShowModal() == wxID_OK ? portableText(dialog.GetPath()) : std::string();
}

std::string WxDialogs::askSaveFile(const SaveFileRequest& request) {
    // For a folder that is not there the toolkit would take the one that the program was started
    // in.
    const wxString folder = nativeText(request.folder);
    wxFileName file(wxDirExists(folder) ? folder : wxGetHomeDir(), nativeText(request.defaultName));
    int filter = 0;
    for (;;) {
        wxFileDialog dialog(parent_(), nativeText(request.title), file.GetPath(),
                            file.GetFullName(), wildcardOf(request.filters),
                            wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
        // The toolkit has given the name the first type's ending, which would stay with any other.
        dialog.SetFilename(file.GetFullName());
        dialog.SetFilterIndex(filter);
        if (dialog.ShowModal() != wxID_OK) {
            return {};
        }
        file.Assign(dialog.GetPath());
        if (file.HasExt() || request.filters.empty()) {
            return portableText(file.GetFullPath());
        }
        const int last = static_cast<int>(request.filters.size()) - 1;
        filter = std::clamp(dialog.GetFilterIndex(), 0, last);
        wxFileName whole = file;
        whole.SetExt(extensionOf(request.filters[static_cast<std::size_t>(filter)]));
        std::string path = portableText(whole.GetFullPath());
        // The system's dialog has asked about the name as it was typed, not about this one.
        if (!whole.FileExists() || mayOverwrite(path)) {
            return path;
        }
    }
}

bool WxDialogs::mayOverwrite(const std::string& path) {
    return showMessage({"The file \"" + path + "\" already exists.  Do you want to replace it?", "",
                        MessageIcon::exclamation, MessageButtons::yesNo}) == Answer::yes;
}

} // namespace veldara
