#include <cstring>
#include <string>
#include <vector>

#include "tests/window/harness.h"
#include "ui/resource.h"

// What the built program carries and what lies beside it, read from its file.

namespace {

// A program's file, open for its resources alone.
class Resources : public testing::Test {
  protected:
    void SetUp() override {
        file = LoadLibraryExW((ProgramFolder() + L"tessarin-ce.exe").c_str(), nullptr,
                              LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(file, nullptr);
    }
    void TearDown() override { FreeLibrary(file); }
    HMODULE file = nullptr;
};

std::uint64_t SizeOfFile(const wchar_t* name) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    EXPECT_TRUE(
        GetFileAttributesExW((ProgramFolder() + name).c_str(), GetFileExInfoStandard, &data));
    return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

struct NamedNumber {
    const char* name;
    int number;
    int expected;
};

// Commands and resources are known by these numbers outside the program too.
constexpr NamedNumber numbers[] = {
    {"deal and draw", IDC_DEAL_DRAW, 20},
    {"bet one", IDC_BET_ONE, 40},
    {"games", IDC_GAMES, 50},
    {"exit", IDM_EXIT, 60},
    {"help", IDM_HELP, 70},
    {"hand analysis", IDM_HAND_ANALYSIS, 80},
    {"menu", IDC_MENU, 90},
    {"status line", IDC_STATUS, 99},
    {"game analysis", IDM_GAME_ANALYSIS, 100},
    {"no training", IDM_NO_TRAINING, 200},
    {"warn", IDM_WARN, 201},
    {"autohold", IDM_AUTOHOLD, 202},
    {"no draw", IDM_NO_DRAW, 300},
    {"use sound", IDM_USE_SOUND, 310},
    {"reset credits", IDM_RESET_CREDITS, 320},
    {"change paytable", IDM_CHANGE_PAYTABLE, 400},
    {"deal speed", IDM_DEAL_SPEED, 500},
    {"slow", IDM_SLOW, 501},
    {"medium", IDM_MEDIUM, 502},
    {"fast", IDM_FAST, 504},
    {"session stats", IDM_SESSION_STATS, 600},
    {"hand details", IDM_HAND_DETAILS, 800},
    {"close", IDM_CLOSE, 1000},
    {"first game", IDM_FIRST_GAME, 10000},
    {"last game", IDM_LAST_GAME, 10006},
    {"purchase", IDC_PURCHASE, 1006},
    {"Need Money", IDD_NEED_MONEY, 116},
    {"hand analysis dialog", IDD_HAND_ANALYSIS, 118},
    {"details and editor", IDD_WHOLE_SCREEN, 200},
    {"statistics dialog", IDD_SESSION_STATS, 4000},
    {"game analysis dialog", IDD_GAME_ANALYSIS, 5001},
};

struct BitmapSize {
    int id;
    LONG width;
    LONG height;
};

constexpr BitmapSize bitmaps[] = {
    {101, 100, 25}, {102, 60, 15}, {103, 100, 27}, {104, 221, 34},
    {105, 43, 71},  {106, 43, 71}, {113, 75, 105},
};

// What a program's file says of itself in the system's own view of its properties.
class VersionOf {
  public:
    explicit VersionOf(const wchar_t* name) {
        const std::wstring path = ProgramFolder() + name;
        block.resize(GetFileVersionInfoSizeW(path.c_str(), nullptr));
        EXPECT_TRUE(
            !block.empty() &&
            GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
            << "no version resource";
    }

    std::wstring Text(const wchar_t* name) const {
        const auto* text = static_cast<const wchar_t*>(
            Value(L"\\StringFileInfo\\040904B0\\" + std::wstring(name)));
        return text != nullptr ? text : L"";
    }

    // Of the file and of the product, four numbers each.
    std::vector<std::wstring> Numbers() const {
        const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(Value(L"\\"));
        if (fixed == nullptr) {
            return {};
        }
        return {Numbers(fixed->dwFileVersionMS, fixed->dwFileVersionLS),
                Numbers(fixed->dwProductVersionMS, fixed->dwProductVersionLS)};
    }

  private:
    std::vector<BYTE> block;

    const void* Value(const std::wstring& path) const {
        void* value = nullptr;
        UINT size = 0;
        return !block.empty() && VerQueryValueW(block.data(), path.c_str(), &value, &size)
                   ? value
                   : nullptr;
    }

    static std::wstring Numbers(DWORD high, DWORD low) {
        return std::to_wstring(HIWORD(high)) + L"." + std::to_wstring(LOWORD(high)) + L"." +
               std::to_wstring(HIWORD(low)) + L"." + std::to_wstring(LOWORD(low));
    }
};

void ExpectVersion(const wchar_t* file, const wchar_t* description) {
    const VersionOf version(file);
    const std::wstring four = TESSARIN_VERSION L".0";
    EXPECT_EQ(version.Numbers(), (std::vector<std::wstring>{four, four}));
    EXPECT_EQ(version.Text(L"FileDescription"), description);
    EXPECT_EQ(version.Text(L"ProductName"), L"Tessarin CE");
    EXPECT_EQ(version.Text(L"FileVersion"), TESSARIN_VERSION);
    EXPECT_EQ(version.Text(L"ProductVersion"), TESSARIN_VERSION);
    EXPECT_EQ(version.Text(L"OriginalFilename"), file);
}

} // namespace

TEST_F(Resources, HaveTheirNumbers) {
    for (const NamedNumber& number : numbers) {
        EXPECT_EQ(number.number, number.expected) << number.name;
    }
}

TEST_F(Resources, NameTheWindowAndItsClass) {
    wchar_t text[80];
    EXPECT_GT(LoadStringW(file, 200, text, 80), 0);
    EXPECT_STREQ(text, L"vrTessarinCE");
    EXPECT_GT(LoadStringW(file, 201, text, 80), 0);
    EXPECT_STREQ(text, L"Tessarin CE");
}

TEST_F(Resources, HaveEveryDialog) {
    for (const int id : {116, 118, 200, IDD_STATISTICAL_ERROR, 4000, 5001}) {
        EXPECT_NE(FindResourceW(file, MAKEINTRESOURCEW(id), RT_DIALOG), nullptr) << id;
    }
}

TEST_F(Resources, HaveEveryPictureAtFourScales) {
    for (int scale = 1; scale <= MaxScale; ++scale) {
        for (const BitmapSize& size : bitmaps) {
            const int id = size.id + PICTURE_SCALE_STEP * (scale - 1);
            const HBITMAP bitmap = LoadBitmapW(file, MAKEINTRESOURCEW(id));
            ASSERT_NE(bitmap, nullptr) << id;
            BITMAP facts = {};
            GetObjectW(bitmap, sizeof facts, &facts);
            EXPECT_EQ(facts.bmWidth, size.width * scale) << id;
            EXPECT_EQ(facts.bmHeight, size.height * scale) << id;
            DeleteObject(bitmap);
        }
    }
}

// An icon's directory: a head of three words, the last of them the count, then fourteen bytes for
// each picture, the first being its width, where 0 stands for 256.
TEST_F(Resources, HaveTheIconInFourSizes) {
    const HRSRC found = FindResourceW(file, MAKEINTRESOURCEW(114), RT_GROUP_ICON);
    ASSERT_NE(found, nullptr);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(file, found)));
    std::uint16_t head[3];
    std::memcpy(head, bytes, sizeof head);
    std::vector<int> widths;
    for (std::size_t i = 0; i < head[2]; ++i) {
        const BYTE* entry = bytes + sizeof head + 14 * i;
        EXPECT_EQ(entry[0], entry[1]) << "width and height";
        widths.push_back(entry[0] == 0 ? 256 : entry[0]);
    }
    EXPECT_EQ(widths, (std::vector<int>{16, 32, 48, 256}));
}

TEST_F(Resources, SayNameAndVersionOfTheProgram) {
    ExpectVersion(L"tessarin-ce.exe", L"Tessarin CE");
}

TEST_F(Resources, SayNameAndVersionOfTheCommandLine) {
    ExpectVersion(L"tessarin.exe", L"Tessarin CE command line");
}

// What Windows reads before it starts the program: on every screen its own density, and the
// controls of the newer look.
TEST_F(Resources, HaveTheManifest) {
    const HRSRC found = FindResourceW(file, MAKEINTRESOURCEW(1), RT_MANIFEST);
    ASSERT_NE(found, nullptr);
    const std::string manifest(static_cast<const char*>(LockResource(LoadResource(file, found))),
                               SizeofResource(file, found));
    std::string version;
    for (const wchar_t digit : std::wstring(TESSARIN_VERSION)) {
        version += static_cast<char>(digit);
    }
    for (const std::string& part :
         {"<assemblyIdentity type=\"win32\" name=\"Tessarin.CE\" version=\"" + version + ".0\"",
          std::string("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""),
          std::string(
              "<dpiAwareness xmlns=\"http://schemas.microsoft.com/SMI/2016/WindowsSettings\""
              ">PerMonitorV2, PerMonitor</dpiAwareness>"),
          std::string(">true/pm</dpiAware>")}) {
        EXPECT_NE(manifest.find(part), std::string::npos) << part;
    }
}

TEST_F(Resources, AreSmall) {
    EXPECT_LT(SizeOfFile(L"tessarin-ce.exe"), 1536U * 1024U);
    EXPECT_LT(SizeOfFile(L"QMT_VR_Wave1.wav") + SizeOfFile(L"QMT_VR_Wave2.wav") +
                  SizeOfFile(L"QMT_VR_Wave3.wav"),
              120U * 1024U);
}
