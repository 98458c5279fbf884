#include <gmock/gmock.h>

#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/played_hand.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// Any hand composed on a grid of cards, and its best hold.

namespace {

class HandAnalysis : public WindowTest {};

constexpr std::uint32_t LightGrey = 0xC0C0C0;
constexpr std::uint32_t Olive = 0x808000;
constexpr std::uint32_t Blue = 0x0000FF;

using Cards = std::array<Card, HandSize>;

const Cards someCards = {CardOf(0, RankAce), CardOf(1, RankAce), CardOf(2, RankTen),
                         CardOf(3, RankDeuce), CardOf(0, RankFour)};

HWND OpenGrid(const RunningProgram& program) {
    return OpenDialogWith(program, IDM_HAND_ANALYSIS, IDC_FIRST_SLOT);
}

HWND CardButton(HWND dialog, Card card) {
    return GetDlgItem(dialog, IDC_FIRST_CARD + card);
}

HWND SlotButton(HWND dialog, int slot) {
    return GetDlgItem(dialog, IDC_FIRST_SLOT + slot);
}

// Waits until the dialog has the card; the fifth enables all again.
void Pick(const RunningProgram& program, HWND dialog, Card card) {
    PressButton(dialog, IDC_FIRST_CARD + card);
    Settle(program);
}

void PickAll(const RunningProgram& program, HWND dialog, const Cards& cards) {
    for (const Card card : cards) {
        Pick(program, dialog, card);
    }
}

// The inside of a button, without its rounded corners and outline.
Picture Inside(HWND button, int scale) {
    RECT client;
    GetClientRect(button, &client);
    InflateRect(&client, -2 * scale, -2 * scale);
    return GrabPart(button, client);
}

bool IsBlank(HWND button, int scale) {
    return Eventually(
        [&] {
            const Picture inside = Inside(button, scale);
            return CountPixels(inside, White) == inside.width * inside.height;
        },
        Patience);
}

// The box around all pixels of one colour.
RECT BoxOfColour(const Picture& picture, std::uint32_t colour) {
    Picture only = picture;
    for (std::uint32_t& pixel : only.pixels) {
        pixel = pixel == colour ? Black : White;
    }
    return InkBox(only, White);
}

// The box across the top of a held slot.
bool HasHoldMark(HWND button, int scale) {
    RECT client;
    GetClientRect(button, &client);
    const RECT mark = {4 * scale, 2 * scale, client.right - 4 * scale, 16 * scale};
    const Picture picture = GrabPart(button, mark);
    return CountPixels(picture, Navy) * 2 > picture.width * picture.height &&
           CountPixels(picture, White) > 0;
}

bool ShowsSlots(const RunningProgram& program, HWND dialog, int picked, HoldPattern held) {
    bool shown = true;
    for (int slot = 0; slot < static_cast<int>(HandSize); ++slot) {
        const HWND button = SlotButton(dialog, slot);
        const bool wanted = ((held >> slot) & 1) != 0;
        if (slot >= picked) {
            shown = IsBlank(button, program.scale) && shown;
            continue;
        }
        shown = Eventually(
                    [&] {
                        const Picture inside = Inside(button, program.scale);
                        return CountPixels(inside, White) < inside.width * inside.height &&
                               HasHoldMark(button, program.scale) == wanted;
                    },
                    Patience) &&
                shown;
    }
    return shown;
}

HoldPattern BestHoldOf(const Cards& cards, GameId id, std::int32_t bet) {
    Hand hand{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand.cards[i] = MakeCardRecord(cards[i]);
    }
    GameDescriptor game{};
    LoadGame(game, id);
    return resultTable[static_cast<std::size_t>(FindBestHold(hand.cards.data(), game, bet))]
        .pattern;
}

// The details opened by "Info" list the results of this hand, as the engine here has them.
void ExpectInfo(const RunningProgram& program, HWND dialog, const CardRecord* hand, GameId id) {
    PressButton(dialog, IDC_INFO);
    const HWND list = WaitForDetails(program);
    const std::vector<SeenRow> rows = ReadRows(program, list, 3);
    GameDescriptor game{};
    LoadGame(game, id);
    const auto best = static_cast<std::size_t>(FindBestHold(hand, game, MaxBet));
    EXPECT_EQ(rows.front()[0], Formatted(L"%05.4f", resultTable[best].expectedReturn));
    for (const SeenRow& row : rows) {
        if (row[2] == L"1") {
            std::wstring letters;
            for (std::size_t i = 0; i < HandSize; ++i) {
                letters +=
                    SuitOf(hand[i].code) == JokerSuit ? L'W' : RankLetters[RankOf(hand[i].code)];
            }
            EXPECT_EQ(row[1], letters + L" ");
            EXPECT_EQ(row[0], Formatted(L"%05.4f", resultTable[31].expectedReturn));
        }
    }
    LeaveDialog(GetParent(list), IDOK);
}

void ExpectInfoOf(const RunningProgram& program, HWND dialog, const Cards& cards, GameId id) {
    std::array<CardRecord, HandSize> hand;
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i] = MakeCardRecord(cards[i]);
    }
    ExpectInfo(program, dialog, hand.data(), id);
}

} // namespace

TEST_F(HandAnalysis, HasAGridOfAllCardsInTwoRowsASuit) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    RECT whole;
    RECT main;
    GetWindowRect(dialog, &whole);
    GetWindowRect(program.window, &main);
    RECT both;
    UnionRect(&both, &whole, &main);
    EXPECT_TRUE(EqualRect(&both, &whole)) << "the dialog does not cover the window";
    RECT client;
    GetClientRect(dialog, &client);
    const int s = program.scale;
    const int width = static_cast<int>(client.right) / 7;
    // Below the slots there are eight rows and three gaps between the suits.
    const int height = (static_cast<int>(client.bottom) - 40 * s - 3 * 2 * s) / 8;
    for (int slot = 0; slot < 5; ++slot) {
        const RECT place = PlaceIn(dialog, SlotButton(dialog, slot));
        const int slotWidth = static_cast<int>(client.right) / 5;
        EXPECT_EQ(place.left, slot * slotWidth);
        EXPECT_EQ(place.top, s);
        EXPECT_EQ(place.right - place.left, slotWidth);
        EXPECT_EQ(place.bottom - place.top, 38 * s);
    }
    for (Card card = 0; card < 52; ++card) {
        const RECT place = PlaceIn(dialog, CardButton(dialog, card));
        const int row = SuitOf(card) * 2 + RankOf(card) / 7;
        EXPECT_EQ(place.left, RankOf(card) % 7 * width) << card;
        EXPECT_EQ(place.top, 40 * s + row * height + 2 * s * (row / 2)) << card;
        EXPECT_EQ(place.right - place.left, width) << card;
        EXPECT_EQ(place.bottom - place.top, height) << card;
    }
    const RECT cancel = PlaceIn(dialog, GetDlgItem(dialog, IDCANCEL));
    EXPECT_EQ(cancel.left, 6 * width);
    EXPECT_EQ(cancel.top, 40 * s + 7 * height + 6 * s);
    EXPECT_LE(cancel.bottom, client.bottom);
    const RECT info = PlaceIn(dialog, GetDlgItem(dialog, IDC_INFO));
    EXPECT_EQ(info.left, 6 * width);
    EXPECT_EQ(info.top, 5 * (height + 8 * s) + 6 * s);
    EXPECT_EQ(FieldText(dialog, IDC_INFO), L"Info");
    EXPECT_TRUE(LooksAsKept(program, dialog, L"grid-empty"));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, HasAJokerOnlyInJokerWild) {
    const RunningProgram program = StartProgram();
    for (int game = 0; game < GameCount; ++game) {
        Do(program, IDM_FIRST_GAME + game);
        const HWND dialog = OpenGrid(program);
        EXPECT_NE(CardButton(dialog, 51), nullptr);
        const HWND joker = CardButton(dialog, JokerCard);
        EXPECT_EQ(joker != nullptr, game == JokerWild) << game;
        if (joker != nullptr) {
            const RECT place = PlaceIn(dialog, joker);
            const RECT beside = PlaceIn(dialog, CardButton(dialog, 12));
            EXPECT_EQ(place.left, beside.right);
            EXPECT_EQ(place.top, beside.top);
            EXPECT_TRUE(
                Eventually([&] { return CountPixels(Inside(joker, program.scale), Blue) > 0; }));
            const Picture face = Inside(joker, program.scale);
            EXPECT_EQ(CountPixels(face, Black) + CountPixels(face, DarkRed), 0)
                << "a rank or a pip beside it";
            EXPECT_TRUE(LooksAsKept(program, dialog, L"grid-joker"));
        }
        // A deuce is marked wild in its game.
        const bool marked = Eventually(
            [&] { return CountPixels(Inside(CardButton(dialog, 0), program.scale), Olive) > 0; },
            game == DeucesWild ? Patience : 50);
        EXPECT_EQ(marked, game == DeucesWild) << game;
        if (game == DeucesWild) {
            EXPECT_TRUE(LooksAsKept(program, dialog, L"grid-deuces"));
        }
        LeaveDialog(dialog, IDCANCEL);
    }
}

TEST_F(HandAnalysis, DrawsSuitsInTheirColoursAndAPressedButtonGrey) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    for (int suit = 0; suit < SuitCount; ++suit) {
        const HWND button = CardButton(dialog, CardOf(suit, RankKing));
        const bool red = suit == 1 || suit == 2;
        EXPECT_TRUE(Eventually([&] {
            const Picture inside = Inside(button, program.scale);
            // The letter is in the left half.
            const Picture letter = Crop(inside, {0, 0, inside.width / 2, inside.height});
            return (CountPixels(letter, DarkRed) > 0) == red &&
                   (CountPixels(letter, Black) > 0) == !red;
        })) << suit;
    }
    const HWND button = CardButton(dialog, 20);
    PostMessageW(button, BM_SETSTATE, TRUE, 0);
    EXPECT_TRUE(Eventually([&] {
        const Picture inside = Inside(button, program.scale);
        return CountPixels(inside, LightGrey) * 2 > inside.width * inside.height;
    }));
    PostMessageW(button, BM_SETSTATE, FALSE, 0);
    EXPECT_TRUE(
        Eventually([&] { return CountPixels(Inside(button, program.scale), LightGrey) == 0; }));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, IgnoresTheSameCardTwice) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    Pick(program, dialog, someCards[0]);
    EXPECT_FALSE(IsWindowEnabled(CardButton(dialog, someCards[0])));
    EXPECT_TRUE(IsBlank(CardButton(dialog, someCards[0]), program.scale));
    // By a tap, which a disabled button does not take, and by the command all the same.
    Pick(program, dialog, someCards[0]);
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(IDC_FIRST_CARD + someCards[0]), 0);
    EXPECT_TRUE(ShowsSlots(program, dialog, 1, 0));
    for (std::size_t i = 1; i < HandSize; ++i) {
        Pick(program, dialog, someCards[i]);
    }
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, BestHoldOf(someCards, JacksOrBetter, MaxBet)));
    ExpectInfoOf(program, dialog, someCards, JacksOrBetter);
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, MarksTheBestHoldAtTheFifthPickAndStartsAnewAtTheSixth) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    for (int picks = 1; picks < 5; ++picks) {
        Pick(program, dialog, someCards[static_cast<std::size_t>(picks - 1)]);
        EXPECT_TRUE(ShowsSlots(program, dialog, picks, 0)) << picks;
    }
    Pick(program, dialog, someCards[4]);
    const HoldPattern best = BestHoldOf(someCards, JacksOrBetter, MaxBet);
    EXPECT_EQ(best, 3) << "the pair of aces";
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, best));
    for (const Card card : someCards) {
        EXPECT_TRUE(IsWindowEnabled(CardButton(dialog, card)));
    }
    EXPECT_TRUE(LooksAsKept(program, dialog, L"grid-held"));

    Pick(program, dialog, 30);
    EXPECT_TRUE(ShowsSlots(program, dialog, 1, 0));
    EXPECT_FALSE(IsWindowEnabled(CardButton(dialog, 30)));
    ExpectInfoOf(program, dialog, someCards, JacksOrBetter);
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, MarksAHeldCardAndDrawsItTenPixelsLower) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    const HWND slot = SlotButton(dialog, 0); // the ace of clubs, all black
    Pick(program, dialog, someCards[0]);
    EXPECT_TRUE(ShowsSlots(program, dialog, 1, 0));
    const RECT before = BoxOfColour(Inside(slot, program.scale), Black);
    for (std::size_t i = 1; i < HandSize; ++i) {
        Pick(program, dialog, someCards[i]);
    }
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, 3));
    EXPECT_TRUE(Eventually([&] {
        const RECT held = BoxOfColour(Inside(slot, program.scale), Black);
        return held.left == before.left && held.right == before.right &&
               held.top == before.top + 10 * program.scale &&
               held.bottom == before.bottom + 10 * program.scale;
    }));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, GoesOnWithTheThirdSlotAfterTwoPicksAndReopening) {
    const RunningProgram program = StartProgram();
    HWND dialog = OpenGrid(program);
    Pick(program, dialog, someCards[0]);
    Pick(program, dialog, someCards[1]);
    LeaveDialog(dialog, IDCANCEL);
    dialog = OpenGrid(program);
    EXPECT_TRUE(ShowsSlots(program, dialog, 2, 0));
    EXPECT_FALSE(IsWindowEnabled(CardButton(dialog, someCards[0])));
    EXPECT_FALSE(IsWindowEnabled(CardButton(dialog, someCards[1])));
    for (std::size_t i = 2; i < HandSize; ++i) {
        Pick(program, dialog, someCards[i]);
        if (i < 4) {
            EXPECT_TRUE(ShowsSlots(program, dialog, static_cast<int>(i) + 1, 0));
        }
    }
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, BestHoldOf(someCards, JacksOrBetter, MaxBet)));
    ExpectInfoOf(program, dialog, someCards, JacksOrBetter);
    LeaveDialog(dialog, IDCANCEL);

    // A finished hand is not taken up again.
    dialog = OpenGrid(program);
    EXPECT_TRUE(ShowsSlots(program, dialog, 0, 0));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, OpensInfoBeforeFiveCardsArePicked) {
    Table table;
    ForetellStart(table, 1);
    const RunningProgram program = StartSeeded(1, 0);
    // Nothing was composed or dealt, then nothing composed: the hand on the table.
    HWND dialog = OpenGrid(program);
    ExpectInfo(program, dialog, table.hand.cards.data(), JacksOrBetter);
    LeaveDialog(dialog, IDCANCEL);
    Do(program, IDC_DEAL_DRAW);
    ForetellDeal(table);
    dialog = OpenGrid(program);
    Pick(program, dialog, someCards[0]);
    ExpectInfo(program, dialog, table.hand.cards.data(), JacksOrBetter);
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, LeavesTheHandOnTheTableAlone) {
    Table table;
    ForetellStart(table, 1);
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, IDC_DEAL_DRAW);
    ForetellDeal(table);
    TypeHolds(program, 0, 5);
    const HWND dialog = OpenGrid(program);
    PickAll(program, dialog, someCards);
    LeaveDialog(dialog, IDCANCEL);
    for (std::size_t i = 0; i < HandSize; ++i) {
        EXPECT_TRUE(ShowsHeld(program, i, i == 0 || i == 2));
    }
    Post(program, IDM_HAND_DETAILS);
    const HWND list = WaitForDetails(program);
    const auto best =
        static_cast<std::size_t>(FindBestHold(table.hand.cards.data(), table.game, table.bet));
    EXPECT_EQ(ReadRows(program, list, 1).front()[0],
              Formatted(L"%05.4f", resultTable[best].expectedReturn));
    LeaveDialog(GetParent(list), IDOK);
}

TEST_F(HandAnalysis, TakesTheJokerAndForgetsItWithItsGame) {
    const RunningProgram program = StartProgram();
    Do(program, IDM_FIRST_GAME + JokerWild);
    const Cards cards = {CardOf(0, RankAce), JokerCard, CardOf(2, RankTen), CardOf(3, RankDeuce),
                         CardOf(1, RankAce)};
    HWND dialog = OpenGrid(program);
    PickAll(program, dialog, cards);
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, BestHoldOf(cards, JokerWild, MaxBet)));
    ExpectInfoOf(program, dialog, cards, JokerWild);

    // An unfinished hand with the joker has no place in another game.
    Pick(program, dialog, JokerCard);
    Pick(program, dialog, 3);
    LeaveDialog(dialog, IDCANCEL);
    Do(program, IDM_FIRST_GAME + JacksOrBetter);
    dialog = OpenGrid(program);
    EXPECT_TRUE(ShowsSlots(program, dialog, 0, 0));
    EXPECT_TRUE(IsWindowEnabled(CardButton(dialog, 3)));
    PickAll(program, dialog, someCards);
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, BestHoldOf(someCards, JacksOrBetter, MaxBet)));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(HandAnalysis, OpensInfoOfAHandWithAJokerInAnotherGame) {
    const RunningProgram program = StartProgram();
    Do(program, IDM_FIRST_GAME + JokerWild);
    HWND dialog = OpenGrid(program);
    PickAll(program, dialog, {JokerCard, 1, 14, 27, 41});
    LeaveDialog(dialog, IDCANCEL);
    for (int game = 0; game < GameCount; ++game) {
        Do(program, IDM_FIRST_GAME + game);
        dialog = OpenGrid(program);
        PressButton(dialog, IDC_INFO);
        const HWND list = WaitForDetails(program);
        EXPECT_EQ(CountRows(list), 32);
        LeaveDialog(GetParent(list), IDOK);
        LeaveDialog(dialog, IDCANCEL);
    }
    CloseProgram(program);
}

TEST_F(HandAnalysis, PaysTheRestOfACountUpAtOnce) {
    const RunningProgram program = StartCountUp(1000, 30);
    LeaveDialog(OpenGrid(program), IDCANCEL);
    EXPECT_TRUE(ShowsCredits(program, 1095));
}

TEST_F(HandAnalysis, IsPickedByTheRealPointer) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenGrid(program);
    for (const Card card : someCards) {
        RECT place = PlaceIn(dialog, CardButton(dialog, card));
        MapWindowPoints(dialog, program.window, reinterpret_cast<POINT*>(&place), 2);
        const bool wasLast = card == someCards.back();
        PressPointer(program, static_cast<int>(place.left + place.right) / 2,
                     static_cast<int>(place.top + place.bottom) / 2);
        EXPECT_TRUE(Eventually([&] {
            return wasLast ? IsWindowEnabled(CardButton(dialog, someCards.front())) != FALSE
                           : IsWindowEnabled(CardButton(dialog, card)) == FALSE;
        })) << card;
    }
    EXPECT_TRUE(ShowsSlots(program, dialog, 5, BestHoldOf(someCards, JacksOrBetter, MaxBet)));
    PressKeysIn(dialog, L"Escape");
    EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
}
