// Reads the program's dialogs from outside: their texts, lists, places and pixels.
#ifndef TESSARIN_TESTS_WINDOW_DIALOGS_READING_H
#define TESSARIN_TESTS_WINDOW_DIALOGS_READING_H

#include <string>
#include <utility>
#include <vector>

#include "core/table.h"
#include "training/dialog_text.h"

// After the grounds of texts, whose names are colours here.
#include "tests/window/looks.h"

// A visible window of the program, other than the main one, with such a child control; null if
// there is none. Of several the one on top.
HWND FindDialogWith(const RunningProgram& program, int controlId);
HWND WaitForDialogWith(const RunningProgram& program, int controlId);

// Posts the command and waits for its dialog.
HWND OpenDialog(const RunningProgram& program, int command, const wchar_t* title);
HWND OpenDialogWith(const RunningProgram& program, int command, int controlId);

// Presses a button as a tap does, and waits for nothing.
void PressButton(HWND dialog, int id);

std::wstring FieldText(HWND dialog, int id);

// The place of a control in its dialog's client area, in pixels.
RECT PlaceIn(HWND dialog, HWND control);

// Whether the dialog's controls stand where these dialog units of its template put them. In a
// dialog that has grown, a control may have gone along with its edges.
enum class GoesAlong { No, Down, RightAndDown, Grows };
struct UnitPlace {
    int id;
    int x;
    int y;
    int width;
    int height;
    GoesAlong along = GoesAlong::No;
};
void ExpectPlaces(HWND dialog, int dialogTemplate, const std::vector<UnitPlace>& places);

// The texts of the statics without a number, in the template's order.
std::vector<std::wstring> PlainTexts(HWND dialog);

// The font of the dialog templates, and the one for display in them. The caller deletes it.
HFONT MakeDialogFont();
HFONT MakeDisplayFont();

std::wstring GameTitle(GameId game);

// Report lists. Text is the width of the header's text, Cells the widest cell's, both in the
// list's own font.
struct SeenColumn {
    std::wstring header;
    int width;
    int alignment; // LVCFMT_
    int textWidth;
};
using SeenRow = std::vector<std::wstring>;

HWND ListOf(HWND dialog, int id);
int CountRows(HWND list);
bool Scrolls(HWND list); // either way
std::vector<SeenColumn> ReadColumns(const RunningProgram& program, HWND list);
// All rows from the top; only the first so many columns.
std::vector<SeenRow> ReadRows(const RunningProgram& program, HWND list, int columns);
// The rows' item data, from the top.
std::vector<int> ReadRowData(const RunningProgram& program, HWND list);
int WidthInList(const RunningProgram& program, HWND list, const std::wstring& text);

// The details list, once it is filled, sorted and its columns are fitted.
HWND WaitForDetails(const RunningProgram& program);

// The pixels of a window's client area, or of a part of it, as the screen shows them.
Picture GrabWindow(HWND window);
Picture GrabPart(HWND window, const RECT& part);

// A text field once it shows ink of the one colour on a ground of the other, and nothing else but
// what lies between the two at the edges of smoothed letters; fails if it does not come to that.
Picture GrabField(HWND dialog, int id, std::uint32_t ground, std::uint32_t ink);

// Whether the field comes to show an ink box of this width and height on the ground.
bool ShowsInkOfSize(HWND dialog, int id, std::uint32_t ground, std::pair<LONG, LONG> size);

int CountPixels(const Picture& picture, std::uint32_t colour);

// The box around all pixels that are not of the ground's colour.
RECT InkBox(const Picture& picture, std::uint32_t ground);
// The same of a text drawn in a font, from its own corner.
RECT InkBoxOf(const std::wstring& text, HFONT font);
// Width and height.
std::pair<LONG, LONG> SizeOf(const RECT& box);

// Settings of other types.
void SetRealSetting(const wchar_t* name, double value);
double RealSetting(const wchar_t* name);
std::optional<std::wstring> TextSetting(const std::wstring& name, const std::wstring& below);
void SetTextSetting(const std::wstring& name, const std::wstring& value, const std::wstring& below);

// Sets the cards of the hand on the table held or not, as the pattern says, by keys; the hand has
// the holds that are given.
void TypeHolds(const RunningProgram& program, HoldPattern from, HoldPattern to);

// Between two times of the performance counter.
double MillisecondsBetween(LONGLONG start, LONGLONG end);
LONGLONG Now();

#endif
