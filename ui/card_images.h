// The pictures and the card faces made from them.
#ifndef TESSARIN_UI_CARD_IMAGES_H
#define TESSARIN_UI_CARD_IMAGES_H

#include <windows.h>

#include "core/types.h"

// A suit's small pip, in design pixels.
inline constexpr int SmallPipSize = 15;

// Loads the pictures that stay in memory for the table's size, and makes the card back and anew
// the faces that the hand shows.
void LoadPictures();

// Deletes all of them; the faces that the hand shows are remembered for the next loading.
void DeletePictures();

// A new bitmap showing the card, CardImageWidth x CardImageHeight design pixels at the current
// scale; the caller deletes it. Null if the system has no objects left for it.
HBITMAP BuildCardImage(const CardRecord& card);

// Diamonds and hearts.
constexpr bool IsRed(int suit) {
    return suit == 1 || suit == 2;
}

// Draws a suit's small pip with its top left corner at (x, y), in pixels.
void DrawSmallPip(HDC dc, int x, int y, int suit);

// The hand's faces: deals the position's card a new one, or turns the position to its back.
void ShowFace(std::size_t position);
void ShowBack(std::size_t position);

// Every position shows its back.
void ResetHandImages();

#endif
