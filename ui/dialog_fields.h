// Putting prepared texts and their colours into a dialog.
#ifndef TESSARIN_UI_DIALOG_FIELDS_H
#define TESSARIN_UI_DIALOG_FIELDS_H

#include <windows.h>

#include <span>

#include "training/dialog_text.h"

// Sets the text of every field's control.
void SetFieldTexts(HWND dialog, std::span<const DialogText> fields);

// For WM_CTLCOLORSTATIC: prepares dc for the control and returns the brush of its ground, or 0 for
// the platform's own colours when the control is none of the fields or stands on the dialog's.
INT_PTR ColourField(std::span<const DialogText> fields, HDC dc, HWND control);

// For WM_COMMAND: the command that the dialog is given, or 0 while it is disabled. What reaches it
// then, such as a close that came too late, would end it beneath the dialog that stands before it.
int CommandOf(HWND dialog, WPARAM wParam);

// The font the dialog shows its texts in.
HFONT DialogFont(HWND dialog);

// A measure given for a 96-dpi screen in pixels of the dialog's; never smaller than given.
int DialogPixels(HWND dialog, int pixels);

#endif
