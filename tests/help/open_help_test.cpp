// Asking for the help in the real window: with the handheld's viewer, and without it, from a folder
// with a difficult name and another working folder.
#include "tests/window/harness.h"
#include "ui/resource.h"

namespace {

constexpr wchar_t HtmlKey[] = L"Software\\Classes\\.html";
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

} // namespace
