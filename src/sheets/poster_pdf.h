// The whole poster as one document: a guide page and a page for each sheet, at their true size. The
// pieces of the photo stream from its file into the document; memory holds about a row of sheets.
#pragma once

#include "platform/image/turn.h"
#include "sheets/piece_source.h"
#include "sheets/sheet_layout.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace veldara {

struct PosterPdf {
    std::filesystem::path photo;
    Turn rotation = Turn::none; // the user's, on top of the camera's tag
    SheetJob job;
    std::filesystem::path file;
};

// The pages in their order: the guide first, then the chosen sheets. Throws Error.
std::vector<SheetPage> posterPages(const SheetJob& job);

// Writes the document. `stopped` is called often, on the thread that calls this, and throws when
// the run is to end; `written` after each sheet, with their number so far. Whatever is thrown,
// nothing stands under the file's name that was not there before. Returns what the person should
// know of the photo's pieces, mostly nothing. Throws Error.
std::string writePosterPdf(const PosterPdf& poster, const std::function<void()>& stopped,
                           const std::function<void(std::size_t)>& written);

// Thrown out of a run that was canceled.
struct PdfCanceled {};

// The same on a thread of its own, for a window or a terminal that goes on meanwhile.
class PdfRun {
  public:
    explicit PdfRun(PosterPdf poster); // starts at once
    ~PdfRun();                         // cancels
    PdfRun(const PdfRun&) = delete;
    PdfRun& operator=(const PdfRun&) = delete;

    std::size_t sheets() const { return sheets_; }
    std::size_t written() const { return written_; }
    void cancel() { canceled_ = true; }

    // Waits at most that long; true when the run is over.
    bool waitDone(std::chrono::milliseconds time);

    // To be called once the run is over: throws what it ended with (Error, PdfCanceled), or returns
    // what writePosterPdf returns.
    std::string result();

  private:
    struct Ending;
    const PosterPdf poster_;
    std::size_t sheets_ = 0;
    std::atomic<std::size_t> written_{0};
    std::atomic<bool> canceled_{false};
    std::unique_ptr<Ending> ending_;
    std::thread worker_;
};

} // namespace veldara
