#include "sheets/jpeg_cut_schedule.h"

#include <algorithm>
#include <utility>

namespace veldara {

namespace {

// Coded while finished pieces wait to be taken: enough to keep the workers busy meanwhile, and
// little beside a row of sheets.
constexpr std::size_t mostBytesAhead = std::size_t{16} << 20;

} // namespace

JpegCutSchedule::JpegCutSchedule(const std::vector<McuRows>& pieces, int rowsPerStrip,
                                 int stripsKept, int rowsWanted)
    : rowsNeeded_(rowsWanted), stripsKept_(stripsKept) {
    for (const McuRows& rows : pieces) {
        rowsNeeded_ = std::max(rowsNeeded_, rows.end);
        Piece piece;
        piece.firstStrip = rows.first / rowsPerStrip;
        const int lastStrip = (rows.end - 1) / rowsPerStrip;
        piece.missing = static_cast<std::size_t>(lastStrip - piece.firstStrip) + 1;
        piece.parts.resize(piece.missing);
        pieces_.push_back(std::move(piece));
    }
    planJobs(pieces, rowsPerStrip);
}

void JpegCutSchedule::planJobs(const std::vector<McuRows>& pieces, int rowsPerStrip) {
    const int strips = (rowsNeeded_ + rowsPerStrip - 1) / rowsPerStrip;
    jobsLeft_.resize(static_cast<std::size_t>(strips));
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces_[i];
        for (int k = 0; k < static_cast<int>(piece.parts.size()); ++k) {
            const int strip = piece.firstStrip + k;
            const int top = strip * rowsPerStrip;
            jobs_.push_back(
                {i,
                 strip,
                 {std::max(pieces[i].first, top), std::min(pieces[i].end, top + rowsPerStrip)}});
            ++jobsLeft_[static_cast<std::size_t>(strip)];
        }
    }
    std::stable_sort(jobs_.begin(), jobs_.end(), [](const CutJob& one, const CutJob& other) {
        return one.strip < other.strip;
    });
    jobsBefore_.push_back(0);
    for (const std::size_t jobs : jobsLeft_) {
        jobsBefore_.push_back(jobsBefore_.back() + jobs);
    }
}

void JpegCutSchedule::markRead(int strips) {
    if (strips > stripsRead_) {
        stripsRead_ = strips;
        work_.notify_all();
    }
}

bool JpegCutSchedule::beginStrip(int strip) {
    std::unique_lock hold(lock_);
    markRead(strip);
    room_.wait(hold, [&] {
        while (stripsDone_ < stripsRead_ && jobsLeft_[static_cast<std::size_t>(stripsDone_)] == 0) {
            ++stripsDone_;
        }
        return stopped_ || strip < stripsDone_ + stripsKept_;
    });
    return !stopped_;
}

void JpegCutSchedule::endReading() {
    const std::lock_guard hold(lock_);
    markRead(static_cast<int>(jobsLeft_.size()));
    allRead_ = true;
    ready_.notify_all();
}

bool JpegCutSchedule::hasJob() const {
    return nextJob_ < jobsBefore_[static_cast<std::size_t>(stripsRead_)];
}

std::optional<CutJob> JpegCutSchedule::takeJob() {
    std::unique_lock hold(lock_);
    work_.wait(hold, [&] {
        const bool farAhead = nextIsReady() && bytesHeld_ > bytesWhenReady_ + mostBytesAhead;
        return stopped_ || nextJob_ == jobs_.size() || (hasJob() && !farAhead);
    });
    if (stopped_ || nextJob_ == jobs_.size()) {
        return std::nullopt;
    }
    if (nextJob_ + 1 == jobs_.size()) {
        work_.notify_all(); // nothing is left for the others to wait for
    }
    return jobs_[nextJob_++];
}

void JpegCutSchedule::finishJob(const CutJob& job, std::vector<std::uint8_t> part) {
    const std::lock_guard hold(lock_);
    const bool wasReady = nextIsReady();
    Piece& piece = pieces_[job.piece];
    piece.bytes += part.size();
    bytesHeld_ += part.size();
    piece.parts[static_cast<std::size_t>(job.strip - piece.firstStrip)] = std::move(part);
    --piece.missing;
    if (--jobsLeft_[static_cast<std::size_t>(job.strip)] == 0) {
        room_.notify_one();
    }
    if (nextIsReady() && !wasReady) {
        noteReady();
    }
}

bool JpegCutSchedule::nextIsReady() const {
    return nextPiece_ < pieces_.size() && pieces_[nextPiece_].missing == 0;
}

void JpegCutSchedule::noteReady() {
    bytesWhenReady_ = bytesHeld_;
    ready_.notify_all();
}

void JpegCutSchedule::fail(std::exception_ptr reason) noexcept {
    const std::lock_guard hold(lock_);
    if (!failure_) {
        failure_ = std::move(reason);
    }
    stopped_ = true;
    room_.notify_all();
    work_.notify_all();
    ready_.notify_all();
}

void JpegCutSchedule::stop() noexcept {
    fail(nullptr);
}

bool JpegCutSchedule::stopped() {
    const std::lock_guard hold(lock_);
    return stopped_;
}

bool JpegCutSchedule::waitReady(std::chrono::milliseconds time) {
    std::unique_lock hold(lock_);
    return ready_.wait_for(hold, time, [&] { return stopped_ || nextIsReady(); });
}

bool JpegCutSchedule::waitRead(std::chrono::milliseconds time) {
    std::unique_lock hold(lock_);
    ready_.wait_for(hold, time, [&] { return stopped_ || allRead_; });
    throwFailure();
    return allRead_;
}

void JpegCutSchedule::throwFailure() const {
    if (failure_) {
        std::rethrow_exception(failure_);
    }
}

std::vector<std::uint8_t> JpegCutSchedule::takePiece() {
    Piece piece;
    {
        std::unique_lock hold(lock_);
        ready_.wait(hold, [&] { return stopped_ || nextIsReady(); });
        throwFailure();
        piece = std::move(pieces_[nextPiece_++]);
        bytesHeld_ -= piece.bytes;
        work_.notify_all();
    }
    if (piece.parts.size() == 1) {
        return std::move(piece.parts.front());
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(piece.bytes);
    for (std::vector<std::uint8_t>& part : piece.parts) {
        bytes.insert(bytes.end(), part.begin(), part.end());
        part = {};
    }
    return bytes;
}

} // namespace veldara
