// A player who tries everything: taps, keys, commands, menus, dialogs and sizes at random, as fast
// as the program takes them. The seed decides what is tried; how much of it takes effect depends on
// how fast the program and the machine are.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_FIDGET_H
#define TESSARIN_TESTS_WINDOW_SOAK_FIDGET_H

#include <random>
#include <string>

#include "tests/window/harness.h"

class Fidget {
  public:
    Fidget(const RunningProgram& program, std::uint32_t seed);

    // One thing after another, on whatever the program shows just now.
    void Act();

    // The same until nothing but the main window is left, by the shortest way: questions are
    // answered, a run is stopped, dialogs and menus are closed. Whether it came to that.
    bool ComeToRest();

    // What takes the program's input just now.
    std::wstring DescribeTop() const;

    // Ends the program by one of the ways there are; nothing else is sent to it afterwards.
    void Leave();

    // A message of the test's own for the journal; comes by after everything before it.
    LONG LeaveMark();

    long Inputs() const { return inputs; }

  private:
    std::uint32_t Below(std::uint32_t end);
    bool OneIn(std::uint32_t times);
    template <typename Value, std::size_t count>
    Value OneOf(const Value (&values)[count]);

    void Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Command(int id);
    void Key(HWND window, WPARAM key);
    void Type(HWND field, const std::wstring& text);
    void TapAt(HWND window, int x, int y);
    void TapControl(HWND control);
    void Press(HWND dialog, int id);
    void XdoKeys(const std::wstring& keys);
    void XdoClick(HWND window);
    void XdoDrag();

    void ActOnTable();
    void PlayHand();
    void TapTable();
    void TypeAtTable();
    void AnyCommand();
    void ChangeSize();
    void ActInMenu(HWND menu);
    void ActIn(HWND dialog);
    void ActInMessageBox(HWND dialog);
    void ActInEditor(HWND dialog);
    void ActInHandAnalysis(HWND dialog);
    void ActInList(HWND dialog, int id);
    void Close(HWND dialog);
    HWND Foremost(const wchar_t* windowClass) const;
    HWND Top() const;

    RunningProgram program;
    std::mt19937 random;
    UINT markMessage;
    UINT tapMessage;
    LONG mark = 0;
    long inputs = 0;
};

#endif
