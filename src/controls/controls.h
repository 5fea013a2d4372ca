// The simple controls: label, frame, button, menu entry, link, check box, option button, text box,
// scroll bar, timer. Setting a property to a new value from code raises the same event as the
// user's input; setting the value that it already has raises nothing. A view (or a test) reports
// what the user did through the userXxx functions.
#pragma once

#include "controls/control.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace veldara {

class Label : public Control {
  public:
    using Control::Control;
};

class Frame : public Control {
  public:
    using Control::Control;
};

class Button : public Control {
  public:
    using Control::Control;
    Handler onClick;
    void userClick() {
        if (reachable()) {
            raise(onClick);
        }
    }
};

class MenuItem : public Control {
  public:
    using Control::Control;
    Handler onClick;
    void userClick() {
        if (reachable()) {
            raise(onClick);
        }
    }
};

// A submenu whose entries are a list that changes, such as the files opened last.
class ListMenu : public Control {
  public:
    using Control::Control;
    std::function<void(int)> onClick; // the entry's index
    Handler onOpen;                   // before the entries are shown
    const std::vector<std::string>& items() const { return items_; }
    void setItems(const std::vector<std::string>& items) { assign(items_, items, Property::items); }
    void userOpen() { raise(onOpen); }
    void userClick(int index) {
        if (reachable() && onClick && index >= 0 && index < static_cast<int>(items_.size())) {
            onClick(index);
        }
    }

  private:
    std::vector<std::string> items_;
};

// A label that opens its target (a folder or an address) when it is clicked.
class LinkLabel : public Control {
  public:
    using Control::Control;
    Handler onClick;
    const std::string& target() const { return target_; }
    void setTarget(const std::string& target) { assign(target_, target, Property::value); }
    void userClick() {
        if (reachable()) {
            raise(onClick);
        }
    }

  private:
    std::string target_;
};

class CheckBox : public Control {
  public:
    using Control::Control;
    Handler onClick;
    bool checked() const { return checked_; }
    int value() const { return checked_ ? 1 : 0; }
    void setChecked(bool checked) {
        if (assign(checked_, checked, Property::value)) {
            raise(onClick);
        }
    }
    void userSetChecked(bool checked) {
        if (reachable()) {
            setChecked(checked);
        }
    }

  private:
    bool checked_ = false;
};

// Option buttons that are joined into one group switch each other off, without an event for the one
// that goes off.
class OptionButton : public Control {
  public:
    using Control::Control;
    Handler onClick;
    static void join(const std::vector<OptionButton*>& group);
    bool selected() const { return selected_; }
    void setSelected(bool selected);
    void userSelect() {
        if (reachable()) {
            setSelected(true);
        }
    }

  private:
    bool selected_ = false;
    std::vector<OptionButton*> group_;
};

class TextBox : public Control {
  public:
    using Control::Control;
    Handler onChange;
    const std::string& text() const { return text_; }
    void setText(const std::string& text) {
        if (assign(text_, text, Property::value)) {
            raise(onChange);
        }
    }
    // Characters of forbidden() are left out, and Property::refused is announced for each attempt.
    void userSetText(const std::string& text);

    // Single-byte characters that the user cannot enter, and what the view tells the user then.
    const std::string& forbidden() const { return forbidden_; }
    const std::string& refusal() const { return refusal_; }
    void forbid(const std::string& characters, const std::string& refusal) {
        forbidden_ = characters;
        refusal_ = refusal;
    }

  private:
    std::string text_;
    std::string forbidden_;
    std::string refusal_;
};

class ScrollBar : public Control {
  public:
    using Control::Control;
    Handler onChange;
    int minimum() const { return minimum_; }
    int maximum() const { return maximum_; }
    int smallChange() const { return smallChange_; }
    int largeChange() const { return largeChange_; }
    int value() const { return value_; }
    void setRange(int minimum, int maximum, int smallChange, int largeChange);
    void setValue(int value);     // throws Error outside the range
    void userSetValue(int value); // limited to the range
    // Steps of the small or the large change, negative towards the minimum.
    void userStep(int steps) { userSetValue(value_ + steps * smallChange_); }
    void userPage(int pages) { userSetValue(value_ + pages * largeChange_); }

  private:
    int minimum_ = 0;
    int maximum_ = 100;
    int smallChange_ = 1;
    int largeChange_ = 10;
    int value_ = 0;
};

// A timer runs in the view (or by a test's clock), which calls tick() every interval() milliseconds
// while enabled().
class Timer : public Control {
  public:
    explicit Timer(std::string name = {}) : Control(std::move(name)) { setEnabled(false); }
    Handler onTick;
    int interval() const { return interval_; }
    void setInterval(int milliseconds) { assign(interval_, milliseconds, Property::range); }
    void tick() {
        if (enabled() && interval_ > 0) {
            raise(onTick);
        }
    }

  private:
    int interval_ = 0;
};

} // namespace veldara
