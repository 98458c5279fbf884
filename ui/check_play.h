// The question before a draw: is this the best hold?
#ifndef TESSARIN_UI_CHECK_PLAY_H
#define TESSARIN_UI_CHECK_PLAY_H

#include <windows.h>

#include "core/games.h"

// Grades the holds of the hand, counts the grade, and where the training mode asks for it shows the
// player what a short hold costs. Returns 1 to go on with the draw, 0 to return to holding.
int CheckPlay(HWND owner, const Hand& hand, const GameDescriptor& game);

// Whether the player is being asked right now.
bool AskingAboutPlay();

#endif
