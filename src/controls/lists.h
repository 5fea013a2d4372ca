// Controls that show entries to choose from: list box and combo box (drop-down list, with or
// without free text).
#pragma once

#include "controls/control.h"

#include <string>
#include <utility>
#include <vector>

namespace veldara {

class ListBox : public Control {
  public:
    using Control::Control;
    Handler onClick;

    const std::vector<std::string>& items() const { return items_; }
    int count() const { return static_cast<int>(items_.size()); }
    int listIndex() const { return listIndex_; } // -1: nothing chosen

    // The chosen entry's text; empty when nothing is chosen.
    std::string selectedText() const;

    // Replaces the entries; nothing is chosen afterwards and no event is raised.
    void setItems(std::vector<std::string> items);
    void clear() { setItems({}); }
    // Replaces the entries and keeps the chosen text chosen where it is still there, at whatever
    // index; no event is raised.
    void replaceItems(std::vector<std::string> items);
    void addItem(const std::string& item);

    // Replaces one entry's text in place; the choice stays. Throws Error for no such entry.
    void setItem(int index, const std::string& text);

    // -1 to count() - 1, otherwise throws Error. Raises onClick for a new choice.
    void setListIndex(int index);

    // A typed letter: chooses the next entry that begins with what was typed, upper and lower case
    // alike. Letters typed within a second of each other belong together; the same letter again
    // goes on to the next such entry. Without a match the choice stays. seconds: any steady
    // clock's.
    void userType(const std::string& letter, double seconds);

    // Moves the choice by so many entries, as far as there are any; from no choice to the first.
    void userStep(int by);

    // A click on an entry: raises onClick also when it is the chosen one, so that a photo that
    // could not be read can be tried again.
    void userClick(int index);

  private:
    int findTyped(int first) const;

    std::vector<std::string> items_;
    int listIndex_ = -1;
    std::string typed_; // lower case
    double typedAt_ = 0;
};

class ComboBox : public Control {
  public:
    Handler onClick;  // a new entry was chosen
    Handler onChange; // free text only: the text changed by typing or from code

    explicit ComboBox(std::string name = {}, bool freeText = false)
        : Control(std::move(name)), freeText_(freeText) {}

    bool freeText() const { return freeText_; }
    const std::vector<std::string>& items() const { return items_; }
    int count() const { return static_cast<int>(items_.size()); }
    int listIndex() const { return listIndex_; }

    // The text in the box: the chosen entry's, or what was typed.
    const std::string& text() const { return text_; }

    // Replaces the entries; nothing is chosen, a typed text stays, no event is raised.
    void setItems(std::vector<std::string> items);
    void clear() { setItems({}); }

    // -1 to count() - 1, otherwise throws Error. Raises onClick for a new choice. In a box with
    // free text the text follows, which raises onChange first when it is a new one.
    void setListIndex(int index);

    // Free text only: the text, and with it the entry that reads the same (or none). Raises
    // onChange for a new text.
    void setText(const std::string& text);

    void userSelect(int index);
    void userSetText(const std::string& text);
    // Moves by so many entries; from a text that is none of them, to the first that begins with it.
    void userStep(int by);

  private:
    bool freeText_;
    std::vector<std::string> items_;
    int listIndex_ = -1;
    std::string text_;
};

} // namespace veldara
