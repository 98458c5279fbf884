#include <cstdlib>

#include "tests/window/dialogs/command_line.h"
#include "tests/window/dialogs/played_hand.h"
#include "training/play_grading.h"
#include "ui/resource.h"

// What the learner is told of hands as they come. TESSARIN_HANDS in the environment sets how many
// hands of each game.

namespace {

int HandCount() {
    const char* count = std::getenv("TESSARIN_HANDS");
    return count != nullptr ? std::atoi(count) : 4;
}

// What the program showed of one hand; no question for a hold as good as the best.
struct ShownHand {
    std::array<CardRecord, HandSize> cards;
    HoldPattern hold;
    std::array<std::wstring, HoldCount> returns; // in hold order
    std::vector<std::wstring> question;
};

// The question's texts for two returns.
std::vector<std::wstring> QuestionTexts(double best, double yours) {
    return {Formatted(L"Cost: %1.2f Coins", best - yours), Formatted(L"%1.4f", best),
            Formatted(L"%1.4f", yours)};
}

class RandomHands : public PlayedHand, public testing::WithParamInterface<int> {
  protected:
    // The drill deals by itself, and a deal throws away what is asked of it until it is done: then
    // it is asked again. While the details are open nothing is heeded twice.
    HWND OpenDetails() {
        constexpr DWORD deal = 500;
        EXPECT_TRUE(Eventually([&] {
            Post(program, IDM_HAND_DETAILS);
            return Eventually([&] { return FindDialogWith(program, IDC_DETAILS_LIST) != nullptr; },
                              deal);
        }));
        return WaitForDetails(program);
    }

    void ExpectReturns(ShownHand& shown) {
        const HWND list = OpenDetails();
        const std::vector<SeenRow> rows = ReadRows(program, list, 2);
        const std::vector<int> data = ReadRowData(program, list);
        LeaveDialog(GetParent(list), IDOK);
        ASSERT_EQ(rows.size(), 32U);
        Search();
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const HoldResult& result = resultTable[static_cast<std::size_t>(data[row])];
            EXPECT_EQ(rows[row][0], Formatted(L"%05.4f", result.expectedReturn));
            shown.returns[static_cast<std::size_t>(data[row])] = rows[row][0];
            std::wstring letters;
            for (std::size_t i = 0; i < HandSize; ++i) {
                const Card card = table.hand.cards[i].code;
                letters += (result.pattern >> i & 1) == 0 ? L'_'
                           : card == JokerCard            ? L'W'
                                                          : RankLetters[RankOf(card)];
            }
            EXPECT_EQ(rows[row][1], letters + L" ");
        }
    }

    // The hold is as short of the best as it comes out; a hold that is not is drawn in silence.
    void ExpectGrade(HoldPattern hold, ShownHand& shown) {
        Hold(hold);
        const double best = BestReturn();
        const double yours = ReturnOf(hold);
        if (yours < best) {
            const HWND question = DrawAndBeAsked();
            ExpectQuestion(question, best, yours);
            for (const int id : {GradingCost, GradingBestReturn, GradingYourReturn}) {
                shown.question.push_back(FieldText(question, id));
            }
            LeaveDialog(question, IDC_ANSWER_YES);
        } else {
            Do(program, IDC_DEAL_DRAW);
            EXPECT_EQ(FindDialog(program, QuestionTitle), nullptr);
        }
    }

    void ExpectTheCommandLinesNumbers(const std::vector<ShownHand>& hands) {
        std::vector<std::array<CardRecord, HandSize>> cards;
        for (const ShownHand& shown : hands) {
            cards.push_back(shown.cards);
        }
        const std::vector<CommandLineHand> answers =
            CommandLineHands(table.game.id, table.bet, cards);
        ASSERT_EQ(answers.size(), hands.size());
        for (std::size_t i = 0; i < hands.size(); ++i) {
            SCOPED_TRACE(i);
            const CommandLineHand& answer = answers[i];
            for (std::size_t hold = 0; hold < HoldCount; ++hold) {
                EXPECT_EQ(hands[i].returns[hold], Formatted(L"%05.4f", answer.returns[hold]));
            }
            const double best = answer.returns[answer.best];
            const double yours = answer.returns[static_cast<std::size_t>(
                HoldIndex[static_cast<std::size_t>(hands[i].hold)])];
            EXPECT_EQ(hands[i].question,
                      yours < best ? QuestionTexts(best, yours) : std::vector<std::wstring>{});
        }
    }
};

} // namespace

// In the drill the next hand comes by itself and none costs anything.
TEST_P(RandomHands, ShowTheEnginesReturnsAndCosts) {
    SetSetting(L"Lastgame", static_cast<std::uint32_t>(GetParam()));
    SetSetting(L"NoDraw", 1);
    Open(1000U + static_cast<std::uint32_t>(GetParam()));
    Deal();
    const int hands = HandCount();
    std::vector<ShownHand> shown;
    for (int hand = 0; hand < hands; ++hand) {
        SCOPED_TRACE(hand);
        shown.push_back({table.hand.cards, (hand * 11 + 5) % HoldCount, {}, {}});
        ExpectReturns(shown.back());
        ExpectGrade(shown.back().hold, shown.back());
        Settle(program);
        EndHolding(table);
        ForetellDeal(table);
        held = 0;
        if (HasFailure()) {
            break;
        }
    }
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Hands"), static_cast<std::uint32_t>(hands));
    ExpectTheCommandLinesNumbers(shown);
}

INSTANTIATE_TEST_SUITE_P(Games, RandomHands, testing::Range(0, static_cast<int>(GameCount)));
