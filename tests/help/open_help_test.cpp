// Asking for the help in the real window: with the handheld's viewer, and without it, from a folder
// with a difficult name and another working folder.
#include "tests/window/harness.h"
#include "ui/resource.h"

namespace {

constexpr wchar_t HtmlKey[] = L"Software\\Classes\\.html";
constexpr int BoxTextId = 0xFFFF; // of a message box
constexpr wchar_t PageKey[] = L"Software\\Classes\\TessarinTestPage";

struct Seen {
    std::wstring commandLine;
    std::wstring file;
};

std::wstring TemporaryFolder() {
    wchar_t path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    return path;
}

void SetDefaultValue(const std::wstring& key, const std::wstring& value) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, value.c_str(),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

std::wstring DefaultValue(const std::wstring& key) {
    wchar_t value[MAX_PATH] = L"";
    DWORD size = sizeof value;
    RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

std::wstring StandIn() {
    return ProgramFolder() + L"help-viewer-stand-in.exe";
}

class HelpTest : public WindowTest {
  protected:
    // A copy of the program in a folder of its own, and a working folder elsewhere.
    const std::wstring programFolder = TemporaryFolder() + L"Tessarin \u00FC\u00F1\u0416 \u724C";
    const std::wstring workingFolder = TemporaryFolder() + L"Tessarin elsewhere";
    const std::wstring helpViewer = workingFolder + L"\\PegHelp.exe";
    const std::wstring helpFile = programFolder + L"\\Tessarin CE.htc";
    const std::wstring helpPage = programFolder + L"\\Tessarin CE.html";
    const std::wstring seenFile = TemporaryFolder() + L"Tessarin help seen";
    std::wstring htmlBefore;

    void SetUp() override {
        WindowTest::SetUp();
        CreateDirectoryW(programFolder.c_str(), nullptr);
        CreateDirectoryW(workingFolder.c_str(), nullptr);
        for (const wchar_t* name : {L"tessarin-ce.exe", L"Tessarin CE.htc", L"Tessarin CE.html"}) {
            const std::wstring from = ProgramFolder() + name;
            const std::wstring to = programFolder + L"\\" + name;
            ASSERT_TRUE(CopyFileW(from.c_str(), to.c_str(), FALSE)) << "no copy of the program";
        }
        SetEnvironmentVariableW(L"TESSARIN_HELP_SEEN", seenFile.c_str());
        htmlBefore = DefaultValue(HtmlKey);
        SetDefaultValue(HtmlKey, L"TessarinTestPage");
        SetDefaultValue(std::wstring(PageKey) + L"\\shell\\open\\command",
                        L"\"" + StandIn() + L"\" \"%1\"");
        ForgetSeen();
    }

    void TearDown() override {
        WindowTest::TearDown();
        DeleteFileW(helpViewer.c_str());
        SetDefaultValue(HtmlKey, htmlBefore);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, PageKey);
    }

    RunningProgram StartElsewhere() {
        wchar_t before[MAX_PATH];
        GetCurrentDirectoryW(MAX_PATH, before);
        SetCurrentDirectoryW(workingFolder.c_str());
        const RunningProgram program = StartAndWait(L"\"" + programFolder + L"\\tessarin-ce.exe\"");
        SetCurrentDirectoryW(before);
        return program;
    }

    // As on a system where no program opens pages.
    void ForgetAssociation() {
        ASSERT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, HtmlKey), ERROR_SUCCESS);
    }

    // The box that says where the page is; closes it with a key.
    void ExpectBoxOver(const RunningProgram& program, HWND owner) {
        const HWND box = WaitForDialog(program, L"Help");
        EXPECT_EQ(GetWindow(box, GW_OWNER), owner);
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_NE(TextOf(GetDlgItem(box, BoxTextId)).find(helpPage), std::wstring::npos)
            << "it does not say where the page is";
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(box); }));
        EXPECT_TRUE(IsWindowEnabled(owner));
    }

    void ForgetSeen() { DeleteFileW(seenFile.c_str()); }

    // What the viewer was asked for, once it has been. A file that has just got its name may still
    // be closed to others.
    Seen WaitForSeen() {
        HANDLE file = INVALID_HANDLE_VALUE;
        if (!Eventually([&] {
                file = CreateFileW(seenFile.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
                return file != INVALID_HANDLE_VALUE;
            })) {
            ADD_FAILURE() << "no viewer was started";
            return {};
        }
        std::wstring text(4096, L'\0');
        DWORD size = 0;
        ReadFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &size,
                 nullptr);
        CloseHandle(file);
        ForgetSeen();
        text.resize(size / sizeof(wchar_t));
        const std::size_t end = text.find(L'\n');
        return {text.substr(0, end), text.substr(end + 1)};
    }
};

TEST_F(HelpTest, StartsTheHelpViewerWithTheFileByName) {
    ASSERT_TRUE(CopyFileW(StandIn().c_str(), helpViewer.c_str(), FALSE));
    Post(StartElsewhere(), IDM_HELP);
    const Seen seen = WaitForSeen();
    EXPECT_EQ(seen.commandLine, L"Tessarin CE.htc");
    EXPECT_EQ(seen.file, helpFile);
}

TEST_F(HelpTest, ShowsThePageInTheBrowserWhereThereIsNoHelpViewer) {
    Post(StartElsewhere(), IDM_HELP);
    EXPECT_EQ(WaitForSeen().file, helpPage);
}

TEST_F(HelpTest, F1AsksForItBetweenHandsAndWhileHolding) {
    const RunningProgram program = StartElsewhere();
    PressKeys(program, L"F1");
    EXPECT_EQ(WaitForSeen().file, helpPage);
    Do(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(Eventually([&] { return Holding(program); }));
    PressKeys(program, L"F1");
    EXPECT_EQ(WaitForSeen().file, helpPage);
    EXPECT_TRUE(Holding(program));
}

TEST_F(HelpTest, WhereNothingShowsPagesItSaysWhereThePageIs) {
    ForgetAssociation();
    const RunningProgram program = StartElsewhere();
    Post(program, IDM_HELP);
    ExpectBoxOver(program, program.window);
    PressKeys(program, L"F1");
    ExpectBoxOver(program, program.window);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Eventually([&] { return Holding(program); })) << "play does not go on";
}

TEST_F(HelpTest, FromADialogItSaysSoOverTheDialog) {
    ForgetAssociation();
    const RunningProgram program = StartElsewhere();
    Post(program, IDM_SESSION_STATS);
    const HWND dialog = WaitForDialog(program, L"Current Session Analysis");
    PressKeysIn(dialog, L"F1");
    ExpectBoxOver(program, dialog);
    LeaveDialog(dialog, IDOK);
}

TEST_F(HelpTest, AskingAgainInTheBoxOpensNoSecondOne) {
    ForgetAssociation();
    const RunningProgram program = StartElsewhere();
    Post(program, IDM_HELP);
    const HWND box = WaitForDialog(program, L"Help");
    HELPINFO asked = {};
    asked.cbSize = sizeof asked;
    EXPECT_NE(SendMessageTimeoutW(program.window, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked),
                                  SMTO_NORMAL, 3000, nullptr),
              0);
    EXPECT_EQ(GetLastActivePopup(program.window), box);
    EXPECT_TRUE(IsWindowEnabled(box));
    ExpectBoxOver(program, program.window);
}

} // namespace
