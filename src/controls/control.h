// What every control has, and how a view follows it. A control here is a holder of properties with
// events; it knows no pixels, so that every handler of the program can be tested without a display.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace veldara {

// What an observer is told has changed.
enum class Property {
    visible,
    enabled,
    caption,
    toolTip,
    value,
    items,
    range,
    picture,
    pointer,
    focus
};

using Handler = std::function<void()>;

class Control {
  public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    bool visible() const { return visible_; }
    bool enabled() const { return enabled_; }
    const std::string& caption() const { return caption_; }
    const std::string& toolTip() const { return toolTip_; }

    void setVisible(bool visible) { assign(visible_, visible, Property::visible); }
    void setEnabled(bool enabled) { assign(enabled_, enabled, Property::enabled); }
    void setCaption(const std::string& caption) { assign(caption_, caption, Property::caption); }
    void setToolTip(const std::string& toolTip) { assign(toolTip_, toolTip, Property::toolTip); }

    // Asks the view to give the control the keyboard.
    void setFocus() { changed(Property::focus); }

    // The one observer; an empty one takes the last away.
    void observe(std::function<void(Property)> observer) { observer_ = std::move(observer); }

  protected:
    // Whether the user can act on it at all: every door through which a view hands in what the user
    // did asks this first, so that a late native event finds it shut.
    bool reachable() const { return enabled_ && visible_; }

    void changed(Property property) {
        if (observer_) {
            observer_(property);
        }
    }

    // Stores a value; tells the observer and returns true only when it is a new one.
    template <typename T>
    bool assign(T& member, const T& value, Property property) {
        if (member == value) {
            return false;
        }
        member = value;
        changed(property);
        return true;
    }

    static void raise(const Handler& handler) {
        if (handler) {
            handler();
        }
    }

  private:
    bool visible_ = true;
    bool enabled_ = true;
    std::string caption_;
    std::string toolTip_;
    std::function<void(Property)> observer_;
};

} // namespace veldara
