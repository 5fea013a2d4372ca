// Message boxes as the user meets them, where they are the system's own.
#include "e2e/driver.h"

#ifdef __WXMSW__

#include "gui/native_text.h"

#include <wx/msw/wrapwin.h>
#include <wx/uiaction.h>

namespace veldara::test {

namespace {

constexpr int textControl = 0xFFFF;

HWND messageBox() {
    HWND found = nullptr;
    const auto isOurs = [](HWND window, LPARAM result) -> BOOL {
        wchar_t kind[16] = {};
        DWORD process = 0;
        GetClassNameW(window, kind, 16);
        GetWindowThreadProcessId(window, &process);
        if (IsWindowVisible(window) != 0 && wcscmp(kind, L"#32770") == 0 &&
            process == GetCurrentProcessId() && GetDlgItem(window, textControl) != nullptr) {
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        }
        return TRUE;
    };
    EnumWindows(isOurs, reinterpret_cast<LPARAM>(&found));
    return found;
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

} // namespace

std::string Driver::waitForMessage() {
    waitUntil("a message box is up", [] { return messageBox() != nullptr; });
    settle();
    return onWindowThread([] {
        wchar_t text[4096] = {};
        GetDlgItemTextW(messageBox(), textControl, text, 4096);
        return portableText(wxString(text));
    });
}

void Driver::answerByMouse(Answer answer) {
    waitForMessage();
    const wxPoint at = onWindowThread([answer] {
        RECT place{};
        GetWindowRect(buttonWindow(messageBox(), answer), &place);
        return wxPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    });
    clickScreen(at);
    waitUntil("the message box is gone", [] { return messageBox() == nullptr; });
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
    waitUntil("the message box is gone", [] { return messageBox() == nullptr; });
}

} // namespace veldara::test

#endif
