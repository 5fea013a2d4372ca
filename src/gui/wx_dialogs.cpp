#include "gui/wx_dialogs.h"

#include "gui/drawings.h"
#include "gui/layout.h"
#include "gui/message_dialog.h"
#include "gui/native_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>

namespace veldara {

namespace {

constexpr const char* programTitle = "Veldara";
constexpr int inputLength = 260;

#ifdef __WXMSW__
long styleOf(const Message& message) {
    long style = wxCENTRE;
    switch (message.icon) {
    case MessageIcon::critical:
        style |= wxICON_ERROR;
        break;
    case MessageIcon::question:
        style |= wxICON_QUESTION;
        break;
    case MessageIcon::exclamation:
        style |= wxICON_WARNING;
        break;
    case MessageIcon::information:
        style |= wxICON_INFORMATION;
        break;
    case MessageIcon::none:
        style |= wxICON_NONE;
        break;
    }
    switch (message.buttons) {
    case MessageButtons::ok:
        return style | wxOK;
    case MessageButtons::okCancel:
        return style | wxOK | wxCANCEL;
    case MessageButtons::yesNo:
        return style | wxYES_NO;
    case MessageButtons::yesNoCancel:
        return style | wxYES_NO | wxCANCEL;
    }
    return style;
}

Answer showNatively(wxWindow* parent, const Message& message) {
    switch (wxMessageBox(nativeText(message.text), nativeText(message.title), styleOf(message),
                         parent)) {
    case wxYES:
        return Answer::yes;
    case wxNO:
        return Answer::no;
    case wxCANCEL:
        return Answer::cancel;
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

wxString wildcardOf(const SaveFileRequest& request) {
    wxString wildcard;
    for (const FileFilter& filter : request.filters) {
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
            field->SelectAll();
        }
    }
    dialog.Fit();
    dialog.CentreOnParent();
    return dialog.ShowModal() == wxID_OK ? portableText(dialog.GetValue()) : std::string();
}

std::string WxDialogs::askSaveFile(const SaveFileRequest& request) {
    wxFileDialog dialog(parent_(), nativeText(request.title), nativeText(request.folder),
                        nativeText(request.defaultName), wildcardOf(request),
                        wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK) {
        return {};
    }
    wxFileName chosen(dialog.GetPath());
    if (chosen.HasExt() || request.filters.empty()) {
        return portableText(chosen.GetFullPath());
    }
    const auto filter = static_cast<std::size_t>(std::max(0, dialog.GetFilterIndex()));
    chosen.SetExt(extensionOf(request.filters[std::min(filter, request.filters.size() - 1)]));
    const std::string path = portableText(chosen.GetFullPath());
    // The system's dialog has asked about the name as it was typed, not about this one.
    return !chosen.FileExists() || mayOverwrite(path) ? path : std::string();
}

bool WxDialogs::mayOverwrite(const std::string& path) {
    return showMessage({"The file \"" + path + "\" already exists.  Do you want to replace it?", "",
                        MessageIcon::exclamation, MessageButtons::yesNo}) == Answer::yes;
}

} // namespace veldara
