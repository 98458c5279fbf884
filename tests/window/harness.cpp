#include "tests/window/harness.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include "tests/window/sound_device.h"
#include "ui/resource.h"

namespace {

constexpr wchar_t WindowClass[] = L"vrTessarinCE";
constexpr wchar_t SettingsPath[] = L"TessarCE";
constexpr wchar_t MenuClass[] = L"#32768";

std::vector<HANDLE> started;
HANDLE menuMemory = nullptr;
const SeenMenu* seenMenu = nullptr;
long inputsGiven = 0;

std::wstring SettingsPathWith(const std::wstring& below) {
    return below.empty() ? SettingsPath : SettingsPath + (L"\\" + below);
}

// In the folder of the system beneath Wine from which somebody gives real input.
std::wstring RealInputFile(const wchar_t* name) {
    const wchar_t* folder = _wgetenv(L"TESSARIN_REAL_INPUT");
    return folder != nullptr ? L"Z:" + std::wstring(folder) + L"/" + name : L"";
}

// Without a window manager on the display, Wine is to manage its windows itself; it would wait two
// seconds for one at the closing of every window.
void ManageWindowsWithoutManager() {
    if (GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") == nullptr) {
        return;
    }
    for (const wchar_t* program : {L"tessarin-ce.exe", L"tessarin-seeded.exe"}) {
        const std::wstring path =
            std::wstring(L"Software\\Wine\\AppDefaults\\") + program + L"\\X11 Driver";
        RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), L"Managed", REG_SZ, L"N", sizeof L"N");
    }
}

class DisplayWithoutManager : public testing::Environment {
  public:
    void SetUp() override { ManageWindowsWithoutManager(); }
};

const auto* const displayWithoutManager =
    testing::AddGlobalTestEnvironment(new DisplayWithoutManager);

DWORD ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

HWND MainWindowOf(DWORD processId) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, WindowClass, nullptr)) != nullptr) {
        if (ProcessOf(window) == processId && IsWindowVisible(window)) {
            return window;
        }
    }
    return nullptr;
}

struct DialogSearch {
    DWORD process;
    const wchar_t* title;
    HWND found;
};

BOOL CALLBACK MatchDialog(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<DialogSearch*>(parameter);
    if (ProcessOf(window) == search.process && IsWindowVisible(window) &&
        TextOf(window) == search.title) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

std::wstring PointArguments(const RunningProgram& program, int x, int y) {
    POINT point = {x, y};
    ClientToScreen(program.window, &point);
    return std::to_wstring(point.x) + L" " + std::to_wstring(point.y);
}

void EndStartedPrograms() {
    for (const HANDLE process : started) {
        if (WaitForSingleObject(process, 0) == WAIT_TIMEOUT) {
            TerminateProcess(process, 1);
            WaitForSingleObject(process, Patience);
        }
        CloseHandle(process);
    }
    started.clear();
}

void ForgetMenus() {
    if (seenMenu != nullptr) {
        UnmapViewOfFile(seenMenu);
        CloseHandle(menuMemory);
        seenMenu = nullptr;
    }
}

const SeenMenu& SeenMenus() {
    if (seenMenu == nullptr) {
        menuMemory = OpenFileMappingW(FILE_MAP_READ, FALSE, SeenMenuName);
        seenMenu = static_cast<const SeenMenu*>(
            MapViewOfFile(menuMemory, FILE_MAP_READ, 0, 0, sizeof(SeenMenu)));
    }
    return *seenMenu;
}

} // namespace

void WindowTest::SetUp() {
    UseSilentDevice();
    DeleteSettings();
}

void WindowTest::TearDown() {
    EndStartedPrograms();
    ForgetMenus();
    DeleteSettings();
}

RunningProgram StartProgram() {
    return StartAndWait(ProgramFolder() + L"tessarin-ce.exe");
}

RunningProgram StartSeeded(std::uint32_t seed, std::optional<unsigned> pause) {
    std::wstring command = ProgramFolder() + L"tessarin-seeded.exe " + std::to_wstring(seed);
    if (pause) {
        command += L" " + std::to_wstring(*pause);
    }
    return StartAndWait(command);
}

RunningProgram StartAndWait(const std::wstring& commandLine) {
    const PROCESS_INFORMATION process = StartProcess(commandLine);
    RunningProgram program{};
    program.process = process.hProcess;
    program.processId = process.dwProcessId;
    EXPECT_TRUE(Eventually([&] {
        program.window = MainWindowOf(process.dwProcessId);
        return program.window != nullptr;
    })) << "no main window";
    program.thread = GetWindowThreadProcessId(program.window, nullptr);
    Settle(program);
    RECT client = {};
    GetClientRect(program.window, &client);
    program.scale = static_cast<int>(client.right) / DesignWidth;
    program.layout = ComputeLayout(FitTable(client.right, client.bottom));
    return program;
}

PROCESS_INFORMATION StartProcess(const std::wstring& commandLine) {
    std::wstring command = commandLine;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    const BOOL ok = CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &startup, &process);
    EXPECT_TRUE(ok) << "cannot start the program, error " << GetLastError();
    if (ok) {
        CloseHandle(process.hThread);
        started.push_back(process.hProcess);
    }
    return process;
}

std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring file = path;
    return file.substr(0, file.rfind(L'\\') + 1);
}

std::optional<DWORD> ExitCodeOf(HANDLE process, DWORD milliseconds) {
    if (WaitForSingleObject(process, milliseconds) != WAIT_OBJECT_0) {
        return std::nullopt;
    }
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    return code;
}

void CloseProgram(const RunningProgram& program) {
    PostMessageW(program.window, WM_CLOSE, 0, 0);
    EXPECT_EQ(ExitCodeOf(program.process), 0U) << "the program does not end";
}

void DeleteSettings() {
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsPath);
}

void SetSetting(const wchar_t* name, std::uint32_t value, const std::wstring& below) {
    RegSetKeyValueW(HKEY_CURRENT_USER, SettingsPathWith(below).c_str(), name, REG_DWORD, &value,
                    sizeof value);
}

std::optional<std::uint32_t> Setting(const wchar_t* name, const std::wstring& below) {
    std::uint32_t value = 0;
    DWORD size = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, SettingsPathWith(below).c_str(), name, RRF_RT_REG_DWORD,
                     nullptr, &value, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}

bool SettingsExist() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, SettingsPath, 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

void Do(const RunningProgram& program, int command) {
    DWORD_PTR answer = 0;
    EXPECT_NE(SendMessageTimeoutW(program.window, WM_COMMAND, static_cast<WPARAM>(command), 0,
                                  SMTO_NORMAL, Patience, &answer),
              0)
        << "command " << command << " is not carried out";
}

void Post(const RunningProgram& program, int command) {
    PostMessageW(program.window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

// A sent message overtakes posted ones, so the mark that has to come by is a posted one: the Menu
// button goes down and up again. Keys and taps post a command of their own, which the second mark
// follows.
void Settle(const RunningProgram& program) {
    const HWND button = Control(program, IDC_MENU);
    for (const bool down : {true, false}) {
        PostMessageW(button, BM_SETSTATE, down, 0);
        ASSERT_TRUE(Eventually([&] {
            DWORD_PTR state = 0;
            SendMessageTimeoutW(button, BM_GETSTATE, 0, 0, SMTO_NORMAL, Patience, &state);
            return ((state & BST_PUSHED) != 0) == down;
        })) << "the program does not take its messages";
    }
}

void TypeKey(const RunningProgram& program, wchar_t key) {
    PostMessageW(program.window, WM_CHAR, key, 1);
}

void Tap(const RunningProgram& program, int x, int y) {
    PostMessageW(program.window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(program.window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void TapMiddle(const RunningProgram& program, const Area& area) {
    Tap(program, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

void RunXdotool(const std::wstring& arguments) {
    const HANDLE lines =
        CreateFileW(RealInputFile(L"lines").c_str(), GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lines, INVALID_HANDLE_VALUE) << "nobody gives real input; see tools/under-wine";
    std::string line;
    for (const wchar_t letter : arguments + L"\n") {
        line += static_cast<char>(letter);
    }
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(lines, line.data(), static_cast<DWORD>(line.size()), &written, nullptr));
    CloseHandle(lines);
    ++inputsGiven;
}

long RealInputsOnTheirWay() {
    long done = 0;
    std::FILE* file = _wfopen(RealInputFile(L"done").c_str(), L"r");
    if (file != nullptr) {
        if (std::fscanf(file, "%ld", &done) != 1) {
            done = 0; // it is being written
        }
        std::fclose(file);
    }
    return inputsGiven - done;
}

// The keyboard belongs to the window under the pointer, which stands between the cards and the
// prompt band.
void PressKeys(const RunningProgram& program, const std::wstring& keys) {
    const int x = program.layout.cards[2].left;
    const int y = program.layout.coinsIn.top;
    RunXdotool(L"mousemove " + PointArguments(program, x, y) + L" key " + keys);
}

void PressKeysIn(HWND window, const std::wstring& keys) {
    RECT place = {};
    GetWindowRect(window, &place);
    RunXdotool(L"mousemove " + std::to_wstring((place.left + place.right) / 2) + L" " +
               std::to_wstring(place.bottom - 4) + L" key " + keys);
}

void PressPointer(const RunningProgram& program, int x, int y) {
    RunXdotool(L"mousemove " + PointArguments(program, x, y) + L" click 1");
}

void GrabTitle(const RunningProgram& program) {
    RECT place;
    GetWindowRect(program.window, &place);
    RunXdotool(L"mousemove " + std::to_wstring((place.left + place.right) / 2) + L" " +
               std::to_wstring(place.top + 12) + L" mousedown 1");
    EXPECT_TRUE(Eventually([&] { return IsGrabbed(program); })) << "the title is not grabbed";
}

bool IsGrabbed(const RunningProgram& program) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(program.thread, &info) && (info.flags & GUI_INMOVESIZE) != 0;
}

void LetGo() {
    RunXdotool(L"mouseup 1");
}

HWND Control(const RunningProgram& program, int id) {
    return GetDlgItem(program.window, id);
}

std::wstring TextOf(HWND window) {
    wchar_t text[260] = {};
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, 260, reinterpret_cast<LPARAM>(text), SMTO_NORMAL,
                        Patience, &length);
    return text;
}

std::wstring ControlText(const RunningProgram& program, int id) {
    return TextOf(Control(program, id));
}

bool Holding(const RunningProgram& program) {
    return ControlText(program, IDC_DEAL_DRAW) == L"DRAW";
}

HWND FocusOf(const RunningProgram& program) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(program.thread, &info);
    return info.hwndFocus;
}

HWND FindDialog(const RunningProgram& program, const wchar_t* title) {
    DialogSearch search = {program.processId, title, nullptr};
    EnumWindows(MatchDialog, reinterpret_cast<LPARAM>(&search));
    return search.found == program.window ? nullptr : search.found;
}

HWND WaitForDialog(const RunningProgram& program, const wchar_t* title) {
    HWND dialog = nullptr;
    EXPECT_TRUE(Eventually([&] {
        dialog = FindDialog(program, title);
        return dialog != nullptr;
    })) << "no such dialog";
    return dialog;
}

void LeaveDialog(HWND dialog, int button) {
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); })) << "the dialog stays";
}

SeenMenu OpenMenu(const RunningProgram& program, int command) {
    const LONG shown = SeenMenus().shown;
    Post(program, command);
    return WaitForMenu(program, shown);
}

SeenMenu WaitForMenu(const RunningProgram&, LONG shownBefore) {
    EXPECT_TRUE(Eventually([&] { return SeenMenus().shown > shownBefore; })) << "no menu opens";
    return SeenMenus();
}

bool MenuIsOpen(const RunningProgram& program) {
    HWND menu = nullptr;
    while ((menu = FindWindowExW(nullptr, menu, MenuClass, nullptr)) != nullptr) {
        if (ProcessOf(menu) == program.processId && IsWindowVisible(menu)) {
            return true;
        }
    }
    return false;
}

void CloseMenu(const RunningProgram& program) {
    PostMessageW(program.window, WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_TRUE(Eventually([&] { return !MenuIsOpen(program); })) << "the menu stays open";
    Settle(program);
}
