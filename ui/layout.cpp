#include "ui/layout.h"

namespace {

constexpr std::int32_t CardPitch = 48;
constexpr std::int32_t ButtonHeight = 25;

Area Scaled(const Area& area, std::int32_t scale) {
    return {area.left * scale, area.top * scale, area.right * scale, area.bottom * scale};
}

} // namespace

// Everything is placed in design pixels first and scaled last, so that a whole scale is the design
// enlarged and nothing else.
Layout ComputeLayout(std::int32_t clientBottom, std::int32_t scale) {
    const std::int32_t bottom = clientBottom / scale;
    Layout layout{};
    std::array<Area, HandSize> cards{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        const std::int32_t left = 1 + CardPitch * static_cast<std::int32_t>(i);
        cards[i] = {left, bottom - 115, left + 47, bottom - 41};
        layout.cards[i] = Scaled(cards[i], scale);
        layout.held[i] = Scaled({left, bottom - 129, left + 47, bottom - 116}, scale);
    }
    const Area& first = cards[0];
    const Area& last = cards[4];
    const std::int32_t below = first.bottom;
    layout.names = Scaled({2, 15, last.left - 56, bottom - 129}, scale);
    layout.payouts = Scaled({last.left - 54, 15, last.left - 2, bottom - 129}, scale);
    layout.coinsIn = Scaled({first.left + 2, below + 1, cards[1].right - 2, below + 15}, scale);
    layout.credits = Scaled({cards[3].left - 14, below + 1, last.right, below + 15}, scale);
    layout.prompt = Scaled({first.left + 14, below + 16, last.right - 14, below + 43}, scale);
    layout.paid = Scaled({last.left - 2, 0, last.right, 14}, scale);

    // The button column starts a pixel left of the last card and is as wide as a card; the buttons
    // stand a pixel right of its left edge.
    const std::int32_t column = last.left - 1;
    const std::int32_t buttonLeft = column + 1;
    const std::int32_t buttonRight = buttonLeft + Width(last);
    const auto button = [&](std::int32_t top, std::int32_t end) {
        return Scaled({buttonLeft, top, buttonRight, end}, scale);
    };
    layout.status = Scaled({2, 0, column, 14}, scale);
    layout.menuButton = button(15, 15 + ButtonHeight);
    layout.gamesButton = button(41, 41 + ButtonHeight);
    layout.betButton = button(93, 93 + ButtonHeight);
    layout.dealButton = button(119, bottom - 129);
    layout.menuRight = column * scale;
    layout.menuTop = 15 * scale;
    return layout;
}

std::int32_t StartingScale(std::int32_t workWidth, std::int32_t workHeight, std::int32_t frameWidth,
                           std::int32_t frameHeight, std::int32_t maxScale) {
    std::int32_t scale = maxScale;
    while (scale > 1 && (3 * (DesignWidth * scale + frameWidth) > 2 * workWidth ||
                         3 * (DesignHeight * scale + frameHeight) > 2 * workHeight)) {
        --scale;
    }
    return scale;
}
