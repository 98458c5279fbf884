// Making a picture smaller without dropping its lines.
#ifndef TESSARIN_UI_SMOOTH_REDUCE_H
#define TESSARIN_UI_SMOOTH_REDUCE_H

#include <windows.h>

#include "ui/layout.h"

// Draws a part of the picture into the target area of dc, which is no larger than that part: every
// pixel is the mean of what it stands for. The platform's own stretching would drop rows and
// columns. The part has up to 16 million pixels. Draws nothing if memory is short.
void DrawReduced(HDC dc, const Area& target, HBITMAP picture, const Area& part);

#endif
