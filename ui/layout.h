// Where everything on the table stands in the window.
#ifndef TESSARIN_UI_LAYOUT_H
#define TESSARIN_UI_LAYOUT_H

#include <array>
#include <cstdint>

#include "core/types.h"

// The handheld's client area: the table is designed for it, and every other size is that design
// enlarged.
inline constexpr std::int32_t DesignWidth = 240;
inline constexpr std::int32_t DesignHeight = 294;

// The whole scales that there are pictures for; at any other those of the next larger one are
// reduced. Screens that take a table of more than four times its design have pixels so small that
// one set does for all of them.
inline constexpr std::array<std::int32_t, 5> PictureScales = {1, 2, 3, 4, 8};

// The table grows no larger.
inline constexpr std::int32_t MaxScale = PictureScales.back();

// A card image, inside the card's outline.
inline constexpr std::int32_t CardImageWidth = 43;
inline constexpr std::int32_t CardImageHeight = 70;

// In pixels of the client area; right and bottom are one past the last pixel.
struct Area {
    std::int32_t left;
    std::int32_t top;
    std::int32_t right;
    std::int32_t bottom;
};

constexpr std::int32_t Width(const Area& area) {
    return area.right - area.left;
}
constexpr std::int32_t Height(const Area& area) {
    return area.bottom - area.top;
}
constexpr bool Contains(const Area& area, std::int32_t x, std::int32_t y) {
    return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

// How much larger than its design the table is: so many pixels for so many design pixels.
struct Scale {
    std::int32_t pixels;
    std::int32_t design;
    bool operator==(const Scale&) const = default;
};

// A design measure of 0 or more in pixels, rounded.
constexpr std::int32_t ScaledBy(const Scale& scale, std::int32_t designPixels) {
    return (designPixels * scale.pixels * 2 + scale.design) / (2 * scale.design);
}

// The smallest scale with pictures that is no smaller, or else the largest.
constexpr std::int32_t PictureScale(const Scale& scale) {
    for (const std::int32_t pictures : PictureScales) {
        if (pictures * scale.design >= scale.pixels) {
            return pictures;
        }
    }
    return MaxScale;
}

// Where the table stands in the client area, and how large it is.
struct Placement {
    Scale scale;
    std::int32_t left;
    std::int32_t top;
    bool operator==(const Placement&) const = default;
};

// The largest table that fits the client area, from scale 1 to MaxScale, in its middle. In a
// smaller area it stands at scale 1 in the top left corner.
Placement FitTable(std::int32_t clientWidth, std::int32_t clientHeight);

struct Layout {
    Scale scale;
    std::array<Area, HandSize> cards; // the outline; the image stands 2 design pixels inside
    std::array<Area, HandSize> held;
    Area names;                  // paytable
    Area payouts;                // paytable
    std::int32_t paytableHeight; // of both, in design pixels
    Area coinsIn;
    Area credits;
    Area prompt; // a tap here deals or draws
    Area paid;
    Area status;
    Area menuButton;
    Area gamesButton;
    Area betButton;
    Area dealButton;
    std::int32_t menuRight; // popup menus are right-aligned here
    std::int32_t menuTop;
};

// For a table placed so, whose bottom edge is at designBottom in design pixels.
Layout ComputeLayout(const Placement& placement, std::int32_t designBottom = DesignHeight);

// The largest whole scale, from 1 to MaxScale, at which a window with a frame of the given extra
// width and height takes at most two thirds of the work area either way.
std::int32_t StartingScale(std::int32_t workWidth, std::int32_t workHeight, std::int32_t frameWidth,
                           std::int32_t frameHeight);

#endif
