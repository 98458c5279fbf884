// All 32 holds of a hand with their returns and outcomes, best first.
#ifndef TESSARIN_UI_HAND_DETAILS_DIALOG_H
#define TESSARIN_UI_HAND_DETAILS_DIALOG_H

#include <windows.h>

#include "core/games.h"

// Modal over the owner, covering the main window. Lists the result table as it stands when the
// dialog has opened; it copies the hand and takes the game lock while it reads.
void ShowHandDetails(HWND owner, const Hand& hand, const GameDescriptor& game);

// Searches the hand at the current bet under the game lock, then shows its details.
void SearchAndShowHandDetails(HWND owner, const Hand& hand, const GameDescriptor& game);

#endif
