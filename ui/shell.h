// What differs between one platform's shell and another's. The handheld's shell library is found
// at run time; where a call does not exist it does nothing.
#ifndef TESSARIN_UI_SHELL_H
#define TESSARIN_UI_SHELL_H

#include <windows.h>

// Before anything else in the process.
void ShellStart();

// Style, place and size for the main window: where and as large as it was left, if that is still on
// a screen, as far as it fits there. Places are in pixels of the screen, CW_USEDEFAULT where the
// shell decides.
struct ShellWindowFrame {
    DWORD style;
    int x;
    int y;
    int width;
    int height;
    bool maximised;
};
ShellWindowFrame ShellMainWindowFrame();

// Writes the place that the next start takes up.
void ShellStorePlace(HWND window);

// After the main window is created.
void ShellAdoptWindow(HWND window);

// Brings another copy's main window, or the dialog it has open, to the front; restores it when it
// is minimised.
void ShellBringToFront(HWND window);

// Messages to the main window that only a desktop sends: the end of the user's session, which
// closes the window; the limits of its size; a move to a screen of another density. True if the
// message was one of them and is dealt with.
bool ShellHandle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The pen-driven platform's button for the on-screen keyboard.
void ShellHideInputPanelButton(HWND window);
void ShellShowInputPanelButton(HWND window);

// Whether a menu is open, the program's or the one that a desktop's window has of itself.
bool ShellMenuIsOpen();

// Carries out all drawing asked for so far, before pixels are read directly.
void ShellFinishDrawing();

// Makes a dialog fill the screen, with the shell's Done button, on the handheld.
void ShellFillScreen(HWND dialog);

// Sent to every dialog that is open over the main window when its table has another size, and to a
// dialog whose screen has another density: it lays itself out anew.
inline constexpr UINT LayOutMessage = WM_APP + 1;
void ShellLayOutDialogs(HWND mainWindow);

// For every message to a dialog that lays itself out: news of another density becomes
// LayOutMessage, after the platform has done its own part.
void ShellWatchDensity(HWND dialog, UINT message);

// Where the main window is on the screen; while it is minimised, where it was before. Maximised, it
// is the work area.
RECT ShellPlaceOf(HWND mainWindow);

// Sizes a dialog that covers the main window, which it may outgrow: it gets at least the given
// client size, as far as the screen has the room, and stays on the screen. On the handheld there is
// no such room.
void ShellCoverMainWindow(HWND dialog, HWND mainWindow, int clientWidth, int clientHeight);

// Who owns a dialog that play opens: the main window, or the dialog that is open over it and has it
// disabled.
HWND ShellDialogOwner(HWND mainWindow);

// Makes a dialog so many pixels wider and higher about its middle, as far as the screen has the
// room; returns what it got. There is none on the handheld, whose dialogs fill the screen.
SIZE ShellEnlarge(HWND dialog, int width, int height);

// Puts a dialog over the middle of the main window, within the screen.
void ShellCentreOver(HWND dialog, HWND mainWindow);

// Where a file that comes with the program lies. The path takes MAX_PATH characters; a name too
// long for it is handed back alone.
void ShellProgramFile(const wchar_t* name, wchar_t (&path)[MAX_PATH]);

// Opens the help in the platform's viewer; where there is none, a message box over the program's
// front window says where the page is.
void ShellOpenHelp();

#endif
