#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/picture_file.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// The whole table of every game against a kept picture of it. With TESSARIN_KEEP_PICTURES set the
// fresh ones are kept instead.

namespace {

class Pictures : public WindowTest {};

// For a screen that has room for more than four times the design.
class LargeTable : public WindowTest {};

// Pictures are compared by the mean colours of squares of so many design pixels: letters smoothed
// in another way, or a pixel aside, blur into the same colour.
constexpr int SquareSize = 6;

// The most that two squares may differ in one of their three colours, of 255: letters that are not
// smoothed at all come to 54, another rank on a card to 86 or more.
constexpr int Tolerance = 68;

int MeanOf(const Picture& picture, int left, int top, int size, int shift) {
    int sum = 0;
    for (int y = top; y < top + size; ++y) {
        for (int x = left; x < left + size; ++x) {
            sum += static_cast<int>((picture.At(x, y) >> shift) & 0xFF);
        }
    }
    return sum / (size * size);
}

// The greatest difference between two squares at the same place; 256 for pictures of another size.
int Difference(const Picture& a, const Picture& b, int scale) {
    if (a.width != b.width || a.height != b.height) {
        return 256;
    }
    const int size = SquareSize * scale;
    int greatest = 0;
    for (int y = 0; y + size <= a.height; y += size / 2) {
        for (int x = 0; x + size <= a.width; x += size / 2) {
            for (const int shift : {0, 8, 16}) {
                greatest = std::max(greatest, std::abs(MeanOf(a, x, y, size, shift) -
                                                       MeanOf(b, x, y, size, shift)));
            }
        }
    }
    return greatest;
}

bool Has(const Table& table, bool (*is)(Card card)) {
    return std::any_of(table.hand.cards.begin(), table.hand.cards.end(),
                       [&](const CardRecord& card) { return is(card.code); });
}

bool IsJoker(Card card) {
    return card == JokerCard;
}
bool IsDeuce(Card card) {
    return card != JokerCard && RankOf(card) == RankDeuce;
}
template <std::int32_t rank>
bool IsOfRank(Card card) {
    return card != JokerCard && RankOf(card) == rank;
}

// Each game in a moment that shows what is its own.
struct Moment {
    GameId game;
    const wchar_t* name;
    bool (*wanted)(const Table& dealt);
    HoldPattern hold;
    bool drawn;
};

const Moment moments[] = {
    {JacksOrBetter, L"jacks_or_better",
     [](const Table& table) {
         return Has(table, IsOfRank<RankJack>) && Has(table, IsOfRank<RankQueen>) &&
                Has(table, IsOfRank<RankKing>) && Has(table, IsOfRank<RankAce>);
     },
     15, false},
    {DeucesWild, L"deuces_wild",
     [](const Table& table) { return Has(table, IsDeuce) && IsWinning(table); }, 17, false},
    {JokerWild, L"joker_wild",
     [](const Table& table) { return Has(table, IsJoker) && IsWinning(table); }, 2, false},
    {DoubleDoubleJackpot, L"double_double_jackpot",
     [](const Table& table) { return ForetoldDraw(table, 3).payout >= 15; }, 3, true},
    {DoubleBonusPoker, L"double_bonus_poker",
     [](const Table& table) { return ForetoldDraw(table, 12).payout >= 25; }, 12, true},
    {DoubleDoubleBonus, L"double_double_bonus",
     [](const Table& table) { return Has(table, IsDeuce) && ForetoldDraw(table, 24).payout == 0; },
     24, true},
};

std::wstring PathOf(const Moment& moment, int scale) {
    return L"Z:" TESSARIN_PICTURES L"/" + std::wstring(moment.name) + L"_" +
           std::to_wstring(scale) + L"x.png";
}

// The moment as the program shows it; `other` draws another hand instead.
Picture Reached(const Moment& moment, int& scale, std::uint32_t other = 0) {
    DeleteSettings();
    SetSetting(L"Sound", 0);
    SetSetting(L"Lastgame", static_cast<std::uint32_t>(moment.game));
    const RunningProgram program = StartUntrained(FindSeed(moment.wanted) + other);
    scale = program.scale;
    Do(program, IDC_DEAL_DRAW);
    Hold(program, moment.hold);
    if (moment.drawn) {
        Do(program, IDC_DEAL_DRAW);
    }
    EXPECT_TRUE(ShowsPrompt(program, moment.drawn ? GameOver : HoldAndDraw));
    const Picture picture = GrabStill(program);
    CloseProgram(program);
    return picture;
}

// The prompt set anew with letters smoothed in this way.
Picture WithPromptSmoothed(const RunningProgram& program, const Picture& picture, BYTE smoothing) {
    const Area& area = program.layout.prompt;
    const Picture prompt =
        PaintLines(program, area, Navy, {{HoldAndDraw, Yellow, DT_CENTER}}, 15, 0, 0, smoothing);
    Picture changed = picture;
    for (int y = area.top; y < std::min(area.bottom, picture.height); ++y) {
        for (int x = area.left; x < area.right; ++x) {
            changed.pixels[static_cast<std::size_t>(y * picture.width + x)] =
                prompt.At(x - area.left, y - area.top);
        }
    }
    return changed;
}

// The program before the moment's deal, and the table that the deal comes to.
RunningProgram StartBefore(const Moment& moment, Table& dealt) {
    DeleteSettings();
    SetSetting(L"Sound", 0);
    SetSetting(L"Lastgame", static_cast<std::uint32_t>(moment.game));
    const std::uint32_t seed = FindSeed(moment.wanted);
    ForetellStart(dealt, seed);
    ForetellDeal(dealt);
    return StartUntrained(seed);
}

void TakeNewSize(RunningProgram& program) {
    Settle(program);
    RECT client = {};
    GetClientRect(program.window, &client);
    program.scale = static_cast<int>(client.right) / DesignWidth;
    program.layout = ComputeLayout(FitTable(client.right, client.bottom));
}

void ResizeClient(RunningProgram& program, int width, int height) {
    RECT client = {};
    RECT window = {};
    GetClientRect(program.window, &client);
    GetWindowRect(program.window, &window);
    SetWindowPos(program.window, nullptr, 0, 0, window.right - window.left - client.right + width,
                 window.bottom - window.top - client.bottom + height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    TakeNewSize(program);
}

bool IsAll(const Picture& picture, std::uint32_t colour) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](std::uint32_t pixel) { return pixel == colour; });
}

// The paytable and the labels below it.
Picture GrabPaytable(const RunningProgram& program) {
    const Layout& layout = program.layout;
    return Grab(program,
                {layout.names.left, layout.names.top, layout.payouts.right, layout.held[0].bottom});
}

constexpr GameId gamesWithOwnFaces[] = {JacksOrBetter, DeucesWild, JokerWild};

} // namespace

TEST_F(Pictures, OfEveryGameAreAsKept) {
    for (const Moment& moment : moments) {
        int scale = 0;
        const Picture fresh = Reached(moment, scale);
        const std::wstring path = PathOf(moment, scale);
        if (std::getenv("TESSARIN_KEEP_PICTURES") != nullptr) {
            ASSERT_TRUE(WritePicture(path, fresh));
        }
        const std::optional<Picture> kept = ReadPicture(path);
        ASSERT_TRUE(kept.has_value()) << "no kept picture of game " << moment.game;
        EXPECT_LE(Difference(*kept, fresh, scale), Tolerance) << "game " << moment.game;
    }
}

TEST_F(Pictures, AreTheSameHoweverLettersAreSmoothed) {
    int scale = 0;
    const Picture fresh = Reached(moments[JacksOrBetter], scale);
    const RunningProgram program = StartProgram();
    EXPECT_TRUE(WithPromptSmoothed(program, fresh, DEFAULT_QUALITY) == fresh);
    const int difference =
        Difference(fresh, WithPromptSmoothed(program, fresh, NONANTIALIASED_QUALITY), scale);
    EXPECT_GT(difference, 0) << "the letters are the same";
    EXPECT_LE(difference, Tolerance);
    std::printf("letters that are not smoothed: difference %d\n", difference);
}

// One card, one label, one row or one digit of difference is told.
TEST_F(Pictures, TellARealDifference) {
    const Moment& moment = moments[JacksOrBetter];
    int scale = 0;
    Reached(moment, scale);
    const Picture kept = ReadPicture(PathOf(moment, scale)).value();
    Moment otherHold = moment;
    otherHold.hold = 7;
    EXPECT_GT(Difference(kept, Reached(otherHold, scale), scale), Tolerance) << "a label";
    Moment drawn = moment;
    drawn.drawn = true;
    EXPECT_GT(Difference(kept, Reached(drawn, scale), scale), Tolerance) << "one card drawn";
    Moment otherGame = moments[DoubleBonusPoker];
    EXPECT_GT(Difference(kept, Reached(otherGame, scale), scale), Tolerance) << "a game";

    // The first card's rank in place of the second's: the smallest thing that matters.
    const int s = scale;
    int least = 256;
    for (int position = 0; position < 4; ++position) {
        Picture changed = kept;
        for (int y = 182 * s; y < 199 * s; ++y) {
            for (int x = 0; x < 15 * s; ++x) {
                const int from = (4 + 48 * position) * s + x;
                const int to = (4 + 48 * (position + 1)) * s + x;
                changed.pixels[static_cast<std::size_t>(y * kept.width + to)] = kept.At(from, y);
            }
        }
        least = std::min(least, Difference(kept, changed, scale));
    }
    EXPECT_GT(least, Tolerance) << "a rank";
    std::printf("least difference of a wrong rank: %d\n", least);
}

TEST_F(LargeTable, IsTheDesignAtFiveTimesItsSize) {
    for (const GameId game : gamesWithOwnFaces) {
        SCOPED_TRACE(game);
        Table table;
        RunningProgram program = StartBefore(moments[game], table);
        ResizeClient(program, 5 * DesignWidth, 5 * DesignHeight);
        ASSERT_EQ(program.scale, 5);
        for (std::size_t position = 0; position < HandSize; ++position) {
            EXPECT_TRUE(ShowsBack(program, position)) << position;
        }
        Do(program, IDC_DEAL_DRAW);
        ExpectTable(program, table);
        Hold(program, moments[game].hold);
        for (std::size_t position = 0; position < HandSize; ++position) {
            const bool held = (moments[game].hold >> position & 1) != 0;
            EXPECT_TRUE(ShowsHeld(program, position, held)) << position;
        }
        CloseProgram(program);
    }
}

TEST_F(LargeTable, FillsItsWindowBetweenTheScales) {
    for (const GameId game : gamesWithOwnFaces) {
        SCOPED_TRACE(game);
        Table table;
        RunningProgram program = StartBefore(moments[game], table);
        ResizeClient(program, 1500, 1900);
        Do(program, IDC_DEAL_DRAW);
        for (std::size_t position = 0; position < HandSize; ++position) {
            EXPECT_TRUE(ShowsCard(program, game, position, table.hand.cards[position].code))
                << position;
        }
        EXPECT_EQ(program.layout.scale, (Scale{1500, 240}));
        Hold(program, moments[game].hold);
        const Picture pieces = GrabPaytable(program);
        RedrawWindow(program.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_TRUE(Eventually([&] { return GrabPaytable(program) == pieces; }));
        EXPECT_TRUE(IsAll(Grab(program, {0, 0, 1500, 31}), Navy)) << "above the table";
        EXPECT_TRUE(IsAll(Grab(program, {0, 1869, 1500, 1900}), Navy)) << "below the table";
        CloseProgram(program);
    }
}

TEST_F(LargeTable, FillsTheHeightOfTheScreenWhenMaximised) {
    Table table;
    RunningProgram program = StartBefore(moments[JacksOrBetter], table);
    PostMessageW(program.window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    ASSERT_TRUE(Eventually([&] { return IsZoomed(program.window) != FALSE; }));
    TakeNewSize(program);
    RECT client = {};
    GetClientRect(program.window, &client);
    EXPECT_EQ(program.layout.scale, (Scale{client.bottom, DesignHeight}));
    Do(program, IDC_DEAL_DRAW);
    for (std::size_t position = 0; position < HandSize; ++position) {
        EXPECT_TRUE(ShowsCard(program, JacksOrBetter, position, table.hand.cards[position].code))
            << position;
    }
}
