// The built command line, asked as a user asks it: its answers are what the dialogs are held to.
#ifndef TESSARIN_TESTS_WINDOW_DIALOGS_COMMAND_LINE_H
#define TESSARIN_TESTS_WINDOW_DIALOGS_COMMAND_LINE_H

#include <array>
#include <string>
#include <vector>

#include "strategy/best_hold.h"
#include "training/game_analysis.h"

// What `tessarin ARGUMENTS` writes when it reads the input; fails unless it ends well.
std::string AskCommandLine(const std::wstring& arguments, const std::string& input = "");

// The analysis of a game with its default payouts.
AnalysisTexts CommandLineAnalysis(GameId id, std::int32_t bet);

// One hand's holds in hold order, and the best of them.
struct CommandLineHand {
    std::size_t best;
    std::array<double, HoldCount> returns;
};
std::vector<CommandLineHand>
CommandLineHands(GameId id, std::int32_t bet,
                 const std::vector<std::array<CardRecord, HandSize>>& hands);

#endif
