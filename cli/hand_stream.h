// Hands by the thousand: one a line in, one answer a line out.
#ifndef TESSARIN_CLI_HAND_STREAM_H
#define TESSARIN_CLI_HAND_STREAM_H

#include "core/games.h"

// The program's exit statuses.
enum ExitStatus : int { ExitDone = 0, ExitFailed = 1, ExitBadInput = 2 };

// Reads hands from standard input to its end and writes the answer to each as a JSON line, in the
// same order. A line that is no hand is named on standard error by its number, from 1, and has no
// answer. What has been answered is written before the stream waits for more, so that two programs
// may converse. ExitBadInput if any line was no hand, ExitFailed if reading or writing failed.
ExitStatus AnswerHands(const GameDescriptor& game, std::int32_t bet);

#endif
