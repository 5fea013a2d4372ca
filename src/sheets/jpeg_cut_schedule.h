// Who does what, and when, while a JPEG photo is cut: one thread reads the photo strip by strip
// into a ring, workers code the part of each piece that lies in a strip, and one thread takes the
// pieces in their order. Every call may be made by its thread at any time; they wait for each other
// here.
#pragma once

#include "sheets/jpeg_geometry.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <optional>
#include <vector>

namespace veldara {

// The part of a piece that lies in a strip, in rows of MCUs of the photo.
struct CutJob {
    std::size_t piece = 0;
    int strip = 0;
    McuRows rows;
};

class JpegCutSchedule {
  public:
    // A strip is rowsPerStrip rows of MCUs; the ring holds stripsKept of them. At least
    // `rowsWanted` rows are read, whatever the pieces need.
    JpegCutSchedule(const std::vector<McuRows>& pieces, int rowsPerStrip, int stripsKept,
                    int rowsWanted = 0);
    JpegCutSchedule(const JpegCutSchedule&) = delete;
    JpegCutSchedule& operator=(const JpegCutSchedule&) = delete;

    // Rows of MCUs that are to be read, from the photo's top.
    int rowsNeeded() const { return rowsNeeded_; }

    // The reading thread: waits until the ring has room for the strip; false: stop. The strips
    // before it count as read.
    bool beginStrip(int strip);
    void endReading(); // all strips are read

    // A worker: the next part to code, nothing when there is none left or all is to stop. Waits
    // while more than a little lies ready and is not taken.
    std::optional<CutJob> takeJob();
    void finishJob(const CutJob& job, std::vector<std::uint8_t> part);

    // Any thread: ends the whole work; the first failure is thrown by takePiece.
    void fail(std::exception_ptr reason) noexcept;
    void stop() noexcept;
    bool stopped();

    // The taking thread: pieces in order. Throws what a thread failed with.
    bool waitReady(std::chrono::milliseconds time);
    std::vector<std::uint8_t> takePiece();

    // The same thread: waits at most that long until all strips are read; true when they are.
    bool waitRead(std::chrono::milliseconds time);

  private:
    struct Piece {
        int firstStrip = 0;
        std::vector<std::vector<std::uint8_t>> parts; // one a strip
        std::size_t missing = 0;
        std::size_t bytes = 0;
    };

    void planJobs(const std::vector<McuRows>& pieces, int rowsPerStrip);
    void markRead(int strips);
    bool nextIsReady() const;
    bool hasJob() const;
    void noteReady();
    void throwFailure() const;

    std::vector<Piece> pieces_;
    std::vector<CutJob> jobs_;            // by strips, then pieces
    std::vector<std::size_t> jobsBefore_; // jobs of the strips before a strip
    std::vector<std::size_t> jobsLeft_;   // of each strip
    int rowsNeeded_ = 0;
    int stripsKept_ = 1;

    std::mutex lock_;
    std::condition_variable room_;  // for the reading thread
    std::condition_variable work_;  // for the workers
    std::condition_variable ready_; // for the taking thread
    int stripsRead_ = 0;
    int stripsDone_ = 0; // the first strip that still has jobs
    std::size_t nextJob_ = 0;
    std::size_t nextPiece_ = 0;
    std::size_t bytesHeld_ = 0;
    std::size_t bytesWhenReady_ = 0;
    bool allRead_ = false;
    bool stopped_ = false;
    std::exception_ptr failure_;
};

} // namespace veldara
