#include "tests/window/dialogs/played_hand.h"

#include <cwchar>

#include "training/play_grading.h"
#include "ui/resource.h"

void PlayedHand::Open(std::uint32_t seed) {
    ForetellStart(table, seed);
    program = StartSeeded(seed, 0);
}

void PlayedHand::Deal() {
    Do(program, IDC_DEAL_DRAW);
    ForetellDeal(table);
    held = 0;
    ASSERT_TRUE(Holding(program));
}

void PlayedHand::Hold(HoldPattern pattern) {
    TypeHolds(program, held, pattern);
    Settle(program);
    held = pattern;
}

void PlayedHand::Draw() {
    Do(program, IDC_DEAL_DRAW);
    ForetellDraw(table, held);
    EXPECT_EQ(FindDialog(program, QuestionTitle), nullptr);
    EXPECT_FALSE(Holding(program));
}

HWND PlayedHand::DrawAndBeAsked() {
    return OpenDialog(program, IDC_DEAL_DRAW, QuestionTitle);
}

void PlayedHand::AnswerYes(HWND question) {
    LeaveDialog(question, IDC_ANSWER_YES);
    Settle(program);
    ForetellDraw(table, held);
    EXPECT_FALSE(Holding(program));
}

std::int32_t PlayedHand::Search() {
    return FindBestHold(table.hand.cards.data(), table.game, table.bet);
}

double PlayedHand::ReturnOf(HoldPattern pattern) {
    Search();
    return resultTable[static_cast<std::size_t>(HoldIndex[static_cast<std::size_t>(pattern)])]
        .expectedReturn;
}

HoldPattern PlayedHand::BestHold() {
    return resultTable[static_cast<std::size_t>(Search())].pattern;
}

double PlayedHand::BestReturn() {
    return ReturnOf(BestHold());
}

bool PlayedHand::HasHoldCosting(double above, double atMost) {
    const double best = resultTable[static_cast<std::size_t>(Search())].expectedReturn;
    for (const HoldResult& result : resultTable) {
        const double cost = best - result.expectedReturn;
        if (cost > above && cost <= atMost) {
            return true;
        }
    }
    return false;
}

HoldPattern PlayedHand::HoldCosting(double above, double atMost) {
    const double best = resultTable[static_cast<std::size_t>(Search())].expectedReturn;
    for (const HoldResult& result : resultTable) {
        const double cost = best - result.expectedReturn;
        if (cost > above && cost <= atMost) {
            return result.pattern;
        }
    }
    ADD_FAILURE() << "no such hold";
    return 0;
}

std::wstring Formatted(const wchar_t* format, double value) {
    wchar_t text[64];
    std::swprintf(text, 64, format, value);
    return text;
}

void ExpectQuestion(HWND question, double best, double yours) {
    const double cost = best - yours;
    EXPECT_EQ(FieldText(question, GradingError), cost > 0.1    ? L"Major Error!!!"
                                                 : cost > 0.02 ? L"Moderate Error!"
                                                               : L"Minor Error!");
    EXPECT_EQ(FieldText(question, GradingCost), Formatted(L"Cost: %1.2f Coins", cost));
    EXPECT_EQ(FieldText(question, GradingBestReturn), Formatted(L"%1.4f", best));
    EXPECT_EQ(FieldText(question, GradingYourReturn), Formatted(L"%1.4f", yours));
}

std::vector<std::wstring> ReadStats(const RunningProgram& program, const std::vector<int>& ids) {
    const HWND dialog = OpenDialog(program, IDM_SESSION_STATS, StatsTitle);
    std::vector<std::wstring> texts;
    for (const int id : ids) {
        texts.push_back(FieldText(dialog, id));
    }
    LeaveDialog(dialog, IDOK);
    return texts;
}

void SetPayouts(const wchar_t* title, bool fiveCoins, const std::vector<std::int32_t>& payouts) {
    const std::wstring below = title + std::wstring(fiveCoins ? L"\\5" : L"\\1");
    for (std::size_t row = 0; row < payouts.size(); ++row) {
        SetSetting(std::to_wstring(row).c_str(), static_cast<std::uint32_t>(payouts[row]), below);
    }
}
