#include "layout/arrow_pad.h"

#include <vector>

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(ArrowPad, HasTwoBandsAndDeadCorners) {
    EXPECT_EQ(arrowDirectionAt(10, 50, 100, 100), arrowLeft);
    EXPECT_EQ(arrowDirectionAt(90, 50, 100, 100), arrowRight);
    EXPECT_EQ(arrowDirectionAt(50, 50, 100, 100), arrowRight); // the middle of all
    EXPECT_EQ(arrowDirectionAt(50, 10, 100, 100), arrowUp);
    EXPECT_EQ(arrowDirectionAt(50, 90, 100, 100), arrowDown);
    EXPECT_EQ(arrowDirectionAt(10, 10, 100, 100), arrowNone);
    EXPECT_EQ(arrowDirectionAt(90, 90, 100, 100), arrowNone);
    EXPECT_EQ(arrowDirectionAt(50, 25, 100, 100), arrowUp); // the band's edge is outside it
    EXPECT_EQ(arrowDirectionAt(25, 25, 100, 100), arrowNone);
}

TEST(ArrowPad, MeasuresBothAgainstTheHeight) {
    // On a pad twice as wide as high, x = 50 is in the middle band by the height.
    EXPECT_EQ(arrowDirectionAt(50, 10, 200, 100), arrowUp);
    EXPECT_EQ(arrowDirectionAt(100, 10, 200, 100), arrowNone);
    EXPECT_EQ(arrowDirectionAt(99, 50, 200, 100), arrowLeft);
}

TEST(PanSteps, GrowAndStopAfterThirtySix) {
    EXPECT_EQ(panStep(0), 1);
    EXPECT_EQ(panStep(1), 2);
    EXPECT_EQ(panStep(4), 2);
    EXPECT_EQ(panStep(5), 5);
    EXPECT_EQ(panStep(15), 5);
    EXPECT_EQ(panStep(16), 10);
    EXPECT_EQ(panStep(25), 10);
    EXPECT_EQ(panStep(26), 20);
    EXPECT_EQ(panStep(35), 20);
    EXPECT_EQ(panStep(36), 0);
    EXPECT_EQ(panStep(1000), 0);
}

TEST(PanSteps, MoveTowardsTheArrowAndStopAtTheEdges) {
    EXPECT_EQ(stepPan(arrowUp, 0, {100, 100}).pan, (Pan{100, 99}));
    EXPECT_EQ(stepPan(arrowRight, 1, {100, 100}).pan, (Pan{102, 100}));
    EXPECT_EQ(stepPan(arrowDown, 5, {100, 100}).pan, (Pan{100, 105}));
    EXPECT_EQ(stepPan(arrowLeft, 16, {100, 100}).pan, (Pan{90, 100}));
    EXPECT_EQ(stepPan(arrowLeft, 30, {5, 100}).pan, (Pan{0, 100}));
    EXPECT_EQ(stepPan(arrowRight, 30, {195, 100}).pan, (Pan{200, 100}));
    EXPECT_FALSE(stepPan(arrowLeft, 0, {0, 100}).stepped);
    EXPECT_FALSE(stepPan(arrowRight, 0, {200, 100}).stepped);
    EXPECT_FALSE(stepPan(arrowUp, 0, {100, 0}).stepped);
    EXPECT_FALSE(stepPan(arrowDown, 0, {100, 200}).stepped);
    EXPECT_FALSE(stepPan(arrowNone, 0, {100, 100}).stepped);
}

TEST(PanSteps, OfAHeldPadStandStillInTheEnd) {
    Pan pan{0, 100};
    int repeat = 0;
    std::vector<int> moves;
    for (int tick = 0; tick < 60; ++tick) {
        const PanStepResult result = stepPan(arrowRight, repeat, pan);
        if (!result.stepped) {
            break;
        }
        moves.push_back(result.pan.horzPos - pan.horzPos);
        pan = result.pan;
        ++repeat;
    }
    EXPECT_EQ((std::vector<int>(moves.begin(), moves.begin() + 6)),
              (std::vector<int>{1, 2, 2, 2, 2, 5}));
    EXPECT_EQ(pan.horzPos, 200);
}

TEST(PanSteps, AfterTheLastStillCountAsSteps) {
    const PanStepResult result = stepPan(arrowRight, 36, {50, 50});
    EXPECT_TRUE(result.stepped);
    EXPECT_EQ(result.pan, (Pan{50, 50}));
}

} // namespace
} // namespace veldara
