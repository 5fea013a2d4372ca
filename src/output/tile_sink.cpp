#include "output/tile_sink.h"

#include "output/attempt.h"
#include "output/edge_compensation.h"

#include <cstring>
#include <utility>

namespace veldara {
namespace {

std::size_t rowBytes(int width) {
    return std::size_t{3} * static_cast<std::size_t>(width);
}

class PlainSink : public TileSink {
  public:
    explicit PlainSink(std::unique_ptr<RowEncoder> encoder) : encoder_(std::move(encoder)) {}
    void writeRows(const PixelView& rows) override { encoder_->writeRows(rows); }
    std::vector<std::uint8_t> finish() override { return encoder_->finish(); }

  private:
    std::unique_ptr<RowEncoder> encoder_;
};

// Adds the border of edge compensation.
class BorderSink : public TileSink {
  public:
    BorderSink(std::unique_ptr<RowEncoder> encoder, const CompensationPlan& plan)
        : encoder_(std::move(encoder)), plan_(plan), row_(rowBytes(plan.width())) {}

    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            borderRow(row_.data(), rows.row(y), plan_);
            repeat(first_ ? plan_.margins[edgeTop] + 1 : 1);
            first_ = false;
        }
    }

    std::vector<std::uint8_t> finish() override {
        repeat(plan_.margins[edgeBottom]);
        return encoder_->finish();
    }

  private:
    // With a stride of 0 every row of the view is the same row.
    void repeat(int times) {
        if (times > 0) {
            encoder_->writeRows(PixelView(row_.data(), plan_.width(), times, 0));
        }
    }

    std::unique_ptr<RowEncoder> encoder_;
    CompensationPlan plan_;
    std::vector<std::uint8_t> row_;
    bool first_ = true;
};

// Collects the rows until the tile is complete.
class CollectingSink : public TileSink {
  public:
    CollectingSink(const TileRect& tile, const TileTreatment& treatment, TileFormat type,
                   ColourProfile profile)
        : image_(tile.width(), tile.height()), treatment_(treatment), type_(type),
          profile_(std::move(profile)) {}

    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            std::memcpy(image_.row(next_++), rows.row(y), rowBytes(rows.width()));
        }
    }

    std::vector<std::uint8_t> finish() override {
        const TileImage made = makeTileImage(image_.view(), treatment_);
        return encodeImage(made.view(), type_, treatment_.resolution, profile_);
    }

  private:
    Image image_;
    TileTreatment treatment_;
    TileFormat type_;
    ColourProfile profile_;
    int next_ = 0;
};

} // namespace

std::unique_ptr<TileSink> openTileSink(const TileRect& tile, const TileTreatment& treatment,
                                       TileFormat type, const ColourProfile& profile) {
    const auto encoder = [&](int width, int height) {
        return openRowEncoder(width, height, type, treatment.resolution, profile);
    };
    if (treatment.turned) {
        return std::make_unique<CollectingSink>(tile, treatment, type, profile);
    }
    if (!treatment.trims) {
        return std::make_unique<PlainSink>(encoder(tile.width(), tile.height()));
    }
    const CompensationPlan plan = asPart(TileOutcome::compensationFailed, [&] {
        return planCompensation(tile.width(), tile.height(), treatment.dotsPerInch,
                                *treatment.trims);
    });
    if (plan.imageWidth != tile.width() || plan.imageHeight != tile.height()) {
        return std::make_unique<CollectingSink>(tile, treatment, type, profile);
    }
    return std::make_unique<BorderSink>(encoder(plan.width(), plan.height()), plan);
}

} // namespace veldara
