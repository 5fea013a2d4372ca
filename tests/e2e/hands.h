// The user's hands: what they do arrives at the display as from a real mouse and a real keyboard.
// They may be used from any thread and do not hold the window thread up, so that what is timed is
// the program and not the test.
#pragma once

#include <memory>
#include <string>

#include <wx/gdicmn.h>

namespace veldara::test {

class Hands {
  public:
    // Throws DriverError when the display takes no such input.
    Hands();
    ~Hands();
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    void moveTo(wxPoint at); // in pixels of the screen
    void press();            // the left button
    void release();
    void click();
    void doubleClick();
    void rightClick();
    void turnWheel(int notches); // away from the user is positive

    // Keys have the toolkit's codes: a capital letter, a character, or WXK_RETURN and the like.
    void key(int keyCode, int modifiers);
    void type(const std::string& ascii);

    // The title of the window that has the keyboard, also of one that is the system's own.
    std::string activeTitle() const;
    // The name of the pointer that is seen ("move", "cross"), empty where the display does not
    // tell.
    std::string pointerName() const;
    // Whether a menu or a drop-down list is open, which takes the keys.
    bool seesOpenList() const;

    // Whether there is input, or anything else from the display, that the program has not met yet.
    // Called on the window thread, and only where the windows are an X display's.
    static bool hasMoreForProgram();

  private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
};

} // namespace veldara::test
