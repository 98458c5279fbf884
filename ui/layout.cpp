#include "ui/layout.h"

namespace {

constexpr std::int32_t CardPitch = 48;
constexpr std::int32_t ButtonHeight = 25;

Area Placed(const Area& area, const Placement& at) {
    return {at.left + ScaledBy(at.scale, area.left), at.top + ScaledBy(at.scale, area.top),
            at.left + ScaledBy(at.scale, area.right), at.top + ScaledBy(at.scale, area.bottom)};
}

// The larger of two scales is the one with more pixels for a design pixel.
bool Larger(const Scale& a, const Scale& b) {
    return a.pixels * b.design > b.pixels * a.design;
}

} // namespace

Placement FitTable(std::int32_t clientWidth, std::int32_t clientHeight) {
    Scale scale = {clientWidth, DesignWidth};
    const Scale tall = {clientHeight, DesignHeight};
    if (Larger(scale, tall)) {
        scale = tall;
    }
    if (Larger({1, 1}, scale)) {
        return {{1, 1}, 0, 0};
    }
    if (Larger(scale, {MaxScale, 1})) {
        scale = {MaxScale, 1};
    }
    return {scale, (clientWidth - ScaledBy(scale, DesignWidth)) / 2,
            (clientHeight - ScaledBy(scale, DesignHeight)) / 2};
}

// Everything is placed in design pixels first and scaled last, so that any size is the design
// enlarged and nothing else.
Layout ComputeLayout(const Placement& placement, std::int32_t designBottom) {
    const std::int32_t bottom = designBottom;
    const auto placed = [&](const Area& area) { return Placed(area, placement); };
    Layout layout{};
    layout.scale = placement.scale;
    std::array<Area, HandSize> cards{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        const std::int32_t left = 1 + CardPitch * static_cast<std::int32_t>(i);
        cards[i] = {left, bottom - 115, left + 47, bottom - 41};
        layout.cards[i] = placed(cards[i]);
        layout.held[i] = placed({left, bottom - 129, left + 47, bottom - 116});
    }
    const Area& first = cards[0];
    const Area& last = cards[4];
    const std::int32_t below = first.bottom;
    layout.names = placed({2, 15, last.left - 56, bottom - 129});
    layout.payouts = placed({last.left - 54, 15, last.left - 2, bottom - 129});
    layout.paytableHeight = bottom - 129 - 15;
    layout.coinsIn = placed({first.left + 2, below + 1, cards[1].right - 2, below + 15});
    layout.credits = placed({cards[3].left - 14, below + 1, last.right, below + 15});
    layout.prompt = placed({first.left + 14, below + 16, last.right - 14, below + 43});
    layout.paid = placed({last.left - 2, 0, last.right, 14});

    // The button column starts a pixel left of the last card and is as wide as a card; the buttons
    // stand a pixel right of its left edge.
    const std::int32_t column = last.left - 1;
    const std::int32_t buttonLeft = column + 1;
    const std::int32_t buttonRight = buttonLeft + Width(last);
    const auto button = [&](std::int32_t top, std::int32_t end) {
        return placed({buttonLeft, top, buttonRight, end});
    };
    layout.status = placed({2, 0, column, 14});
    layout.menuButton = button(15, 15 + ButtonHeight);
    layout.gamesButton = button(41, 41 + ButtonHeight);
    layout.betButton = button(93, 93 + ButtonHeight);
    layout.dealButton = button(119, bottom - 129);
    layout.menuRight = placement.left + ScaledBy(placement.scale, column);
    layout.menuTop = layout.menuButton.top;
    return layout;
}

std::int32_t StartingScale(std::int32_t workWidth, std::int32_t workHeight, std::int32_t frameWidth,
                           std::int32_t frameHeight) {
    std::int32_t scale = MaxScale;
    while (scale > 1 && (3 * (DesignWidth * scale + frameWidth) > 2 * workWidth ||
                         3 * (DesignHeight * scale + frameHeight) > 2 * workHeight)) {
        --scale;
    }
    return scale;
}
