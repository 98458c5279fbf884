// Drives the built program from outside, as a player and a session would: it is started as a
// process of its own, and reached only by messages, real keys and taps, the registry, and what its
// window shows.
#ifndef TESSARIN_TESTS_WINDOW_HARNESS_H
#define TESSARIN_TESTS_WINDOW_HARNESS_H

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/window/seen_menu.h"
#include "ui/layout.h"

// Milliseconds until what should happen at once counts as not happening; long, for a busy machine.
inline constexpr DWORD Patience = 15000;

// Whether the condition comes to hold.
template <typename Condition>
bool Eventually(Condition condition, DWORD milliseconds = Patience) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() >= end) {
            return condition();
        }
        Sleep(2);
    }
    return true;
}

struct RunningProgram {
    HANDLE process;
    DWORD processId;
    DWORD thread; // the main thread's id
    HWND window;
    int scale;
    Layout layout;
};

// Starts each test without settings, and ends it without settings and without programs.
class WindowTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
};

// The program itself, its cards decided by the clock, and the same with its cards foretold.
// Waits until the window is up; asserts that it comes. With a pause every pause of the game lasts
// so many milliseconds.
RunningProgram StartProgram();
RunningProgram StartSeeded(std::uint32_t seed, std::optional<unsigned> pause = std::nullopt);

// The same for any command line that starts the program.
RunningProgram StartAndWait(const std::wstring& commandLine);

// Starts a program of the build folder, or of the path given, and waits for nothing. The harness
// ends it after the test if it still runs.
PROCESS_INFORMATION StartProcess(const std::wstring& commandLine);

// The build folder's programs, with a backslash at the end.
std::wstring ProgramFolder();

// Whether the process ends, and how. The window is asked to close first by the second.
std::optional<DWORD> ExitCodeOf(HANDLE process, DWORD milliseconds = Patience);
void CloseProgram(const RunningProgram& program);

// Settings, under the program's key; a path below it may be given.
void DeleteSettings();
void SetSetting(const wchar_t* name, std::uint32_t value, const std::wstring& below = L"");
std::optional<std::uint32_t> Setting(const wchar_t* name, const std::wstring& below = L"");
bool SettingsExist();

// Commands. Do waits until the program has carried the command out, Post does not.
void Do(const RunningProgram& program, int command);
void Post(const RunningProgram& program, int command);

// Waits until the program has taken all messages before this one.
void Settle(const RunningProgram& program);

// A key as a message, and a tap on a point of the client area as messages.
void TypeKey(const RunningProgram& program, wchar_t key);
void Tap(const RunningProgram& program, int x, int y);
void TapMiddle(const RunningProgram& program, const Area& area);

// The same from the real keyboard and the real pointer, with xdotool's own key names ("b",
// "Return"), any number in turn. The program has them some time later: wait for their effect.
void PressKeys(const RunningProgram& program, const std::wstring& keys);
// The keyboard belongs to the window under the pointer, so a dialog's keys are pressed in it.
void PressKeysIn(HWND window, const std::wstring& keys);
void PressPointer(const RunningProgram& program, int x, int y);

// Presses the real pointer on the title bar, by which the window can be moved until LetGo.
void GrabTitle(const RunningProgram& program);
bool IsGrabbed(const RunningProgram& program);
void LetGo();

// Has xdotool carry out any of its commands after those it was given before, and does not wait.
void RunXdotool(const std::wstring& arguments);
// How many of them are still to be carried out.
long RealInputsOnTheirWay();

// Child controls and dialogs.
HWND Control(const RunningProgram& program, int id);
std::wstring TextOf(HWND window);
std::wstring ControlText(const RunningProgram& program, int id);
bool Holding(const RunningProgram& program); // by the Deal button's text
HWND FocusOf(const RunningProgram& program);

// A visible top-level window of the program, other than the main window, with the title; null if
// there is none.
HWND FindDialog(const RunningProgram& program, const wchar_t* title);
HWND WaitForDialog(const RunningProgram& program, const wchar_t* title);
// Presses a dialog's button and waits until the dialog is gone.
void LeaveDialog(HWND dialog, int button);

// The popup menu that opens at the command, its place and items (seeded program only). The menu
// stays open.
SeenMenu OpenMenu(const RunningProgram& program, int command);
bool MenuIsOpen(const RunningProgram& program);
// Waits for the next menu after one seen before.
SeenMenu WaitForMenu(const RunningProgram& program, LONG shownBefore);
void CloseMenu(const RunningProgram& program);

#endif
