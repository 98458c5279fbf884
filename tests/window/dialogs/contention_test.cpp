#include <cstdlib>

#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/dialogs/played_hand.h"
#include "ui/resource.h"

// All who take the game lock, against each other: the question with the details opened from it, a
// long count-up, and a game analysis that runs the whole time. TESSARIN_CONTENTION_SECONDS in the
// environment sets for how long.

namespace {

ULONGLONG Length() {
    const char* seconds = std::getenv("TESSARIN_CONTENTION_SECONDS");
    return seconds != nullptr ? std::strtoull(seconds, nullptr, 10) * 1000 : 6000;
}

class Contention : public WindowTest {
  protected:
    void KeepRunning() {
        if (Idle(analysis)) {
            ++runs;
            StartRun(program, analysis);
        }
    }

    // Posts the command until it takes effect: beside a dialog the program heeds it only while an
    // analysis runs, and the run may end first.
    template <typename Condition>
    bool Step(int command, Condition condition) {
        const ULONGLONG end = GetTickCount64() + Patience;
        while (GetTickCount64() < end) {
            KeepRunning();
            Post(program, command);
            if (Eventually([&] { return condition() || Idle(analysis); }) && condition()) {
                return true;
            }
        }
        return false;
    }

    HWND Question() { return FindDialog(program, QuestionTitle); }

    void AnswerThroughDetails() {
        const HWND question = Question();
        if (question == nullptr) {
            return;
        }
        ++questions;
        PressButton(question, IDC_GRADING_DETAILS);
        LeaveDialog(GetParent(WaitForDetails(program)), IDOK);
        LeaveDialog(question, IDC_ANSWER_YES);
    }

    RunningProgram program{};
    HWND analysis = nullptr;
    int runs = 0;
    int questions = 0;
    int hands = 0;
};

} // namespace

TEST_F(Contention, BlocksNoOneForGood) {
    SetPayouts(L"JACKS OR BETTER", true, {9000, 9000, 9000, 9000, 9000, 9000, 9000, 9000, 9000});
    SetSetting(L"Credits", 100000);
    program = StartSeeded(1, 2);
    analysis = OpenAnalysis(program, 10);
    const ULONGLONG end = GetTickCount64() + Length();
    while (GetTickCount64() < end && !HasFailure()) {
        ASSERT_TRUE(Step(IDC_DEAL_DRAW, [&] { return Holding(program); })) << "no deal";
        for (int i = 0; i < hands % 6; ++i) {
            TypeKey(program, static_cast<wchar_t>(L'1' + i));
        }
        ASSERT_TRUE(Step(IDC_DEAL_DRAW, [&] { return Question() != nullptr || !Holding(program); }))
            << "no draw";
        AnswerThroughDetails();
        ASSERT_TRUE(Eventually([&] { return !Holding(program); }));
        EXPECT_FALSE(IsWindowEnabled(program.window)) << "past the analysis' dialog";
        ++hands;
    }
    std::printf("%d hands, %d questions, %d runs\n", hands, questions, runs);
    EXPECT_GT(questions, 1);
    WaitUntilIdle(analysis);
    LeaveDialog(analysis, IDOK);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Hands"), static_cast<std::uint32_t>(hands));
}
