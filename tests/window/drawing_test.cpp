#include <algorithm>
#include <set>
#include <string>

#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// What the window shows, by its pixels.

namespace {

class Drawing : public WindowTest {};

// The ground of a row's cells: a point of each where no text is.
struct Grounds {
    std::uint32_t name;
    std::uint32_t payout;
    bool operator==(const Grounds&) const = default;
};

Grounds GroundsOf(const RunningProgram& program, const Picture& client, std::int32_t rowCount,
                  std::int32_t row) {
    const int s = program.scale;
    const int height = 150 / rowCount;
    const int y = (15 + row * height + 2) * s;
    return {client.At(133 * s, y), client.At(142 * s, y)};
}

// Another hand's drawing over the whole table.
void SmearOver(const RunningProgram& program) {
    const HDC window = GetDC(program.window);
    RECT client;
    GetClientRect(program.window, &client);
    FillRect(window, &client, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
    ReleaseDC(program.window, window);
}

// The most columns in a row, between the first ink and the last, that are of the ground alone.
int WidestGap(const Picture& picture, std::uint32_t ground) {
    int widest = 0;
    int lastInk = -1;
    for (int x = 0; x < picture.width; ++x) {
        bool ink = false;
        for (int y = 0; y < picture.height; ++y) {
            ink = ink || picture.At(x, y) != ground;
        }
        if (ink) {
            widest = lastInk < 0 ? 0 : std::max(widest, x - lastInk - 1);
            lastInk = x;
        }
    }
    return widest;
}

constexpr Grounds plain = {DarkNavy, DarkRed};
constexpr Grounds lit = {DarkRed, Yellow};

} // namespace

TEST_F(Drawing, PayoutColumnsOfEveryGameAndBet) {
    for (std::uint32_t id = 0; id < GameCount; ++id) {
        SCOPED_TRACE(id);
        SetSetting(L"Lastgame", id);
        GameDescriptor game{};
        LoadGame(game, static_cast<std::int32_t>(id));
        const RunningProgram program = StartProgram();
        for (const int bet : {5, 1, 2, 3, 4}) {
            ASSERT_EQ(ControlText(program, IDC_BET_ONE), L"Bet " + std::to_wstring(bet));
            for (std::int32_t row = 0; row < game.rowCount; ++row) {
                EXPECT_TRUE(ShowsRow(program, game, row, bet, false)) << bet << " row " << row;
            }
            EXPECT_TRUE(ShowsCoinsIn(program, bet));
            Do(program, IDC_BET_ONE);
        }
        CloseProgram(program);
    }
}

TEST_F(Drawing, OnlyTheRowOfThePatHandIsLitAtEveryBet) {
    SetSetting(L"Sound", 0);
    const std::uint32_t seed = FindSeed(IsWinning);
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    for (const std::uint32_t bet : {1U, 2U, 3U, 4U, 5U}) {
        SetSetting(L"Lastbet", bet);
        const RunningProgram program = StartUntrained(seed);
        Do(program, IDC_DEAL_DRAW);
        const auto row = static_cast<std::int32_t>(table.rank);
        EXPECT_TRUE(ShowsRow(program, table.game, row, static_cast<std::int32_t>(bet), true));
        const Picture client = GrabClient(program);
        for (std::int32_t other = 0; other < table.game.rowCount; ++other) {
            EXPECT_EQ(GroundsOf(program, client, table.game.rowCount, other),
                      other == row ? lit : plain)
                << "bet " << bet << " row " << other;
        }
        CloseProgram(program);
    }
}

// The top row stands for all when it is drawn anew.
TEST_F(Drawing, ARoyalFlushDrawnLightsTheTopRowAlone) {
    SetSetting(L"Sound", 0);
    HoldPattern hold = 0;
    const auto drawsRoyal = [&](const Table& dealt) {
        if (!IsWinning(dealt)) {
            return false;
        }
        for (hold = 0; hold < HoldAll; ++hold) {
            if (ForetoldDraw(dealt, hold).after == 0) {
                return true;
            }
        }
        return false;
    };
    const std::uint32_t seed = FindSeed(drawsRoyal);
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    const RunningProgram program = StartUntrained(seed);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
    Hold(program, hold);
    Do(program, IDC_DEAL_DRAW);
    Do(program, IDC_BET_ONE); // the whole of it at once
    EXPECT_TRUE(ShowsPaid(program, 4000));
    ForetellDraw(table, hold);
    BetOne(table);
    ExpectTable(program, table);
}

TEST_F(Drawing, ARoyalFlushPaysThousandAtFourCoinsAndFourThousandAtFive) {
    GameDescriptor game{};
    LoadGame(game, JacksOrBetter);
    EXPECT_EQ(RowPayout(0, game, 4), 1000);
    EXPECT_EQ(RowPayout(0, game, 5), 4000);
    SetSetting(L"Lastbet", 4);
    const RunningProgram program = StartProgram();
    EXPECT_TRUE(ShowsRow(program, game, 0, 4, false));
    Do(program, IDC_BET_ONE);
    EXPECT_TRUE(ShowsRow(program, game, 0, 5, false));
}

TEST_F(Drawing, PromptAndStatusSayWhereTheHandIs) {
    const RunningProgram program = StartUntrained(1);
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"JACKS OR BETTER");
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPrompt(program, HoldAndDraw));
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
}

TEST_F(Drawing, CardsStandOnNavyBesideEachOther) {
    const RunningProgram program = StartProgram();
    const int s = program.scale;
    Picture client;
    ASSERT_TRUE(Eventually([&] {
        client = GrabClient(program);
        return client.At(0, 200 * s) == Navy;
    }));
    for (int i = 0; i < 5; ++i) {
        const int left = (1 + 48 * i) * s;
        EXPECT_EQ(client.At(left - 1, 200 * s), Navy);
        EXPECT_EQ(client.At(left, 200 * s), Black) << "the outline of card " << i;
        EXPECT_EQ(client.At(left + 47 * s - 1, 200 * s), Black);
        EXPECT_EQ(client.At(left + 20 * s, 179 * s), Black);
        EXPECT_EQ(client.At(left + 20 * s, 253 * s - 1), Black);
        EXPECT_EQ(client.At(left, 179 * s), Navy) << "the rounded corner of card " << i;
    }
}

TEST_F(Drawing, TheFourSuitsAndTwoColoursAreToldApart) {
    // Two black suits and two red ones, on cards of one rank.
    const std::uint32_t seed = FindSeed([](const Table& table) {
        std::set<std::int32_t> suits;
        for (const CardRecord& card : table.hand.cards) {
            suits.insert(card.suit);
        }
        return suits.size() == 4;
    });
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    const RunningProgram program = StartUntrained(seed);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
    std::vector<Picture> pips(4);
    for (std::size_t i = 0; i < HandSize; ++i) {
        const Area& card = program.layout.cards[i];
        const int s = program.scale;
        const Area pip = {card.left + 14 * s, card.top + 46 * s, card.left + 39 * s,
                          card.top + 71 * s};
        const Picture picture = Grab(program, pip);
        const auto suit = static_cast<std::size_t>(table.hand.cards[i].suit);
        const auto reds =
            std::count_if(picture.pixels.begin(), picture.pixels.end(), [](std::uint32_t pixel) {
                return (pixel >> 16) > 0x90 && (pixel & 0xFF) < 0x60;
            });
        EXPECT_EQ(reds > 20, suit == 1 || suit == 2);
        pips[suit] = picture;
    }
    for (std::size_t a = 0; a < 4; ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            EXPECT_FALSE(pips[a] == pips[b]);
        }
    }
}

// Deuces Wild fills the columns down to the labels.
TEST_F(Drawing, TurningHoldsLeavesThePaytableWhole) {
    for (const std::uint32_t game : {1U, 0U}) {
        SetSetting(L"Lastgame", game);
        const RunningProgram program = StartUntrained(1);
        Do(program, IDC_DEAL_DRAW);
        const Layout& layout = program.layout;
        const Area paytable = {layout.names.left, layout.names.top, layout.payouts.right,
                               layout.held[0].top + program.scale};
        const Picture before = Crop(GrabStill(program), paytable);
        for (int turn = 0; turn < 2; ++turn) {
            Hold(program, HoldAll);
            ASSERT_TRUE(ShowsHeld(program, 4, turn == 0));
            EXPECT_TRUE(Crop(GrabStill(program), paytable) == before) << "game " << game;
        }
        CloseProgram(program);
    }
}

TEST_F(Drawing, ThePaintedTableIsTheTableAsItWasDrawnPieceByPiece) {
    for (const std::uint32_t game : {0U, 1U, 3U}) {
        SetSetting(L"Lastgame", game);
        const RunningProgram program = StartUntrained(FindSeed(IsWinning));
        Do(program, IDC_DEAL_DRAW);
        Hold(program, 5);
        ASSERT_TRUE(ShowsHeld(program, 2, true));
        const Picture before = GrabStill(program);
        SmearOver(program);
        ASSERT_FALSE(GrabClient(program) == before);
        RedrawWindow(program.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        EXPECT_TRUE(Eventually([&] { return GrabClient(program) == before; })) << "game " << game;
        CloseProgram(program);
    }
}

// Ten digits fit beside "Credits", and the royal flush of the largest bet beside "Paid".
TEST_F(Drawing, LabelsAndLongNumbersDoNotMeet) {
    SetSetting(L"Sound", 0);
    PayFor(4000);
    SetSetting(L"Credits", 2147400000);
    const RunningProgram program = StartUntrained(FindSeed(IsWinning));
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    Do(program, IDC_BET_ONE);
    ASSERT_TRUE(ShowsPaid(program, 4000));
    ASSERT_TRUE(ShowsCredits(program, 2147400000 - 5 + 4000));
    const int s = program.scale;
    const Area& paid = program.layout.paid;
    const Area insidePaid = {paid.left + 2 * s, paid.top + 2 * s, paid.right - 2 * s,
                             paid.bottom - 2 * s};
    EXPECT_GE(WidestGap(Grab(program, insidePaid), White), 2 * s);
    EXPECT_GE(WidestGap(Grab(program, program.layout.credits), Navy), 2 * s);
}

// Drawn in one go, the box never shows less than its label and a number; a box that is cleared and
// then written on would be caught empty now and then.
TEST_F(Drawing, TheCountUpDoesNotFlicker) {
    const RunningProgram program = StartCountUp(2000, 2);
    const Area& box = program.layout.credits;
    const Area label = {0, 0, Width(box) / 2, Height(box)};
    const Area number = {Width(box) / 2, 0, Width(box), Height(box)};
    const Picture wanted =
        Crop(PaintLines(program, box, Navy, {{L"Credits", White, DT_LEFT}}, 15), label);
    const auto legal = [&](const Picture& seen) {
        const Picture digits = Crop(seen, number);
        return Crop(seen, label) == wanted &&
               std::find(digits.pixels.begin(), digits.pixels.end(), White) != digits.pixels.end();
    };
    EXPECT_FALSE(legal(PaintLines(program, box, Navy, {}, 15)));
    EXPECT_FALSE(legal(PaintLines(program, box, Navy, {{L"Credits", White, DT_LEFT}}, 15)));
    int seen = 0;
    std::set<std::vector<std::uint32_t>> amounts;
    const ULONGLONG end = GetTickCount64() + 2500;
    while (GetTickCount64() < end) {
        const Picture picture = Grab(program, box);
        ASSERT_TRUE(legal(picture)) << "grab " << seen;
        amounts.insert(picture.pixels);
        ++seen;
    }
    EXPECT_GT(amounts.size(), 20U) << "the count-up was not seen to run";
}
