#include "controls/lists.h"

#include "platform/error.h"
#include "platform/text/characters.h"

#include <algorithm>
#include <utility>

namespace veldara {

namespace {

constexpr double typingPause = 1.0; // seconds

void checkIndex(int index, std::size_t count) {
    if (index < -1 || index >= static_cast<int>(count)) {
        throw Error("There is no entry " + std::to_string(index) + " in the list.");
    }
}

} // namespace

std::string ListBox::selectedText() const {
    return listIndex_ < 0 ? std::string() : items_[static_cast<std::size_t>(listIndex_)];
}

void ListBox::setItems(std::vector<std::string> items) {
    items_ = std::move(items);
    listIndex_ = -1;
    changed(Property::items);
}

void ListBox::replaceItems(std::vector<std::string> items) {
    const auto found = std::find(items.begin(), items.end(), selectedText());
    const bool kept = listIndex_ >= 0 && found != items.end();
    listIndex_ = kept ? static_cast<int>(found - items.begin()) : -1;
    items_ = std::move(items);
    changed(Property::items);
}

void ListBox::addItem(const std::string& item) {
    items_.push_back(item);
    changed(Property::items);
}

void ListBox::setItem(int index, const std::string& text) {
    if (index < 0) {
        throw Error("There is no entry " + std::to_string(index) + " in the list.");
    }
    checkIndex(index, items_.size());
    assign(items_[static_cast<std::size_t>(index)], text, Property::items);
}

void ListBox::setListIndex(int index) {
    checkIndex(index, items_.size());
    if (assign(listIndex_, index, Property::value)) {
        raise(onClick);
    }
}

void ListBox::userStep(int by) {
    const int target =
        listIndex_ < 0 ? 0 : std::clamp(listIndex_ + by, 0, std::max(count() - 1, 0));
    if (target != listIndex_) {
        userClick(target);
    }
}

// The first entry from that index on, and then from the top, that begins with what was typed; -1
// for none.
int ListBox::findTyped(int first) const {
    for (int i = 0; i < count(); ++i) {
        const int index = (first + i) % count();
        if (lowerCase(items_[static_cast<std::size_t>(index)]).starts_with(typed_)) {
            return index;
        }
    }
    return -1;
}

void ListBox::userType(const std::string& letter, double seconds) {
    const std::string lower = lowerCase(letter);
    const bool goesOn = seconds - typedAt_ < typingPause && typed_ != lower;
    typed_ = goesOn ? typed_ + lower : lower;
    typedAt_ = seconds;
    const int here = std::max(listIndex_, 0);
    const int next = listIndex_ < 0 ? 0 : listIndex_ + 1;
    const int found = findTyped(goesOn ? here : next);
    if (found >= 0 && found != listIndex_) {
        userClick(found);
    }
}

void ListBox::userClick(int index) {
    if (!reachable() || index < 0 || index >= count()) {
        return;
    }
    assign(listIndex_, index, Property::value);
    raise(onClick);
}

void ComboBox::setItems(std::vector<std::string> items) {
    items_ = std::move(items);
    listIndex_ = -1;
    if (!freeText_) {
        text_.clear();
    }
    changed(Property::items);
}

void ComboBox::setListIndex(int index) {
    checkIndex(index, items_.size());
    if (index == listIndex_) {
        return;
    }
    listIndex_ = index;
    const std::string text = index < 0 ? std::string() : items_[static_cast<std::size_t>(index)];
    const bool newText = text != text_;
    text_ = text;
    changed(Property::value);
    if (freeText_ && newText) {
        raise(onChange);
    }
    raise(onClick);
}

void ComboBox::setText(const std::string& text) {
    if (!freeText_ || text == text_) {
        return;
    }
    text_ = text;
    const auto found = std::find(items_.begin(), items_.end(), text);
    listIndex_ = found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
    changed(Property::value);
    raise(onChange);
}

void ComboBox::userSelect(int index) {
    if (reachable() && index >= 0 && index < count()) {
        setListIndex(index);
    }
}

void ComboBox::userStep(int by) {
    if (listIndex_ >= 0) {
        userSelect(listIndex_ + by);
        return;
    }
    const auto found = std::find_if(items_.begin(), items_.end(), [this](const std::string& item) {
        return item.starts_with(text_);
    });
    if (found != items_.end()) {
        userSelect(static_cast<int>(found - items_.begin()));
    }
}

void ComboBox::userSetText(const std::string& text) {
    if (reachable()) {
        setText(text);
    }
}

} // namespace veldara
