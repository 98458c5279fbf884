// The pictures and the card faces made from them.
#ifndef TESSARIN_UI_CARD_IMAGES_H
#define TESSARIN_UI_CARD_IMAGES_H

#include <windows.h>

#include "core/types.h"

// Loads the pictures of the current scale that stay in memory, and makes the card back.
void LoadPictures();
void DeletePictures();

// A new bitmap showing the card, CardImageWidth x CardImageHeight design pixels at the current
// scale; the caller deletes it.
HBITMAP BuildCardImage(const CardRecord& card);

// The hand's faces: deals the position's card a new one, or turns the position to its back.
void ShowFace(std::size_t position);
void ShowBack(std::size_t position);

// Every position shows its back.
void ResetHandImages();

#endif
