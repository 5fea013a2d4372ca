// A user who works at random all day, also while the program works.
#pragma once

#include "app/frmMain.h"

#include <functional>
#include <random>

namespace veldara::test {

class RandomUser : public Screen {
  public:
    explicit RandomUser(unsigned seed) : random_(seed) {}

    // What the user looks at, from now on.
    void sitDown(frmMain& main) { main_ = &main; }
    void choosePhoto();
    void actOnce();
    // Lets the time pass that progress windows wait for.
    void tickProgress();

    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
    int saves() const { return saves_; }

    // The windows that come up.
    void show(Window& window) override;
    void hide(Window& window) override;
    void showModal(Window& window) override;
    void endProgram() override {}

  private:
    void useTiles();
    void useMouse();
    void useDialogs();
    void saveTiles(frmSaveTiles& dialog);
    void changePaper(frmTileSize& dialog);
    void changeProfile(frmBtm& dialog);

    std::mt19937 random_;
    frmMain* main_ = nullptr;
    frmMsg* progress_ = nullptr;
    bool ticking_ = false;
    bool modal_ = false;
    int saves_ = 0;
};

} // namespace veldara::test
