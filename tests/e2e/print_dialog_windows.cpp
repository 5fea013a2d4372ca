// The print dialog of Windows. While it is up the window thread serves nothing but it, so it is
// asked from the test's own thread.
#include "e2e/print_dialog.h"

#ifdef __WXMSW__

#include "gui/native_text.h"

#include <functional>

#include <dlgs.h> // numbers of the dialog's parts
#include <wx/msw/wrapwin.h>

namespace veldara::test {

namespace {

HWND shownDialog() {
    HWND found = nullptr;
    const auto look = [](HWND window, LPARAM result) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId() || IsWindowVisible(window) == 0 ||
            GetDlgItem(window, cmb4) == nullptr || GetDlgItem(window, edt3) == nullptr) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::string textOf(HWND window) {
    wchar_t text[256] = {};
    SendMessageW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
    return portableText(wxString(text));
}

void waitUntilHolds(const std::string& what, const std::function<bool()>& test) {
    for (int tries = 0; tries < 6000; ++tries) {
        if (test()) {
            return;
        }
        Sleep(10);
    }
    throw DriverError("Timed out waiting until " + what + ".");
}

} // namespace

void PrintDialog::waitFor(const std::string& printer) {
    waitUntilHolds("the print dialog knows the printer \"" + printer + "\"", [&] {
        const HWND dialog = shownDialog();
        return dialog != nullptr && GetForegroundWindow() == dialog &&
               (printer.empty() || textOf(GetDlgItem(dialog, cmb4)) == printer);
    });
}

void PrintDialog::waitUntilGone() {
    waitUntilHolds("the print dialog is gone", [] { return shownDialog() == nullptr; });
}

void PrintDialog::printByKey() {
    user_.key(WXK_RETURN);
    waitUntilGone();
}

void PrintDialog::clickScreen(wxPoint at) {
    hands_.moveTo(at);
    hands_.click();
}

// The list of printers has the keyboard at first.
void PrintDialog::choosePrinterByKey(const std::string& name) {
    waitFor("");
    user_.type(name.substr(0, 1)); // each printer of the tests has a first letter of its own
    waitFor(name);
}

void PrintDialog::fill(int field, const std::string& text) {
    RECT place{};
    GetWindowRect(GetDlgItem(shownDialog(), field), &place);
    clickScreen(wxPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2));
    user_.key(WXK_HOME);
    user_.key(WXK_END, wxMOD_SHIFT);
    user_.type(text);
}

void PrintDialog::choosePages(const std::string& pages) {
    const std::size_t dash = pages.find('-');
    fill(edt1, pages.substr(0, dash)); // which chooses the pages, too
    fill(edt2, pages.substr(dash + 1));
}

void PrintDialog::chooseCopies(const std::string& copies) {
    fill(edt3, copies);
}

int PrintDialog::copies() {
    return static_cast<int>(GetDlgItemInt(shownDialog(), edt3, nullptr, FALSE));
}

} // namespace veldara::test

#endif
