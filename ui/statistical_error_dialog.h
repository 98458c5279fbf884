// The question asked when the player's hold falls short of the best one.
#ifndef TESSARIN_UI_STATISTICAL_ERROR_DIALOG_H
#define TESSARIN_UI_STATISTICAL_ERROR_DIALOG_H

#include <windows.h>

#include "training/play_grading.h"

// Modal over the owner; true for "Yes". Its "Details..." lists the holds of the hand from the
// result table as it stands: the caller holds the game lock.
bool PlayItAnyway(HWND owner, const Hand& hand, const GameDescriptor& game, const PlayGrade& grade);

#endif
