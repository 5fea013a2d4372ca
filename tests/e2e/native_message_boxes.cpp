// Message boxes as the user meets them, where they are the system's own.
#include "e2e/driver.h"

#ifdef __WXMSW__

#include "gui/native_text.h"

#include <map>
#include <utility>

#include <wx/msw/wrapwin.h>

namespace veldara::test {

namespace {

// The system numbers the buttons of its message boxes; the toolkit's own dialogs have other
// numbers.
bool isMessageBox(HWND window) {
    wchar_t kind[16] = {};
    DWORD process = 0;
    GetClassNameW(window, kind, 16);
    GetWindowThreadProcessId(window, &process);
    const bool isOwnDialog = IsWindowVisible(window) != 0 && wcscmp(kind, L"#32770") == 0 &&
                             process == GetCurrentProcessId();
    return isOwnDialog &&
           (GetDlgItem(window, IDOK) != nullptr || GetDlgItem(window, IDCANCEL) != nullptr ||
            GetDlgItem(window, IDYES) != nullptr);
}

HWND messageBox() {
    HWND found = nullptr;
    const auto look = [](HWND window, LPARAM result) -> BOOL {
        if (!isMessageBox(window)) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&found));
    return found;
}

// The icon stands in a widget of the same kind, without a text.
wxString textOf(HWND box) {
    wchar_t text[4096] = {};
    HWND part = nullptr;
    while (text[0] == 0 && (part = FindWindowExW(box, part, L"Static", nullptr)) != nullptr) {
        GetWindowTextW(part, text, 4096);
    }
    return text;
}

MessageIcon iconOf(HWND box) {
    const std::pair<LPWSTR, MessageIcon> known[] = {{IDI_ERROR, MessageIcon::critical},
                                                    {IDI_QUESTION, MessageIcon::question},
                                                    {IDI_WARNING, MessageIcon::exclamation},
                                                    {IDI_INFORMATION, MessageIcon::information}};
    HWND part = nullptr;
    while ((part = FindWindowExW(box, part, L"Static", nullptr)) != nullptr) {
        const auto picture = reinterpret_cast<HICON>(SendMessageW(part, STM_GETICON, 0, 0));
        if (picture == nullptr || IsWindowVisible(part) == 0) {
            continue;
        }
        for (const auto& [identifier, icon] : known) {
            if (picture == LoadIconW(nullptr, identifier)) {
                return icon;
            }
        }
        throw DriverError("The message box has a picture that is none of the system's.");
    }
    return MessageIcon::none;
}

int buttonOf(Answer answer) {
    switch (answer) {
    case Answer::yes:
        return IDYES;
    case Answer::no:
        return IDNO;
    case Answer::cancel:
        return IDCANCEL;
    case Answer::ok:
        break;
    }
    return IDOK;
}

// A box with nothing but OK names that button as the one that cancels.
HWND buttonWindow(HWND box, Answer answer) {
    HWND button = GetDlgItem(box, buttonOf(answer));
    return button != nullptr || answer != Answer::ok ? button : GetDlgItem(box, IDCANCEL);
}

// Asked from the test's own thread: the window thread serves nothing but the box.
void waitForBox(bool wanted) {
    for (int tries = 0; tries < 2000; ++tries) {
        if ((messageBox() != nullptr) == wanted) {
            return;
        }
        Sleep(10);
    }
    throw DriverError(wanted ? "No message box comes up." : "The message box does not go.");
}

} // namespace

std::string Driver::waitForMessage() {
    waitForBox(true);
    settle();
    return portableText(textOf(messageBox()));
}

std::string Driver::messageTitle() {
    wchar_t title[256] = {};
    GetWindowTextW(messageBox(), title, 256);
    return portableText(wxString(title));
}

MessageIcon Driver::messageIcon() {
    return iconOf(messageBox());
}

std::vector<std::string> Driver::messageButtons() {
    std::map<LONG, std::string> labels; // by their places
    HWND part = nullptr;
    while ((part = FindWindowExW(messageBox(), part, L"Button", nullptr)) != nullptr) {
        wchar_t label[64] = {};
        RECT place{};
        GetWindowTextW(part, label, 64);
        GetWindowRect(part, &place);
        if (IsWindowVisible(part) != 0) {
            labels[place.left] = portableText(wxString(label));
        }
    }
    std::vector<std::string> row;
    for (const auto& [place, label] : labels) {
        row.push_back(label);
    }
    return row;
}

void Driver::answerByMouse(Answer answer) {
    waitForMessage();
    RECT place{};
    GetWindowRect(buttonWindow(messageBox(), answer), &place);
    clickScreen(wxPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2));
    waitForBox(false);
    settle();
}

void Driver::answerByKey(Answer answer) {
    waitForMessage();
    switch (answer) {
    case Answer::yes:
        key('Y', wxMOD_ALT);
        break;
    case Answer::no:
        key('N', wxMOD_ALT);
        break;
    case Answer::cancel:
        key(WXK_ESCAPE);
        break;
    case Answer::ok:
        key(WXK_RETURN);
        break;
    }
    waitForBox(false);
    settle();
}

} // namespace veldara::test

#endif
