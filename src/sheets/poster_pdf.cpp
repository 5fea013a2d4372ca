#include "sheets/poster_pdf.h"

#include "output/tile_files.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "platform/text/path_text.h"
#include "sheets/guide_page.h"
#include "sheets/pdf_document.h"
#include "sheets/sheet_marks.h"
#include "sheets/small_photo.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <new>
#include <numeric>

namespace veldara {
namespace {

// The longer side of the guide's picture, in pixels: enough for its size on paper, and a small part
// of the document.
constexpr int guidePixels = 480;

TileRect wholeCrop(const SheetJob& job) {
    const CropRect crop = cropRect(job.layout);
    return {crop.left, crop.top, crop.left + crop.width - 1, crop.top + crop.height - 1};
}

// One document on its way into its file.
class Writing {
  public:
    Writing(const PosterPdf& poster, const std::function<void()>& stopped,
            const std::function<void(std::size_t)>& written)
        : poster_(poster), stopped_(stopped), written_(written),
          source_(openPieceSource(poster.photo)) {
        const PieceFacts& facts = source_->facts();
        parts_.facts = facts;
        parts_.frame = photoFrame(facts.width, facts.height, facts.orientation, poster.rotation);
        if (parts_.frame.width != poster.job.layout.photoWidth ||
            parts_.frame.height != poster.job.layout.photoHeight) {
            throw Error("The photo \"" + pathText(poster.photo) +
                        "\" was changed while it was read.");
        }
        parts_.title = poster.job.photoName;
        parts_.pages = posterPages(poster.job);
        placePieces();
        placeGuide();
        parts_.piece = [this](std::size_t page) { return nextPiece(page); };
        parts_.small = [this] { return smallPicture(); };
    }

    std::string write() {
        WholeFile file(poster_.file);
        source_->start(wanted_, parts_.frame.exchanged ? poster_.job.layout.tilesHigh
                                                       : poster_.job.layout.tilesWide);
        writePdf(parts_, [&](std::span<const std::uint8_t> bytes) { file.write(bytes); });
        stopped_();
        file.commit();
        return parts_.facts.notice;
    }

  private:
    // Sheets in the order in which their pieces lie in the stored photo, from the top down.
    void placePieces() {
        parts_.pieces.resize(parts_.pages.size());
        std::vector<PixelRectangle> wanted(parts_.pages.size());
        for (std::size_t i = 0; i < parts_.pages.size(); ++i) {
            if (parts_.pages[i].sheet == 0) {
                continue;
            }
            const SheetPlace place = sheetPlace(poster_.job, parts_.pages[i].sheet);
            wanted[i] = storedPixels(parts_.frame, shownPixels(poster_.job, place));
            parts_.pieces[i] = source_->pieceFor(wanted[i]);
            parts_.order.push_back(i);
        }
        std::stable_sort(parts_.order.begin(), parts_.order.end(),
                         [&](std::size_t one, std::size_t other) {
                             return std::pair(wanted[one].top, wanted[one].left) <
                                    std::pair(wanted[other].top, wanted[other].left);
                         });
        for (const std::size_t page : parts_.order) {
            wanted_.push_back(wanted[page]);
        }
    }

    // The guide's picture shows the crop alone. It comes with the pieces where it can; else it is
    // read from the photo once more, upright.
    void placeGuide() {
        const PieceFacts& facts = parts_.facts;
        const TileRect crop = wholeCrop(poster_.job);
        parts_.smallFrame = parts_.frame;
        parts_.smallArea = storedPixels(parts_.smallFrame, crop);
        SmallSize size = smallSize(parts_.smallArea, guidePixels);
        smallComes_ = poster_.job.choices.guide && source_->wantSmall(parts_.smallArea, size);
        if (!smallComes_) {
            const PhotoFrame upright =
                photoFrame(facts.width, facts.height, facts.orientation, Turn::none);
            parts_.smallFrame =
                photoFrame(upright.width, upright.height, Orientation::upright, poster_.rotation);
            parts_.smallArea = storedPixels(parts_.smallFrame, crop);
            size = smallSize(parts_.smallArea, guidePixels);
        }
        parts_.smallWidth = size.width;
        parts_.smallHeight = size.height;
    }

    std::vector<std::uint8_t> nextPiece(std::size_t page) {
        if (count_ >= parts_.order.size() || parts_.order[count_] != page) {
            throw Error("The document's pictures were asked for out of their order.");
        }
        std::vector<std::uint8_t> bytes = source_->next(stopped_);
        written_(++count_);
        return bytes;
    }

    std::vector<std::uint8_t> smallPicture() {
        const Image small =
            smallComes_ ? source_->small(stopped_)
                        : smallPhoto(poster_.photo, parts_.smallArea, guidePixels, stopped_);
        return encodeImage(small.view(), TileFormat::jpeg, 0, {});
    }

    const PosterPdf& poster_;
    const std::function<void()>& stopped_;
    const std::function<void(std::size_t)>& written_;
    std::unique_ptr<PieceSource> source_;
    PdfParts parts_;
    std::vector<PixelRectangle> wanted_;
    bool smallComes_ = false; // with the pieces
    std::size_t count_ = 0;
};

} // namespace

std::vector<SheetPage> posterPages(const SheetJob& job) {
    std::vector<SheetPage> pages;
    if (job.choices.guide) {
        pages.push_back(guidePage(job));
    }
    for (const int number : chosenSheets(job)) {
        pages.push_back(sheetPage(job, number));
    }
    return pages;
}

std::string writePosterPdf(const PosterPdf& poster, const std::function<void()>& stopped,
                           const std::function<void(std::size_t)>& written) {
    if (isSameFile(poster.photo, poster.file)) {
        throw Error("The document \"" + pathText(poster.file) +
                    "\" would take the photo's place: give it another name.");
    }
    try {
        return Writing(poster, stopped, written).write();
    } catch (const Error&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw Error("There is not enough memory to make the document.");
    } catch (const std::exception& error) {
        throw Error("The document could not be made: " + std::string(error.what()) + ".");
    }
}

struct PdfRun::Ending {
    std::mutex lock;
    std::condition_variable changed;
    bool done = false;
    std::exception_ptr failure;
    std::string notice;
};

PdfRun::PdfRun(PosterPdf poster)
    : poster_(std::move(poster)), sheets_(chosenSheets(poster_.job).size()),
      ending_(std::make_unique<Ending>()) {
    worker_ = std::thread([this] {
        std::exception_ptr failure;
        std::string notice;
        try {
            notice = writePosterPdf(
                poster_,
                [this] {
                    if (canceled_) {
                        throw PdfCanceled();
                    }
                },
                [this](std::size_t sheets) { written_ = sheets; });
        } catch (...) {
            failure = std::current_exception();
        }
        const std::lock_guard guard(ending_->lock);
        ending_->failure = failure;
        ending_->notice = notice;
        ending_->done = true;
        ending_->changed.notify_all();
    });
}

PdfRun::~PdfRun() {
    canceled_ = true;
    worker_.join();
}

bool PdfRun::waitDone(std::chrono::milliseconds time) {
    std::unique_lock guard(ending_->lock);
    return ending_->changed.wait_for(guard, time, [&] { return ending_->done; });
}

std::string PdfRun::result() {
    const std::lock_guard guard(ending_->lock);
    if (ending_->failure) {
        std::rethrow_exception(ending_->failure);
    }
    return ending_->notice;
}

} // namespace veldara
