#include "tests/window/dialogs/reading.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "ui/resource.h"

namespace {

struct Search {
    const RunningProgram& program;
    int controlId;
    HWND found;
};

BOOL CALLBACK MatchControl(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search.program.processId && window != search.program.window &&
        IsWindowVisible(window) && GetDlgItem(window, search.controlId) != nullptr) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    EXPECT_NE(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, Patience, &answer),
              0)
        << "message " << message << " is not answered";
    return static_cast<LRESULT>(answer);
}

// Memory in the program's own process, where its controls can write; one block serves a program for
// as long as it runs.
class FarMemory {
  public:
    explicit FarMemory(const RunningProgram& program) : process(program.process) {
        static DWORD ownerOfBlock = 0;
        static void* block = nullptr;
        if (ownerOfBlock != program.processId) {
            ownerOfBlock = program.processId;
            block =
                VirtualAllocEx(process, nullptr, Size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
            EXPECT_NE(block, nullptr);
        }
        memory = block;
    }

    static constexpr std::size_t Size = 1 << 18;

    char* Address(std::size_t offset = 0) const { return static_cast<char*>(memory) + offset; }
    void Put(const void* data, std::size_t size) const {
        ASSERT_LE(size, Size);
        EXPECT_TRUE(WriteProcessMemory(process, memory, data, size, nullptr));
    }
    void Get(void* data, std::size_t size) const {
        EXPECT_TRUE(ReadProcessMemory(process, memory, data, size, nullptr));
    }

  private:
    HANDLE process;
    void* memory;
};

constexpr int CellSize = 40; // characters

// One cell's question and the room for its answer.
struct FarCell {
    LVITEMW item;
    wchar_t text[CellSize];
};

Picture GrabScreen(const RECT& place) {
    const int width = static_cast<int>(place.right - place.left);
    const int height = static_cast<int>(place.bottom - place.top);
    const HDC screen = GetDC(nullptr);
    const Picture picture = Painted(screen, width, height, [&](HDC dc) {
        BitBlt(dc, 0, 0, width, height, screen, static_cast<int>(place.left),
               static_cast<int>(place.top), SRCCOPY);
    });
    ReleaseDC(nullptr, screen);
    return picture;
}

bool IsBetween(std::uint32_t pixel, std::uint32_t one, std::uint32_t other) {
    for (const int shift : {0, 8, 16}) {
        const std::uint32_t a = one >> shift & 0xFF;
        const std::uint32_t b = other >> shift & 0xFF;
        const std::uint32_t value = pixel >> shift & 0xFF;
        if (value < std::min(a, b) || value > std::max(a, b)) {
            return false;
        }
    }
    return true;
}

bool ShowsOnly(const Picture& picture, std::uint32_t ground, std::uint32_t ink) {
    return CountPixels(picture, ink) > 0 &&
           CountPixels(picture, ground) * 2 > picture.width * picture.height &&
           std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](std::uint32_t pixel) { return IsBetween(pixel, ground, ink); });
}

std::wstring PathBelow(const std::wstring& below) {
    return below.empty() ? L"TessarCE" : L"TessarCE\\" + below;
}

} // namespace

HWND FindDialogWith(const RunningProgram& program, int controlId) {
    Search search = {program, controlId, nullptr};
    EnumWindows(MatchControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND WaitForDialogWith(const RunningProgram& program, int controlId) {
    HWND dialog = nullptr;
    EXPECT_TRUE(Eventually([&] {
        dialog = FindDialogWith(program, controlId);
        return dialog != nullptr;
    })) << "no dialog with the control "
        << controlId;
    return dialog;
}

HWND OpenDialog(const RunningProgram& program, int command, const wchar_t* title) {
    Post(program, command);
    return WaitForDialog(program, title);
}

HWND OpenDialogWith(const RunningProgram& program, int command, int controlId) {
    Post(program, command);
    return WaitForDialogWith(program, controlId);
}

void PressButton(HWND dialog, int id) {
    PostMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

std::wstring FieldText(HWND dialog, int id) {
    return TextOf(GetDlgItem(dialog, id));
}

RECT PlaceIn(HWND dialog, HWND control) {
    RECT place;
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// The program's own template, opened here and hidden, knows its units.
void ExpectPlaces(HWND dialog, int dialogTemplate, const std::vector<UnitPlace>& places) {
    const HMODULE file = LoadLibraryExW((ProgramFolder() + L"tessarin-ce.exe").c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND measure = CreateDialogParamW(
        file, MAKEINTRESOURCEW(dialogTemplate), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(measure, nullptr);
    RECT designed;
    GetClientRect(measure, &designed);
    for (const UnitPlace& at : places) {
        RECT wanted = {at.x, at.y, at.width, at.height};
        MapDialogRect(measure, &wanted);
        RECT client;
        GetClientRect(dialog, &client);
        const bool grows = at.along == GoesAlong::Grows;
        (grows ? wanted.right : wanted.left) +=
            grows || at.along == GoesAlong::RightAndDown ? client.right - designed.right : 0;
        (grows ? wanted.bottom : wanted.top) +=
            at.along != GoesAlong::No ? client.bottom - designed.bottom : 0;
        const RECT seen = PlaceIn(dialog, GetDlgItem(dialog, at.id));
        EXPECT_EQ(seen.left, wanted.left) << at.id;
        EXPECT_EQ(seen.top, wanted.top) << at.id;
        EXPECT_EQ(seen.right, wanted.left + wanted.right) << at.id;
        EXPECT_EQ(seen.bottom, wanted.top + wanted.bottom) << at.id;
    }
    DestroyWindow(measure);
    FreeLibrary(file);
}

std::vector<std::wstring> PlainTexts(HWND dialog) {
    std::vector<std::wstring> texts;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (static_cast<short>(GetDlgCtrlID(child)) == -1) {
            texts.push_back(TextOf(child));
        }
    }
    return texts;
}

HFONT MakeDialogFont() {
    LOGFONTW font = {};
    const HDC screen = GetDC(nullptr);
    font.lfHeight = -MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpyW(font.lfFaceName, L"MS Sans Serif");
    return CreateFontIndirectW(&font);
}

HFONT MakeDisplayFont() {
    LOGFONTW font = {};
    font.lfHeight = 16;
    font.lfWeight = FW_BOLD;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    return CreateFontIndirectW(&font);
}

std::wstring GameTitle(GameId game) {
    GameDescriptor descriptor{};
    Paytable payouts{};
    DescribeGame(descriptor, game, payouts);
    return descriptor.title;
}

HWND ListOf(HWND dialog, int id) {
    const HWND list = GetDlgItem(dialog, id);
    wchar_t name[32] = L"";
    GetClassNameW(list, name, 32);
    EXPECT_STREQ(name, L"SysListView32");
    return list;
}

bool Scrolls(HWND list) {
    return (GetWindowLongW(list, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL)) != 0;
}

int CountRows(HWND list) {
    return static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
}

std::vector<SeenColumn> ReadColumns(const RunningProgram& program, HWND list) {
    const auto header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER));
    const int count = static_cast<int>(Ask(header, HDM_GETITEMCOUNT));
    struct {
        LVCOLUMNW column;
        wchar_t text[CellSize];
    } seen = {};
    const FarMemory memory(program);
    std::vector<SeenColumn> columns;
    for (int index = 0; index < count; ++index) {
        seen.column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
        seen.column.cchTextMax = CellSize;
        seen.column.pszText = reinterpret_cast<wchar_t*>(memory.Address(sizeof seen.column));
        memory.Put(&seen, sizeof seen);
        Ask(list, LVM_GETCOLUMNW, static_cast<WPARAM>(index),
            reinterpret_cast<LPARAM>(memory.Address()));
        memory.Get(&seen, sizeof seen);
        const std::wstring text = seen.text;
        columns.push_back({text, seen.column.cx, seen.column.fmt & LVCFMT_JUSTIFYMASK,
                           WidthInList(program, list, text)});
    }
    return columns;
}

std::vector<SeenRow> ReadRows(const RunningProgram& program, HWND list, int columns) {
    const int rows = CountRows(list);
    const auto count = static_cast<std::size_t>(rows * columns);
    std::vector<FarCell> cells(count);
    const FarMemory memory(program);
    for (std::size_t i = 0; i < count; ++i) {
        cells[i].item.iSubItem = static_cast<int>(i) % columns;
        cells[i].item.cchTextMax = CellSize;
        cells[i].item.pszText = reinterpret_cast<wchar_t*>(
            memory.Address(i * sizeof(FarCell) + offsetof(FarCell, text)));
    }
    memory.Put(cells.data(), count * sizeof(FarCell));
    for (std::size_t i = 0; i < count; ++i) {
        Ask(list, LVM_GETITEMTEXTW, i / static_cast<std::size_t>(columns),
            reinterpret_cast<LPARAM>(memory.Address(i * sizeof(FarCell))));
    }
    memory.Get(cells.data(), count * sizeof(FarCell));
    std::vector<SeenRow> seen(static_cast<std::size_t>(rows));
    for (std::size_t i = 0; i < count; ++i) {
        seen[i / static_cast<std::size_t>(columns)].push_back(cells[i].text);
    }
    return seen;
}

std::vector<int> ReadRowData(const RunningProgram& program, HWND list) {
    const FarMemory memory(program);
    std::vector<int> data;
    const int rows = CountRows(list);
    for (int row = 0; row < rows; ++row) {
        LVITEMW item = {};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        memory.Put(&item, sizeof item);
        Ask(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.Address()));
        memory.Get(&item, sizeof item);
        data.push_back(static_cast<int>(item.lParam));
    }
    return data;
}

int WidthInList(const RunningProgram& program, HWND list, const std::wstring& text) {
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    const FarMemory memory(program);
    memory.Put(text.c_str(), size);
    return static_cast<int>(
        Ask(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(memory.Address())));
}

// The program fills the list within one message: whoever sees all rows and is then answered once
// more has the list as it stays.
HWND WaitForDetails(const RunningProgram& program) {
    HWND list = nullptr;
    EXPECT_TRUE(Eventually([&] {
        const HWND dialog = FindDialogWith(program, IDC_DETAILS_LIST);
        list = dialog != nullptr ? GetDlgItem(dialog, IDC_DETAILS_LIST) : nullptr;
        return list != nullptr && CountRows(list) == 32;
    })) << "the details do not come";
    return list;
}

Picture GrabWindow(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    return GrabPart(window, client);
}

Picture GrabPart(HWND window, const RECT& part) {
    RECT place = part;
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return GrabScreen(place);
}

Picture GrabField(HWND dialog, int id, std::uint32_t ground, std::uint32_t ink) {
    constexpr int stillLooks = 5;
    Picture field = {};
    int same = 0;
    EXPECT_TRUE(Eventually([&] {
        const Picture before = field;
        field = GrabWindow(GetDlgItem(dialog, id)); // inside its border
        same = field == before ? same + 1 : 0;
        return same >= stillLooks && ShowsOnly(field, ground, ink);
    })) << "field "
        << id << " has other colours";
    return field;
}

bool ShowsInkOfSize(HWND dialog, int id, std::uint32_t ground, std::pair<LONG, LONG> size) {
    return Eventually(
        [&] { return SizeOf(InkBox(GrabWindow(GetDlgItem(dialog, id)), ground)) == size; });
}

int CountPixels(const Picture& picture, std::uint32_t colour) {
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), colour));
}

RECT InkBox(const Picture& picture, std::uint32_t ground) {
    RECT box = {picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.At(x, y) != ground) {
                box.left = std::min<LONG>(box.left, x);
                box.top = std::min<LONG>(box.top, y);
                box.right = std::max<LONG>(box.right, x + 1);
                box.bottom = std::max<LONG>(box.bottom, y + 1);
            }
        }
    }
    return box;
}

RECT InkBoxOf(const std::wstring& text, HFONT font) {
    const HDC screen = GetDC(nullptr);
    constexpr int width = 300;
    constexpr int height = 60;
    const Picture picture = Painted(screen, width, height, [&](HDC dc) {
        const HGDIOBJ before = SelectObject(dc, font);
        RECT all = {0, 0, width, height};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        DrawTextW(dc, text.c_str(), -1, &all, DT_SINGLELINE | DT_NOPREFIX);
        SelectObject(dc, before);
    });
    ReleaseDC(nullptr, screen);
    return InkBox(picture, White);
}

std::pair<LONG, LONG> SizeOf(const RECT& box) {
    return {box.right - box.left, box.bottom - box.top};
}

void SetRealSetting(const wchar_t* name, double value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"TessarCE", name, REG_BINARY, &value, sizeof value);
}

double RealSetting(const wchar_t* name) {
    double value = -1;
    DWORD size = sizeof value;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"TessarCE", name, RRF_RT_REG_BINARY, nullptr, &value,
                           &size),
              ERROR_SUCCESS);
    return value;
}

std::optional<std::wstring> TextSetting(const std::wstring& name, const std::wstring& below) {
    wchar_t text[130] = L"";
    DWORD size = sizeof text;
    if (RegGetValueW(HKEY_CURRENT_USER, PathBelow(below).c_str(), name.c_str(), RRF_RT_REG_SZ,
                     nullptr, text, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return text;
}

void SetTextSetting(const std::wstring& name, const std::wstring& value,
                    const std::wstring& below) {
    RegSetKeyValueW(HKEY_CURRENT_USER, PathBelow(below).c_str(), name.c_str(), REG_SZ,
                    value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void TypeHolds(const RunningProgram& program, HoldPattern from, HoldPattern to) {
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        if ((((from ^ to) >> i) & 1) != 0) {
            TypeKey(program, static_cast<wchar_t>(L'1' + i));
        }
    }
}

double MillisecondsBetween(LONGLONG start, LONGLONG end) {
    LARGE_INTEGER perSecond;
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(end - start) * 1000.0 / static_cast<double>(perSecond.QuadPart);
}

LONGLONG Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}
