#include <string>

#include "tests/window/handheld/shell_calls.h"
#include "tests/window/harness.h"
#include "ui/resource.h"

// What the program asks of the handheld's shell, where there is one: a copy of the program beside a
// stand-in for the shell's library.

namespace {

constexpr DWORD ShowButton = 4; // states of the full-screen call
constexpr DWORD HideButton = 8;

class Handheld : public WindowTest {
  protected:
    const std::wstring folder = TemporaryFolder() + L"Tessarin on the handheld";

    void SetUp() override {
        WindowTest::SetUp();
        CreateDirectoryW(folder.c_str(), nullptr);
        Copy(L"tessarin-ce.exe", L"tessarin-ce.exe");
        Copy(L"handheld\\aygshell.dll", L"aygshell.dll");
        SetSetting(L"Sound", 0);
    }

    RunningProgram StartOnHandheld() {
        return StartAndWait(L"\"" + folder + L"\\tessarin-ce.exe\"");
    }

  private:
    static std::wstring TemporaryFolder() {
        wchar_t path[MAX_PATH];
        GetTempPathW(MAX_PATH, path);
        return path;
    }

    void Copy(const wchar_t* from, const wchar_t* to) {
        const std::wstring source = ProgramFolder() + from;
        const std::wstring target = folder + L"\\" + to;
        ASSERT_TRUE(CopyFileW(source.c_str(), target.c_str(), FALSE)) << "no copy to play with";
    }
};

// The calls made so far; none if the library was never asked.
ShellCalls CallsSoFar() {
    ShellCalls calls = {};
    const HANDLE memory = OpenFileMappingW(FILE_MAP_READ, FALSE, ShellCallsName);
    const auto* seen = static_cast<const ShellCalls*>(
        MapViewOfFile(memory, FILE_MAP_READ, 0, 0, sizeof(ShellCalls)));
    if (seen != nullptr) {
        calls = *seen;
        UnmapViewOfFile(seen);
        CloseHandle(memory);
    }
    return calls;
}

bool LastStateIs(DWORD state) {
    return Eventually([&] {
        const ShellCalls calls = CallsSoFar();
        return calls.states > 0 && calls.state[calls.states - 1] == state;
    });
}

} // namespace

TEST_F(Handheld, HidesTheKeyboardsButtonWhenTheTableGetsTheFocus) {
    const RunningProgram program = StartOnHandheld();
    EXPECT_TRUE(LastStateIs(HideButton));
    const LONG before = CallsSoFar().states;
    SendMessageW(program.window, WM_SETFOCUS, 0, 0);
    const ShellCalls calls = CallsSoFar();
    ASSERT_EQ(calls.states, before + 1);
    EXPECT_EQ(calls.state[before], HideButton);
    EXPECT_EQ(calls.window[before], program.window);
    EXPECT_EQ(calls.dialogs, 0);
}

TEST_F(Handheld, ShowsTheKeyboardsButtonForThePaytableEditorAndFillsTheScreenWithIt) {
    const RunningProgram program = StartOnHandheld();
    ASSERT_TRUE(LastStateIs(HideButton));
    Post(program, IDM_CHANGE_PAYTABLE);
    HWND editor = nullptr;
    ASSERT_TRUE(Eventually([&] {
        editor = GetLastActivePopup(program.window);
        return editor != program.window && IsWindowVisible(editor);
    }));
    EXPECT_TRUE(LastStateIs(ShowButton));
    const ShellCalls calls = CallsSoFar();
    for (LONG i = 0; i < calls.states; ++i) {
        EXPECT_EQ(calls.window[i], program.window);
    }
    ASSERT_EQ(calls.dialogs, 1);
    EXPECT_EQ(calls.dialog[0].mask, 1U);
    EXPECT_EQ(calls.dialog[0].dialog, editor);
    EXPECT_EQ(calls.dialog[0].flags, 3U);
    LeaveDialog(editor, IDCANCEL);
    EXPECT_TRUE(LastStateIs(HideButton));
}
