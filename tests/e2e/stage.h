// The environment of a test: a home folder, a folder of photos, stored preferences, and the running
// program.
#pragma once

#include "e2e/driver.h"
#include "gui/desktop_program.h"
#include "support/temp_folder.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace veldara::test {

// The paper preference line of Letter paper with its document margins: tiles of 6 by 9 inches.
constexpr const char* letterLine = "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|1|1.25|1|1.25|";

class Stage {
  public:
    Stage();
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    Driver& user() { return user_; }
    const TempFolder& home() const { return home_; }
    std::filesystem::path photos() const { return home_.path() / "photos"; }

    // Preferences as the program stores them. A missing one reads as the empty text.
    void store(const std::string& name, const std::string& text);
    std::string stored(const std::string& name);

    // Starts the program in the folder of photos and waits for its main window.
    void start();
    // Starts it wherever it begins with what is stored.
    void startAsStored();
    bool ended() const { return ended_; }
    void waitForEnd();

    // Takes the program away, with every dialog that is still open, as if its process had died.
    void stop();

    // Double-clicks a folder in the main window's list and waits until it is open.
    void openFolder(const std::string& name);
    void waitForFolder(const std::string& name);

    // Clicks a photo in the file list and waits until it is shown.
    void pickPhoto(const std::string& name);

    // Waits until the main window's model has come to a state.
    void waitFor(const std::string& what, const std::function<bool(frmMain&)>& test) {
        user_.waitUntil(what, [&] { return test(program_->mainWindow()); });
    }

    // Asks the main window's model on the window thread.
    template <typename Ask>
    auto ask(Ask question) {
        return user_.onWindowThread([&] { return question(program_->mainWindow()); });
    }

  private:
    void leaveDialogs();

    TempFolder home_;
    Driver user_;
    std::unique_ptr<DesktopProgram> program_;
    std::atomic<bool> ended_{false};
};

} // namespace veldara::test
