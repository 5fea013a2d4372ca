#include "sheets/jpeg_pieces.h"

#include "platform/error.h"
#include "platform/image/colour.h"
#include "platform/text/path_text.h"
#include "sheets/jpeg_cutter.h"

namespace veldara {
namespace {

Error unreadable(const std::string& name, const Error& reason) {
    return Error("Could not read \"" + name + "\": " + reason.what() + ".");
}

class JpegPieces : public PieceSource {
  public:
    JpegPieces(std::string name, std::unique_ptr<JpegCutter> cutter)
        : name_(std::move(name)), cutter_(std::move(cutter)) {
        const JpegFacts& facts = cutter_->facts();
        facts_.width = facts.width;
        facts_.height = facts.height;
        facts_.orientation = facts.orientation;
        facts_.colour = facts.components == 1   ? PieceColour::grey
                        : facts.components == 4 ? PieceColour::cmyk
                                                : PieceColour::rgb;
        facts_.filter = PieceFilter::dct;
        facts_.inverted = facts.components == 4 && facts.inksInverted;
        facts_.colourTransform = facts.components == 1 ? -1 : facts.colourTransform;
        facts_.profile = facts_.colour == PieceColour::grey
                             ? profileForGreyRows(facts.profile).value_or(ColourProfile{})
                             : facts.profile;
    }

    const PieceFacts& facts() const override { return facts_; }

    PixelRectangle pieceFor(const PixelRectangle& wanted) const override {
        return cutter_->pieceFor(wanted);
    }

    void start(std::vector<PixelRectangle> wanted, int /*across*/) override {
        attempt([&] { cutter_->start(wanted); });
    }

    std::vector<std::uint8_t> next(const std::function<void()>& stopped) override {
        do {
            stopped();
        } while (!cutter_->waitReady(std::chrono::milliseconds(50)));
        JpegPiece piece;
        attempt([&] { piece = cutter_->next(); });
        return std::move(piece.bytes);
    }

    bool wantSmall(const PixelRectangle& area, const SmallSize& size) override {
        return cutter_->wantSmall(area, size);
    }

    Image small(const std::function<void()>& stopped) override {
        std::optional<Image> picture;
        while (!picture) {
            stopped();
            attempt([&] { picture = cutter_->small(std::chrono::milliseconds(50)); });
        }
        return std::move(*picture);
    }

  private:
    template <class Work>
    void attempt(Work&& work) {
        try {
            work();
        } catch (const Error& error) {
            throw unreadable(name_, error);
        }
    }

    std::string name_;
    std::unique_ptr<JpegCutter> cutter_;
    PieceFacts facts_;
};

} // namespace

std::unique_ptr<PieceSource> openJpegPieces(const std::filesystem::path& photo) {
    const std::string name = pathText(photo);
    std::unique_ptr<JpegCutter> cutter;
    try {
        cutter = std::make_unique<JpegCutter>(openFileBytes(photo));
    } catch (const Error& error) {
        throw unreadable(name, error);
    }
    if (!cutter->fitsMemory()) {
        return nullptr;
    }
    return std::make_unique<JpegPieces>(name, std::move(cutter));
}

} // namespace veldara
