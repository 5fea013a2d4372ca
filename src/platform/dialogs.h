// The system's own small dialogs: message box, input box, save-file dialog.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veldara {

enum class MessageIcon { none, critical, question, exclamation, information };
enum class MessageButtons { ok, okCancel, yesNo, yesNoCancel };
enum class Answer { ok, cancel, yes, no };

struct Message {
    std::string text;
    std::string title; // empty: the program's own title
    MessageIcon icon = MessageIcon::none;
    MessageButtons buttons = MessageButtons::ok;
    std::optional<Answer> defaultAnswer = std::nullopt; // of Enter; nothing: the first button
    bool operator==(const Message&) const = default;
};

// What was wanted cannot be done.
inline Message criticalMessage(const std::string& title, const std::string& text) {
    return {text, title, MessageIcon::critical, MessageButtons::ok};
}

// One entry of the file-type list of a save-file dialog, for example {"Bitmap (*.bmp)", "*.bmp"}.
struct FileFilter {
    std::string label;
    std::string pattern;
    bool operator==(const FileFilter&) const = default;
};

struct OpenFileRequest {
    std::string title;
    std::vector<FileFilter> filters;
    std::string folder; // where it starts; empty: the system's choice
};

struct SaveFileRequest {
    std::string title;
    std::vector<FileFilter> filters;
    std::string defaultName; // without an extension: the chosen filter's is added
    std::string folder;      // where it starts; empty: the system's choice
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual Answer showMessage(const Message& message) = 0;
    // The entered text; empty for Cancel.
    virtual std::string askText(const std::string& prompt, const std::string& title,
                                const std::string& proposed) = 0;
    // The path of the chosen file, which exists; empty for Cancel.
    virtual std::string askOpenFile(const OpenFileRequest& request) = 0;
    // The chosen path, or the empty text; asks before an existing file is chosen.
    virtual std::string askSaveFile(const SaveFileRequest& request) = 0;
};

} // namespace veldara
