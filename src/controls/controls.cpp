#include "controls/controls.h"

#include "platform/error.h"

#include <algorithm>

namespace veldara {

void OptionButton::join(const std::vector<OptionButton*>& group) {
    for (OptionButton* button : group) {
        button->group_ = group;
    }
}

void OptionButton::setSelected(bool selected) {
    if (selected == selected_) {
        return;
    }
    if (selected) {
        for (OptionButton* other : group_) {
            if (other != this) {
                other->assign(other->selected_, false, Property::value);
            }
        }
    }
    assign(selected_, selected, Property::value);
    if (selected) {
        raise(onClick);
    }
}

void TextBox::userSetText(const std::string& text) {
    if (!reachable()) {
        return;
    }
    std::string accepted = text;
    std::erase_if(accepted, [this](char c) { return forbidden_.find(c) != std::string::npos; });
    const bool refused = accepted != text;
    setText(accepted);
    if (refused) {
        changed(Property::refused);
    }
}

void ScrollBar::setRange(int minimum, int maximum, int smallChange, int largeChange) {
    maximum = std::max(minimum, maximum);
    const bool isNew = minimum != minimum_ || maximum != maximum_ || smallChange != smallChange_ ||
                       largeChange != largeChange_;
    minimum_ = minimum;
    maximum_ = maximum;
    smallChange_ = smallChange;
    largeChange_ = largeChange;
    if (isNew) {
        changed(Property::range);
    }
    setValue(std::clamp(value_, minimum_, maximum_));
}

void ScrollBar::setValue(int value) {
    if (value < minimum_ || value > maximum_) {
        throw Error("The scroll bar's value " + std::to_string(value) + " is outside its range.");
    }
    if (assign(value_, value, Property::value)) {
        raise(onChange);
    }
}

void ScrollBar::userSetValue(int value) {
    if (reachable()) {
        setValue(std::clamp(value, minimum_, maximum_));
    }
}

} // namespace veldara
