// Where everything on the table stands, computed once from the client area's bottom edge.
#ifndef TESSARIN_UI_LAYOUT_H
#define TESSARIN_UI_LAYOUT_H

#include <array>
#include <cstdint>

#include "core/types.h"

// The handheld's client area: the table is designed for it, and every other size is a whole
// multiple, the scale.
inline constexpr std::int32_t DesignWidth = 240;
inline constexpr std::int32_t DesignHeight = 294;

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

struct Layout {
    std::array<Area, HandSize> cards; // the outline; the image stands 2 design pixels inside
    std::array<Area, HandSize> held;
    Area names;   // paytable
    Area payouts; // paytable
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

// For a client area whose bottom edge is clientBottom, in pixels, at a scale of 1 or more.
Layout ComputeLayout(std::int32_t clientBottom, std::int32_t scale);

// The largest whole scale, from 1 to maxScale, at which a window with a frame of the given extra
// width and height takes at most two thirds of the work area either way.
std::int32_t StartingScale(std::int32_t workWidth, std::int32_t workHeight, std::int32_t frameWidth,
                           std::int32_t frameHeight, std::int32_t maxScale);

#endif
