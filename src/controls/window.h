// A window without pixels: its caption, its pointer, and when it is loaded and shown. The screen
// shows a native window for it (src/gui) or plays the user (tests).
#pragma once

#include "controls/control.h"

#include <string>
#include <utility>

namespace veldara {

class Window;

// The mouse pointers that the windows use, by their codes.
enum class Pointer { arrow = 0, crossHair = 1, move = 2, hourglass = 3 };

class Screen {
  public:
    virtual ~Screen() = default;

    // Brings a real window for the model up, or takes it down again. Called by Window only.
    virtual void show(Window& window) = 0;
    virtual void showModal(Window& window) = 0; // returns when the window is no longer visible
    virtual void hide(Window& window) = 0;

    // Ends the program at once: no window is unloaded, nothing is saved.
    virtual void endProgram() = 0;
};

class Window : public Control {
  public:
    // The name tells the windows apart ("frmMain").
    Window(std::string name, Screen& screen) : Control(std::move(name)), screen_(screen) {
        setVisible(false);
    }

    bool loaded() const { return loaded_; }

    // Loads the window: runs its load handler once, until it is unloaded.
    void load();
    // Takes it down and forgets that it was loaded: the unload handler runs first.
    void unload();

    void show();      // loads it where it is not, and shows it beside the others
    void showModal(); // the same, and returns when it has been hidden or unloaded
    void hide();

    // The user's close box (or system menu, or Escape): hides or unloads as the window decides.
    void userClose() { closeBox(); }

    Pointer pointer() const { return pointer_; }
    void setPointer(Pointer pointer) { assign(pointer_, pointer, Property::pointer); }

  protected:
    virtual void loadHandler() {}
    virtual void unloadHandler() {}
    virtual void closeBox() { unload(); }
    Screen& screen() { return screen_; }

  private:
    Screen& screen_;
    bool loaded_ = false;
    Pointer pointer_ = Pointer::arrow;
};

} // namespace veldara
