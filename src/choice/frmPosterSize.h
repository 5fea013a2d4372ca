// The dialog that chooses the poster by its size: a width or a height, or a quality word to keep;
// the choices come best first, with the sheets drawn on the photo and the poster on a wall.
#pragma once

#include "choice/choice_texts.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <memory>
#include <vector>

namespace veldara {

// The state of the poster that a choice starts from.
struct PosterState {
    ChoiceLimits limits; // of the loaded photo
    Units units = Units::inches;
    std::vector<PaperRecord> papers; // of the units
    int paper = 0;                   // the current one
    std::optional<EdgeTrims> trims;
    double width = 0; // of the poster as it is now, inches
    std::shared_ptr<const Image> photo;
};

// What the dialog needs of the main window.
class PosterSizeOwner {
  public:
    virtual ~PosterSizeOwner() = default;

    // Nothing while no photo is loaded.
    virtual std::optional<PosterState> posterState() const = 0;

    // Sets paper, tile counts and tile rotation, and redraws once. The paper's index is that of
    // PosterState::papers.
    virtual void applyPosterChoice(int paper, int tilesWide, int tilesHigh, bool tilesTurned) = 0;
};

class frmPosterSize : public Window {
  public:
    Frame fraWish{"fraWish"};
    OptionButton opbWidth{"opbWidth"};
    TextBox txtWidth{"txtWidth"};
    Label lblWidthUnits{"lblWidthUnits"}; // "inches", or "mm = 91.4 cm"
    OptionButton opbHeight{"opbHeight"};
    TextBox txtHeight{"txtHeight"};
    Label lblHeightUnits{"lblHeightUnits"};
    OptionButton opbQuality{"opbQuality"};
    ComboBox cmbQuality{"cmbQuality"};

    Frame fraPaper{"fraPaper"};
    OptionButton opbThisPaper{"opbThisPaper"};
    OptionButton opbAnyPaper{"opbAnyPaper"};
    CheckBox chkOnTheirSide{"chkOnTheirSide"};

    Frame fraChoices{"fraChoices"};
    ListBox lstChoices{"lstChoices"};
    Picture picChoices{"picChoices"}; // the sheets of every choice on the photo, numbered as listed
    Picture picRoom{"picRoom"};
    Label lblResult{"lblResult"}; // about the chosen one, or why there is none

    Button cmdOk{"cmdOk"};
    Button cmdCancel{"cmdCancel"};

    frmPosterSize(Platform& platform, Screen& screen, PosterSizeOwner& owner);

    // Opens the dialog afresh with the poster's present width as the wish. Does nothing without a
    // photo.
    void Open();

    void opbWish_Click();
    void txtWidth_Change();
    void txtHeight_Change();
    void cmbQuality_Click();
    void papers_Click();
    void lstChoices_Click();
    void picChoices_MouseDown(int x, int y);
    void cmdOk_Click();
    void cmdCancel_Click();

    // How picChoices is divided.
    static constexpr int galleryColumns = 4;
    static constexpr int galleryRows = 2;

  private:
    void fillTexts();
    void bindHandlers();
    void showState();
    void showUnits();
    // The other side's text, which follows the photo.
    void follow(const TextBox& entered, TextBox& other, double ratio);
    PosterWish wish() const;
    void update();
    void showChoices();
    void showResult();
    void drawPictures();
    void drawGalleryPicture();
    void drawRoomPicture();
    const PosterChoice* chosen() const;
    int cellWidth() const { return picChoices.width() / galleryColumns; }
    int cellHeight() const { return picChoices.height() / galleryRows; }

    Platform& platform_;
    PosterSizeOwner& owner_;
    PosterState state_;
    Image thumbnail_;
    std::vector<ChoicePaper> papers_; // that may be used now
    PosterChoices choices_;
    bool filling_ = false; // the dialog itself fills controls: handlers do nothing
};

} // namespace veldara
