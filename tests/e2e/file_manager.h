// A file manager: a program of its own, with one file in its window that can be dragged away.
#pragma once

#include "e2e/driver.h"
#include "support/temp_folder.h"

#include <filesystem>
#include <string>

namespace veldara::test {

class FileManager {
  public:
    // Starts this program once more, and waits until its window is up in the corner of the screen.
    FileManager(Driver& user, const std::filesystem::path& file);
    ~FileManager();
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;

    // Drags the file into the middle of a widget.
    void dropOn(const std::string& window, const std::string& widget);

    // For main(): whether that is what the program was started for, and being it.
    static bool isWanted(int argc, char** argv);
    static int run(int argc, char** argv);

  private:
    Driver& user_;
    TempFolder flags_; // how the two programs signal each other
    long process_ = 0;
};

} // namespace veldara::test
