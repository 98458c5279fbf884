// The conductor of a hand: it makes the table's moves in order and puts the pauses, the drawing,
// the sounds, the lock, the grading question and the payout count-up around them. All of it is
// for the main thread.
#ifndef TESSARIN_UI_HAND_PLAY_H
#define TESSARIN_UI_HAND_PLAY_H

#include <cstddef>
#include <cstdint>

// Deals, or draws, as the table stands.
void DealOrDraw();

// Instead of DealOrDraw where it is refused or thrown away. A drill deals again by a command, so between two hands
// the table may still look as if one were held; it shows now that none is.
void RefuseDealOrDraw();

void RaiseBet();
void ShowBet(); // on its button
void TurnHold(std::size_t position);
void ChangeGame(std::int32_t id);

// Credits back to the starting sum.
void RestoreCredits();

// A running count-up adds the rest at once.
void HurryCountUp();

// The same, and waits until its thread has ended.
void FinishCountUp();

// How to wait so many milliseconds. A test may hand in a faster clock.
void SetPause(void (*pause)(std::uint32_t milliseconds));

#endif
