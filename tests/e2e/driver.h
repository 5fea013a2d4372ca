// Plays the user at the real program: moves the real mouse pointer, clicks and types at real
// windows, and reads what stands in them. A test runs on a thread of its own; whatever touches a
// window is done on the window thread, also while a dialog or a long run has the event loop.
#pragma once

#include "e2e/hands.h"
#include "platform/dialogs.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include <wx/app.h>
#include <wx/gdicmn.h>
#include <wx/toplevel.h>

namespace veldara::test {

using Milliseconds = std::chrono::duration<double, std::milli>;

// What the user wanted to do could not be done.
class DriverError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Driver {
  public:
    // Runs an act on the window thread and hands back what it returns or throws.
    template <typename Act>
    auto onWindowThread(Act act) -> std::invoke_result_t<Act> {
        using Result = std::invoke_result_t<Act>;
        auto task = std::make_shared<std::packaged_task<Result()>>(std::move(act));
        std::future<Result> result = task->get_future();
        wxTheApp->CallAfter([task] { (*task)(); });
        if (result.wait_for(std::chrono::seconds(60)) != std::future_status::ready) {
            throw DriverError("The window thread does not answer.");
        }
        return result.get();
    }

    // Waits until the test, run on the window thread, holds. Throws DriverError after the time.
    void waitUntil(const std::string& what, const std::function<bool()>& test);
    void pause(std::chrono::milliseconds time);

    // Windows and their widgets by name ("frmMain", "cmdSaveNow"); called on the window thread
    // only. Null where there is none that is shown.
    static wxTopLevelWindow* window(const std::string& name);
    static wxWindow* widget(const std::string& window, const std::string& name);

    bool isShown(const std::string& window);
    bool isEnabled(const std::string& window, const std::string& name);
    bool hasFocus(const std::string& window, const std::string& name);
    // The name of the widget that has the keyboard; "(list)" for a drop-down list, whose focus some
    // desktops keep to themselves.
    std::string focused();
    void waitForWindow(const std::string& name);
    void waitForWindowToGo(const std::string& name);
    // Escape, until the window is gone and the one behind it has the keyboard.
    void leaveByEscape(const std::string& name, const std::string& behind = "frmMain");
    // The label or the value of a widget; the chosen entry's text of a list.
    std::string text(const std::string& window, const std::string& name);
    std::string title(const std::string& window);
    bool isChecked(const std::string& window, const std::string& name);

    // The mouse
    void click(const std::string& window, const std::string& name);
    void clickAt(const std::string& window, const std::string& name, wxPoint inWidget);
    void doubleClickAt(const std::string& window, const std::string& name, wxPoint inWidget);
    void rightClick(const std::string& window, const std::string& name);
    void pointAt(const std::string& window, const std::string& name, wxPoint inWidget);
    void drag(const std::string& window, const std::string& name, wxPoint from, wxPoint to);
    // From one place of the screen to another, in its pixels.
    void dragScreen(wxPoint start, wxPoint end);
    // From a place on the screen, in its pixels, into the middle of a widget, even of one that a
    // dialog keeps the mouse from.
    void dragInto(wxPoint from, const std::string& window, const std::string& name);
    // Holds the button down while something else is done.
    void press(const std::string& window, const std::string& name, wxPoint inWidget,
               const std::function<void()>& meanwhile);
    // Turns the wheel over a widget; away from the user is positive.
    void turnWheel(const std::string& window, const std::string& name, int notches);
    void clickMenu(const std::string& window, int menu, int entry);
    // entry: counted from 0, with separators.
    bool menuEntryIsEnabled(const std::string& window, int menu, int entry);
    void clickListEntry(const std::string& window, const std::string& name,
                        const std::string& entry);
    void openFolderEntry(const std::string& window, const std::string& name,
                         const std::string& folder);
    // Opens the drop-down list with the mouse and goes to the entry.
    void choose(const std::string& window, const std::string& name, int entry);
    // Drags the thumb of a slider to a value, as near as the pointer gets.
    void dragSlider(const std::string& window, const std::string& name, int value);
    wxSize sizeOf(const std::string& window, const std::string& name);
    void closeByCloseBox(const std::string& window);

    // The keyboard, of whichever window has it: where a dialog has just gone, waitForWindow() comes
    // first, for a key that is struck before the window behind has the keyboard again is lost.
    void key(int keyCode, int modifiers = 0);
    // The same key again and again, faster than the program may be.
    void keys(int keyCode, int times);
    void type(const std::string& text);
    // Replaces the text of the field that has the keyboard.
    void retype(const std::string& text);
    // Brings a text to the clipboard, as another program does.
    void copy(const std::string& text);

    // Message boxes and the input box
    std::string waitForMessage(); // the text of the box that is up
    std::string messageTitle();
    MessageIcon messageIcon(); // by what is seen; none where no icon is
    // The labels of its buttons from left to right, with "&" before their letters.
    std::vector<std::string> messageButtons();
    void answerByMouse(Answer answer);
    void answerByKey(Answer answer);

    // The text on the clipboard, and the name of the mouse pointer as the display shows it.
    std::string clipboard();
    std::string pointerName() const { return hands_.pointerName(); }

    // The tool tip that is on the screen; empty: there is none.
    std::string shownToolTip();
    // Rests with the pointer over a widget until that tool tip is on the screen.
    void waitForToolTip(const std::string& window, const std::string& name, wxPoint inWidget,
                        const std::string& words);

    // A dialog of the system's, which the toolkit cannot be asked about: waits until one with that
    // title has the keyboard.
    void waitForSystemDialog(const std::string& title);

    // Milliseconds from a click on a button of the main window, or from Enter on an entry of its
    // menu, until the other window is up and answers.
    double timeToOpenByClick(const std::string& window, const std::string& button);
    double timeToOpenByMenu(const std::string& window, int menu, int entry);

  private:
    // In pixels of the screen; the first waits until the widget can be used.
    wxPoint screenPoint(const std::string& window, const std::string& name, wxPoint inWidget);
    static wxPoint screenPointNow(const std::string& window, const std::string& name,
                                  wxPoint inWidget);
    void clickScreen(wxPoint at);
    void waitForDisplay(const std::string& what, const std::function<bool()>& test);
    void waitForList(bool open);
    void goToMenuEntry(const std::string& window, int menu, int entry);
    double timeToOpen(const std::string& window, const std::function<void()>& act);
    void settle();

    Hands hands_;
    wxPoint lastClick_{-1, -1};
    std::chrono::steady_clock::time_point lastClickTime_;
};

} // namespace veldara::test
