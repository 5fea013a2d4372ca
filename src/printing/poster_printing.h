// Prints sheets: asks for the printer, says beforehand what it cannot print, and hands the sheets
// over while the progress window offers Cancel.
#pragma once

#include "output/frmMsg.h"
#include "platform/image/image.h"
#include "platform/image/turn.h"
#include "platform/platform.h"
#include "sheets/sheet_layout.h"
#include "sheets/stored_choices.h"

#include <filesystem>
#include <memory>
#include <string>

namespace veldara {

struct SheetsToPrint {
    std::string title; // of the job
    SheetJob job;
    std::shared_ptr<const Image> picture; // whole, as it is turned now
    // The file that the picture was read from; empty: the picture was made by the program.
    std::filesystem::path photo;
    Turn rotation = Turn::none; // the user's, on top of the camera's tag
};

enum class PrintEnd { printed, notPrinted, wantsFile };

class PosterPrinting {
  public:
    PosterPrinting(Platform& platform, StoredChoices& choices, frmMsg& progress);

    // Asks and prints; messages tell whatever goes wrong. noPrinter: asked where the system has
    // none; Yes returns wantsFile. Called while it runs, it does nothing.
    PrintEnd print(const SheetsToPrint& sheets, const Message& noPrinter);

    bool running() const { return running_; }

    // A job of the system's has failed after it was handed over.
    void jobStopped(const std::string& printer, const std::string& reason);

  private:
    PrintEnd ask(const SheetsToPrint& sheets, const Message& noPrinter);

    Platform& platform_;
    StoredChoices& choices_;
    frmMsg& progress_;
    bool running_ = false;
};

} // namespace veldara
