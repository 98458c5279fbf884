// A hand in the seeded program, with the table as it is foretold beside it, for the tests of what
// the trainer says about it.
#ifndef TESSARIN_TESTS_WINDOW_DIALOGS_PLAYED_HAND_H
#define TESSARIN_TESTS_WINDOW_DIALOGS_PLAYED_HAND_H

#include <string>
#include <vector>

#include "strategy/best_hold.h"
#include "tests/window/dialogs/reading.h"
#include "tests/window/forecast.h"

inline constexpr wchar_t QuestionTitle[] = L"Statistical Error!";
inline constexpr wchar_t StatsTitle[] = L"Current Session Analysis";

class PlayedHand : public WindowTest {
  protected:
    // Starts the program and foretells it, with the settings as they are; then the next hand.
    void Open(std::uint32_t seed);
    void Deal();

    // Turns the holds so, by keys.
    void Hold(HoldPattern pattern);

    // Draws, expecting no question; the same expecting one, which is returned. The table beside
    // draws only by the first, or when the question is answered with yes.
    void Draw();
    HWND DrawAndBeAsked();
    void AnswerYes(HWND question);

    // Searches the foretold hand; the results are in the result table.
    std::int32_t Search();
    double ReturnOf(HoldPattern pattern);
    double BestReturn();
    HoldPattern BestHold();

    // The first hold in hold order whose cost is above the one number and not above the other.
    HoldPattern HoldCosting(double above, double atMost);
    bool HasHoldCosting(double above, double atMost);

    RunningProgram program{};
    Table table;
    HoldPattern held = 0;
};

// Formatted as the dialogs do.
std::wstring Formatted(const wchar_t* format, double value);

// Whether the question shows the texts of these two returns.
void ExpectQuestion(HWND question, double best, double yours);

// The fields of the statistics, by their controls' ids from 4003 on; opens and closes the dialog.
std::vector<std::wstring> ReadStats(const RunningProgram& program, const std::vector<int>& ids);

// Puts a column of payouts in the store.
void SetPayouts(const wchar_t* title, bool fiveCoins, const std::vector<std::int32_t>& payouts);

#endif
