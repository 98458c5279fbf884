#include "ui/layout.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

constexpr Placement AtScale(std::int32_t scale) {
    return {{scale, 1}, 0, 0};
}

struct Expected {
    const char* name;
    Area placed;
    Area expected;
};

void ExpectAreas(const std::vector<Expected>& areas) {
    for (const auto& [name, placed, expected] : areas) {
        EXPECT_EQ(placed.left, expected.left) << name;
        EXPECT_EQ(placed.top, expected.top) << name;
        EXPECT_EQ(placed.right, expected.right) << name;
        EXPECT_EQ(placed.bottom, expected.bottom) << name;
    }
}

// Every area of a layout with the one it should be, all moved and enlarged alike.
std::vector<Expected> Pairs(const Layout& layout, std::int32_t bottom) {
    std::vector<Expected> pairs;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const std::int32_t left = 1 + 48 * static_cast<std::int32_t>(i);
        pairs.push_back({"card", layout.cards[i], {left, bottom - 115, left + 47, bottom - 41}});
        pairs.push_back({"label", layout.held[i], {left, bottom - 129, left + 47, bottom - 116}});
    }
    pairs.push_back({"names", layout.names, {2, 15, 137, bottom - 129}});
    pairs.push_back({"payouts", layout.payouts, {139, 15, 191, bottom - 129}});
    pairs.push_back({"coins in", layout.coinsIn, {3, bottom - 40, 94, bottom - 26}});
    pairs.push_back({"credits", layout.credits, {131, bottom - 40, 240, bottom - 26}});
    pairs.push_back({"prompt", layout.prompt, {15, bottom - 25, 226, bottom + 2}});
    pairs.push_back({"paid", layout.paid, {191, 0, 240, 14}});
    pairs.push_back({"status", layout.status, {2, 0, 192, 14}});
    pairs.push_back({"menu", layout.menuButton, {193, 15, 240, 40}});
    pairs.push_back({"games", layout.gamesButton, {193, 41, 240, 66}});
    pairs.push_back({"bet", layout.betButton, {193, 93, 240, 118}});
    pairs.push_back({"deal", layout.dealButton, {193, 119, 240, bottom - 129}});
    return pairs;
}

std::vector<Expected> Moved(std::vector<Expected> pairs, std::int32_t scale, std::int32_t x,
                            std::int32_t y) {
    for (Expected& pair : pairs) {
        Area& area = pair.expected;
        area = {area.left * scale + x, area.top * scale + y, area.right * scale + x,
                area.bottom * scale + y};
    }
    return pairs;
}

} // namespace

TEST(Layout, HasTheHandheldsMeasuresAtScaleOne) {
    const Layout layout = ComputeLayout(AtScale(1));
    ExpectAreas(Pairs(layout, 294));
    EXPECT_EQ(layout.menuRight, 192);
    EXPECT_EQ(layout.menuTop, 15);
    EXPECT_EQ(layout.paytableHeight, 150);
    EXPECT_EQ(layout.cards[4].right, DesignWidth);
    EXPECT_EQ(CardImageWidth, Width(layout.cards[0]) - 4);
    EXPECT_EQ(CardImageHeight, Height(layout.cards[0]) - 4);
}

TEST(Layout, FollowsTheBottomOfTheClientArea) {
    for (const std::int32_t bottom : {268, 293, 320}) {
        const Layout layout = ComputeLayout(AtScale(1), bottom);
        ExpectAreas(Pairs(layout, bottom));
        EXPECT_EQ(layout.paytableHeight, bottom - 144);
    }
}

TEST(Layout, IsTheDesignEnlargedAndMovedAtEveryWholeScale) {
    for (std::int32_t scale = 1; scale <= MaxScale; ++scale) {
        const Layout layout = ComputeLayout({{scale, 1}, 37, 11});
        ExpectAreas(Moved(Pairs(layout, 294), scale, 37, 11));
        EXPECT_EQ(layout.menuRight, 192 * scale + 37);
        EXPECT_EQ(layout.menuTop, 15 * scale + 11);
        EXPECT_EQ(layout.paytableHeight, 150) << "in design pixels";
    }
}

// Edges that meet in the design meet at every size, and no area is lost.
TEST(Layout, KeepsItsOrderBetweenTheScales) {
    for (std::int32_t width = DesignWidth; width <= DesignWidth * MaxScale; width += 7) {
        const Layout layout = ComputeLayout(FitTable(width, 5000));
        for (std::size_t i = 1; i < HandSize; ++i) {
            EXPECT_LT(layout.cards[i - 1].right, layout.cards[i].left + 1);
            EXPECT_EQ(layout.cards[i].left, layout.held[i].left);
            EXPECT_EQ(layout.cards[i].right, layout.held[i].right);
        }
        EXPECT_LT(layout.names.right, layout.payouts.left);
        EXPECT_EQ(layout.names.bottom, layout.held[0].top);
        EXPECT_EQ(layout.dealButton.bottom, layout.held[0].top);
        EXPECT_LE(layout.cards[4].right, width);
    }
}

TEST(Layout, FitsTheLargestTableIntoTheMiddle) {
    EXPECT_EQ(FitTable(240, 294), (Placement{{240, 240}, 0, 0}));
    EXPECT_EQ(FitTable(480, 588), (Placement{{480, 240}, 0, 0}));
    EXPECT_EQ(FitTable(3840, 2160), (Placement{{2160, 294}, (3840 - 1763) / 2, 0}));
    EXPECT_EQ(FitTable(480, 400), (Placement{{400, 294}, (480 - 327) / 2, 0}));
    EXPECT_EQ(FitTable(360, 2000), (Placement{{360, 240}, 0, (2000 - 441) / 2}));
    EXPECT_EQ(FitTable(5000, 5000), (Placement{{8, 1}, (5000 - 1920) / 2, (5000 - 2352) / 2}));
}

TEST(Layout, StaysAtScaleOneInTheCornerOfASmallerArea) {
    for (const auto& [width, height] : std::vector<std::pair<std::int32_t, std::int32_t>>{
             {239, 294}, {240, 293}, {1000, 100}, {0, 0}}) {
        EXPECT_EQ(FitTable(width, height), (Placement{{1, 1}, 0, 0})) << width << ' ' << height;
    }
}

TEST(Layout, ScalesMeasuresToTheNearestPixel) {
    EXPECT_EQ(ScaledBy({3, 1}, 7), 21);
    EXPECT_EQ(ScaledBy({3, 2}, 1), 2) << "half a pixel goes up";
    EXPECT_EQ(ScaledBy({4, 3}, 1), 1);
    EXPECT_EQ(ScaledBy({5, 3}, 1), 2);
    EXPECT_EQ(ScaledBy({3, 2}, 0), 0);
}

TEST(Layout, TakesThePicturesOfTheNextLargerScale) {
    EXPECT_EQ(PictureScale({240, 240}), 1);
    EXPECT_EQ(PictureScale({241, 240}), 2);
    EXPECT_EQ(PictureScale({480, 240}), 2);
    EXPECT_EQ(PictureScale({721, 240}), 4);
    EXPECT_EQ(PictureScale({960, 240}), 4);
    EXPECT_EQ(PictureScale({961, 240}), 8);
    EXPECT_EQ(PictureScale({5, 1}), 8);
    EXPECT_EQ(PictureScale({8, 1}), 8);
}

TEST(Layout, StartsAtTheLargestScaleOfTwoThirdsOfTheScreen) {
    EXPECT_EQ(StartingScale(720, 882, 0, 0), 2) << "just two thirds";
    EXPECT_EQ(StartingScale(719, 882, 0, 0), 1);
    EXPECT_EQ(StartingScale(720, 881, 0, 0), 1);
    EXPECT_EQ(StartingScale(720, 882, 1, 0), 1) << "the frame is part of the window";
    EXPECT_EQ(StartingScale(720, 882, 0, 1), 1);
    EXPECT_EQ(StartingScale(1280, 1024, 8, 27), 2);
    EXPECT_EQ(StartingScale(1920, 1080, 16, 39), 2);
    EXPECT_EQ(StartingScale(3840, 2160, 16, 39), 4);
    EXPECT_EQ(StartingScale(5120, 2880, 16, 39), 6);
    EXPECT_EQ(StartingScale(7680, 3570, 0, 0), 8) << "just two thirds";
    EXPECT_EQ(StartingScale(10000, 10000, 0, 0), 8) << "there are no larger pictures";
    EXPECT_EQ(StartingScale(240, 320, 8, 27), 1) << "at least 1, whatever the screen";
    EXPECT_EQ(StartingScale(0, 0, 0, 0), 1);
}

TEST(Layout, AnAreaHoldsItsFirstPixelsAndNotItsLast) {
    const Area area = {10, 20, 15, 23};
    EXPECT_TRUE(Contains(area, 10, 20));
    EXPECT_TRUE(Contains(area, 14, 22));
    EXPECT_FALSE(Contains(area, 15, 22));
    EXPECT_FALSE(Contains(area, 14, 23));
    EXPECT_FALSE(Contains(area, 9, 20));
    EXPECT_FALSE(Contains(area, 10, 19));
}
