// The photo in memory, and the work on it: which work was requested, which is running, and whether
// anybody still waits for its result.
#pragma once

#include "controls/scoped_flag.h"
#include "platform/image/image.h"
#include "platform/stop_flag.h"

#include <memory>
#include <utility>

namespace veldara {

// The photo as it is turned now. Workers and the full-screen preview share the pixels while they
// read them.
struct CurrentPhoto {
    std::shared_ptr<const Image> image = std::make_shared<Image>();
    int rotation = 0; // degrees clockwise, already applied to the image
};

// Work on the photo runs on a worker thread while window events are served, so requests arrive in
// the middle of it. They are kept here until the running work has ended; of several requests of one
// kind the last one counts.
class PhotoWork {
  public:
    // Sets the running state for a scope; running() must be false before.
    [[nodiscard]] ScopedFlag start() { return ScopedFlag(running_); }
    bool running() const { return running_; }

    void requestLoad() {
        loadRequested_ = true;
        stop_.set();
    }
    bool loadRequested() const { return loadRequested_; }
    bool takeLoadRequest() {
        if (loadRequested_) {
            stop_.clear(); // what it stopped has ended
        }
        return std::exchange(loadRequested_, false);
    }

    // Set as soon as nobody waits for the photo any more that is being decoded.
    const StopFlag& stop() const { return stop_; }
    void dropLoad() { stop_.set(); }

    // The preview is to be built again, because the picture box has another size.
    void requestPreview() { previewRequested_ = true; }
    bool takePreviewRequest() { return std::exchange(previewRequested_, false); }

    // The file list was filled again: a photo that is being loaded is no longer the selected one.
    void listFilled() {
        ++listGeneration_;
        stop_.set();
    }
    int listGeneration() const { return listGeneration_; }

  private:
    bool running_ = false;
    bool loadRequested_ = false;
    bool previewRequested_ = false;
    int listGeneration_ = 0;
    StopFlag stop_;
};

} // namespace veldara
