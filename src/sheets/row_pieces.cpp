#include "sheets/row_pieces.h"

#include "output/tile_stream.h"
#include "platform/error.h"
#include "platform/image/codec.h"
#include "platform/image/ink_rows.h"
#include "sheets/flate_sink.h"

#include <algorithm>

namespace veldara {
namespace {

// A JPEG piece, encoded as tile files are.
class JpegSink : public TileSink {
  public:
    JpegSink(int width, int height)
        : encoder_(openRowEncoder(width, height, TileFormat::jpeg, 0, {})) {}
    void writeRows(const PixelView& rows) override { encoder_->writeRows(rows); }
    std::vector<std::uint8_t> finish() override { return encoder_->finish(); }

  private:
    std::unique_ptr<RowEncoder> encoder_;
};

FlateRows rowsOf(PieceColour colour) {
    switch (colour) {
    case PieceColour::grey:
        return FlateRows::grey;
    case PieceColour::rgb:
        break;
    case PieceColour::cmyk:
        return FlateRows::inks;
    }
    return FlateRows::rgb;
}

class RowPieces : public PieceSource {
  public:
    // columns: of the reader for one of the photo's.
    RowPieces(std::unique_ptr<RowReader> reader, PieceFacts facts, int columns)
        : reader_(std::move(reader)), facts_(std::move(facts)), columns_(columns) {}

    const PieceFacts& facts() const override { return facts_; }

    // One pixel more on each side, for renderers that look at a pixel's neighbours.
    PixelRectangle pieceFor(const PixelRectangle& wanted) const override {
        const int left = std::max(wanted.left - 1, 0);
        const int top = std::max(wanted.top - 1, 0);
        return {left, top, std::min(wanted.right() + 1, facts_.width) - left,
                std::min(wanted.bottom() + 1, facts_.height) - top};
    }

    void start(std::vector<PixelRectangle> wanted, int across) override {
        std::vector<TileRect> rects;
        for (const PixelRectangle& rectangle : wanted) {
            const PixelRectangle piece = pieceFor(rectangle);
            rects.push_back({columns_ * piece.left, piece.top, columns_ * piece.right() - 1,
                             piece.bottom() - 1});
        }
        TileSinks sinks = [rects, columns = columns_,
                           facts = facts_](std::size_t number) -> std::unique_ptr<TileSink> {
            const TileRect& rect = rects[number];
            if (facts.filter == PieceFilter::dct) {
                return std::make_unique<JpegSink>(rect.width(), rect.height());
            }
            return openFlateSink(rect.width() / columns, rowsOf(facts.colour));
        };
        stream_ =
            std::make_unique<TileStream>(std::move(reader_), rects, across, std::move(sinks), 0);
    }

    std::vector<std::uint8_t> next(const std::function<void()>& stopped) override {
        do {
            stopped();
        } while (!stream_->waitReady(number_, std::chrono::milliseconds(50)));
        EncodedTile tile = stream_->take(number_);
        if (tile.step.outcome != TileOutcome::written) {
            throw Error(tile.step.reason);
        }
        stream_->commit(number_++);
        return std::move(tile.bytes);
    }

  private:
    std::unique_ptr<RowReader> reader_;
    PieceFacts facts_;
    int columns_ = 1;
    std::unique_ptr<TileStream> stream_;
    std::size_t number_ = 0;
};

} // namespace

std::unique_ptr<PieceSource> openRowPieces(const std::filesystem::path& photo, PieceFilter filter,
                                           const std::string& notice) {
    std::unique_ptr<RowReader> reader = openRowReader(photo);
    PieceFacts facts;
    facts.width = reader->header().width;
    facts.height = reader->header().height;
    facts.filter = filter;
    facts.profile = reader->colourProfile();
    if (filter == PieceFilter::flate) {
        if (std::optional<ColourProfile> grey = reader->greyProfile()) {
            facts.colour = PieceColour::grey;
            facts.profile = std::move(*grey);
        }
    }
    facts.notice = notice;
    return std::make_unique<RowPieces>(std::move(reader), std::move(facts), 1);
}

std::unique_ptr<PieceSource> openInkPieces(const std::filesystem::path& photo) {
    std::optional<InkPicture> picture = openInkPicture(photo);
    if (!picture) {
        return nullptr;
    }
    PieceFacts facts;
    facts.width = picture->width;
    facts.height = picture->height;
    facts.orientation = picture->orientation;
    facts.colour = PieceColour::cmyk;
    facts.profile = picture->profile;
    return std::make_unique<RowPieces>(std::move(picture->rows), std::move(facts), 2);
}

} // namespace veldara
