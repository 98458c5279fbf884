#include <gmock/gmock.h>

#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/played_hand.h"
#include "training/session_stats.h"
#include "ui/resource.h"

// The running totals: what is shown of what is stored, in which colours, and their reset.

namespace {

class Stats : public WindowTest {};

constexpr std::uint32_t Cyan = 0x00FFFF;
constexpr std::uint32_t Green = 0x00FF00;
constexpr std::uint32_t DarkGreen = 0x008000;
constexpr std::uint32_t LossRed = 0x800000;
constexpr std::uint32_t LightGrey = 0xC0C0C0;

struct ExpectedField {
    int id;
    const wchar_t* text;
    std::uint32_t colour;
    std::uint32_t ground = Black;
};
using ExpectedFields = std::vector<ExpectedField>;

const ExpectedFields fresh = {
    {StatsResult, L"YOU WIN:", DarkGreen, LightGrey},
    {StatsNet, L"0 ", Green},
    {StatsHands, L"0 ", White},
    {StatsCoinsIn, L"0 ", Cyan},
    {StatsCoinsOut, L"0 ", Cyan},
    {StatsPercentPaid, L"100.00% ", Cyan},
    {StatsErrors, L"0 ", Cyan},
    {StatsMinorErrors, L"0 ", Cyan},
    {StatsModerateErrors, L"0 ", Cyan},
    {StatsMajorErrors, L"0 ", Cyan},
    {StatsPercentCorrect, L"N/A ", Cyan},
    {StatsBestReturn, L"0.0000 ", Cyan},
    {StatsYourReturn, L"0.0000 ", Cyan},
    {StatsPercentReturn, L"100.00% ", Cyan},
    {StatsCost, L"0 ", Cyan},
};

void ExpectFields(HWND dialog, const ExpectedFields& fields) {
    for (const ExpectedField& field : fields) {
        EXPECT_EQ(FieldText(dialog, field.id), field.text) << field.id;
        GrabField(dialog, field.id, field.ground, field.colour);
    }
}

HWND OpenStats(const RunningProgram& program) {
    return OpenDialog(program, IDM_SESSION_STATS, StatsTitle);
}

HWND AskForReset(const RunningProgram& program, HWND dialog) {
    PressButton(dialog, IDC_RESET_STATS);
    const HWND question = WaitForDialog(program, L"Confirm");
    EXPECT_EQ(FieldText(question, 0xFFFF), L"Are You Sure You Want To Reset The Stats?");
    return question;
}

void StoreTotals() {
    SetSetting(L"CoinsIn", 100);
    SetSetting(L"CoinsOut", 85);
    SetSetting(L"Hands", 10);
    SetSetting(L"Errors0", 1);
    SetSetting(L"Errors1", 0);
    SetSetting(L"Errors2", 1);
    SetRealSetting(L"Returns0", 12.5);
    SetRealSetting(L"Returns1", 12.0);
}

} // namespace

TEST_F(Stats, ShowNothingAtFirst) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    ExpectFields(dialog, fresh);
    EXPECT_TRUE(LooksAsKept(program, dialog, L"stats-fresh"));
    EXPECT_THAT(PlainTexts(dialog),
                testing::UnorderedElementsAre(L"Hands:", L"Cns In:", L"Won:", L"%:", L"Errors:",
                                              L"Minor:", L"Moderate:", L"Major:", L"Correct:",
                                              L"Best Return:", L"Your Return:", L"Return  %:",
                                              L"Cost, In Coins:"));
    EXPECT_EQ(FieldText(dialog, IDOK), L"&OK");
    EXPECT_EQ(FieldText(dialog, IDC_RESET_STATS), L"&Reset To Zero");
    LeaveDialog(dialog, IDOK);
}

TEST_F(Stats, ShowALossErrorsAndReturns) {
    StoreTotals();
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    ExpectFields(dialog, {{StatsResult, L"YOU LOST:", LossRed, LightGrey},
                          {StatsNet, L" 15 ", Red},
                          {StatsHands, L"10 ", White},
                          {StatsCoinsIn, L"100 ", Cyan},
                          {StatsCoinsOut, L"85 ", Cyan},
                          {StatsPercentPaid, L"85.00% ", Cyan},
                          {StatsErrors, L"2 ", Red},
                          {StatsMinorErrors, L"1 ", Red},
                          {StatsModerateErrors, L"0 ", Cyan},
                          {StatsMajorErrors, L"1 ", Red},
                          {StatsPercentCorrect, L"80.00% ", Cyan},
                          {StatsBestReturn, L"12.5000 ", Cyan},
                          {StatsYourReturn, L"12.0000 ", Cyan},
                          {StatsPercentReturn, L"96.00% ", Cyan},
                          {StatsCost, L"0.50 ", Cyan}});
    EXPECT_TRUE(LooksAsKept(program, dialog, L"stats-loss"));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(Stats, ShowAWinInGreenAndAModerateErrorInRed) {
    SetSetting(L"CoinsIn", 85);
    SetSetting(L"CoinsOut", 100);
    SetSetting(L"Hands", 3);
    SetSetting(L"Errors1", 1);
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    ExpectFields(dialog, {{StatsResult, L"YOU WIN:", DarkGreen, LightGrey},
                          {StatsNet, L"15 ", Green},
                          {StatsPercentPaid, L"117.65% ", Cyan},
                          {StatsErrors, L"1 ", Red},
                          {StatsMinorErrors, L"0 ", Cyan},
                          {StatsModerateErrors, L"1 ", Red},
                          {StatsMajorErrors, L"0 ", Cyan},
                          {StatsPercentCorrect, L"66.67% ", Cyan}});
    LeaveDialog(dialog, IDOK);
}

TEST_F(Stats, ShowTheLargestNumbersWhole) {
    SetSetting(L"CoinsIn", 2147483647);
    SetSetting(L"CoinsOut", 0);
    SetSetting(L"Hands", 2147483647);
    SetRealSetting(L"Returns0", 123456789.125);
    SetRealSetting(L"Returns1", 123456788.0);
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    ExpectFields(dialog, {{StatsNet, L" 2147483647 ", Red},
                          {StatsHands, L"2147483647 ", White},
                          {StatsBestReturn, L"123456789.1250 ", Cyan}});
    const HFONT font = MakeDialogFont();
    for (const int id : {StatsNet, StatsHands, StatsCoinsIn, StatsBestReturn}) {
        EXPECT_TRUE(
            ShowsInkOfSize(dialog, id, Black, SizeOf(InkBoxOf(FieldText(dialog, id), font))))
            << id << " is cut";
    }
    DeleteObject(font);
    LeaveDialog(dialog, IDOK);
}

TEST_F(Stats, StayAfterNoToTheReset) {
    StoreTotals();
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    LeaveDialog(AskForReset(program, dialog), IDNO);
    ExpectFields(dialog, {{StatsNet, L" 15 ", Red}, {StatsErrors, L"2 ", Red}});
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"CoinsIn"), 100U);
    EXPECT_EQ(RealSetting(L"Returns0"), 12.5);
}

TEST_F(Stats, AreFreshAgainAfterYesToTheReset) {
    StoreTotals();
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    LeaveDialog(AskForReset(program, dialog), IDYES);
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, StatsHands) == L"0 "; }));
    ExpectFields(dialog, fresh);
    EXPECT_EQ(Setting(L"CoinsIn"), 100U) << "not before the program ends";
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
    for (const wchar_t* name :
         {L"CoinsIn", L"CoinsOut", L"Hands", L"Errors0", L"Errors1", L"Errors2"}) {
        EXPECT_EQ(Setting(name), 0U);
    }
    EXPECT_EQ(RealSetting(L"Returns0"), 0.0);
    EXPECT_EQ(RealSetting(L"Returns1"), 0.0);
}

TEST_F(Stats, AreWrittenAtTheEnd) {
    StoreTotals();
    SetSetting(L"Lastbet", 2);
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, IDM_NO_TRAINING);
    Do(program, IDC_DEAL_DRAW);
    Do(program, IDC_DEAL_DRAW);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Hands"), 11U);
    EXPECT_EQ(Setting(L"CoinsIn"), 102U);
    EXPECT_GT(RealSetting(L"Returns0"), 12.5);
    EXPECT_GT(RealSetting(L"Returns1"), 12.0);
}

TEST_F(Stats, ResetWithTheRealKeyboard) {
    StoreTotals();
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenStats(program);
    PressKeysIn(dialog, L"r");
    const HWND question = WaitForDialog(program, L"Confirm");
    PressKeysIn(question, L"Return");
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, StatsHands) == L"0 "; }));
    PressKeysIn(dialog, L"Escape");
    EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
}
