// Dialogs that nobody sees: they record what was asked and answer what the test has queued.
#pragma once

#include "platform/dialogs.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

class ScriptedDialogs : public Dialogs {
  public:
    struct TextRequest {
        std::string prompt;
        std::string title;
        std::string proposed;
        bool operator==(const TextRequest&) const = default;
    };

    std::vector<Message> messages; // every message box, in order
    std::vector<TextRequest> textRequests;
    std::vector<SaveFileRequest> saveRequests;
    std::vector<OpenFileRequest> openRequests;

    std::deque<Answer> answers;            // for message boxes; empty: the first button
    std::deque<std::string> texts;         // for askText; empty: Cancel
    std::deque<std::string> openFilePaths; // for askOpenFile; empty: Cancel
    std::deque<std::string> saveFilePaths; // for askSaveFile; empty: Cancel

    // Looks at the program while a message box stands, before it is answered.
    std::function<void(const Message&)> whileMessageShown;

    Answer showMessage(const Message& message) override {
        messages.push_back(message);
        if (whileMessageShown) {
            whileMessageShown(message);
        }
        if (answers.empty()) {
            return firstButton(message.buttons);
        }
        const Answer answer = answers.front();
        answers.pop_front();
        EXPECT_TRUE(offers(message.buttons, answer))
            << "the box \"" << message.text << "\" has no such button";
        return answer;
    }

    std::string askText(const std::string& prompt, const std::string& title,
                        const std::string& proposed) override {
        textRequests.push_back({prompt, title, proposed});
        return next(texts);
    }

    std::string askOpenFile(const OpenFileRequest& request) override {
        openRequests.push_back(request);
        return next(openFilePaths);
    }

    std::string askSaveFile(const SaveFileRequest& request) override {
        saveRequests.push_back(request);
        return next(saveFilePaths);
    }

    // The only message box that was shown; a failure when there was none or more than one.
    Message onlyMessage() const {
        EXPECT_EQ(messages.size(), 1U);
        return messages.size() == 1 ? messages.front() : Message{};
    }

    bool quiet() const { return messages.empty() && textRequests.empty() && saveRequests.empty(); }

    static Answer firstButton(MessageButtons buttons) {
        const bool asks =
            buttons == MessageButtons::yesNo || buttons == MessageButtons::yesNoCancel;
        return asks ? Answer::yes : Answer::ok;
    }

    static bool offers(MessageButtons buttons, Answer answer) {
        switch (buttons) {
        case MessageButtons::ok:
            return answer == Answer::ok;
        case MessageButtons::okCancel:
            return answer == Answer::ok || answer == Answer::cancel;
        case MessageButtons::yesNo:
            return answer == Answer::yes || answer == Answer::no;
        case MessageButtons::yesNoCancel:
            return answer != Answer::ok;
        }
        return false;
    }

  private:
    static std::string next(std::deque<std::string>& queue) {
        if (queue.empty()) {
            return {};
        }
        std::string text = queue.front();
        queue.pop_front();
        return text;
    }
};

// A failure as it is reported.
inline Message critical(const std::string& title, const std::string& text) {
    return {text, title, MessageIcon::critical, MessageButtons::ok};
}

} // namespace veldara::test
