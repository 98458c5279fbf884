// Making a picture smaller without dropping its lines.
#ifndef TESSARIN_UI_SMOOTH_REDUCE_H
#define TESSARIN_UI_SMOOTH_REDUCE_H

#include <windows.h>

// Draws the bitmap at the top left of dc at a size no larger than its own: every pixel is the mean
// of the part of the picture it stands for. The platform's own stretching would drop rows and
// columns. Draws nothing if memory is short.
void DrawReduced(HDC dc, int width, int height, HBITMAP picture, int pictureWidth,
                 int pictureHeight);

#endif
