#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tests/window/harness.h"
#include "tests/window/looks.h"
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

int PictureNumber(int id, int scale) {
    return id + PICTURE_SCALE_STEP * (scale - 1);
}

// A picture as the system loads it.
Picture Loaded(HMODULE file, int number) {
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = LoadBitmapW(file, MAKEINTRESOURCEW(number));
    BITMAP facts = {};
    GetObjectW(bitmap, sizeof facts, &facts);
    const Picture picture =
        PixelsOf(screen, bitmap, static_cast<int>(facts.bmWidth), static_cast<int>(facts.bmHeight));
    DeleteObject(bitmap);
    ReleaseDC(nullptr, screen);
    return picture;
}

// A run-length coded picture, decoded here by the rules of the format, which are for each pair of
// bytes: a count and what is repeated, alternating between its halves at 4 bits a pixel; or 0 and
// the end of a row, the end of the picture or, from 3 on, a count of pixels that follow, in whole
// words.
Picture Decoded(HMODULE file, int number) {
    const auto* bytes = static_cast<const BYTE*>(
        LockResource(LoadResource(file, FindResourceW(file, MAKEINTRESOURCEW(number), RT_BITMAP))));
    BITMAPINFOHEADER head;
    std::memcpy(&head, bytes, sizeof head);
    EXPECT_TRUE(head.biCompression == (head.biBitCount == 4 ? BI_RLE4 : BI_RLE8)) << number;
    const BYTE* palette = bytes + sizeof head;
    const BYTE* at = palette + 4 * head.biClrUsed;
    const BYTE* end = at + head.biSizeImage;
    Picture picture = {static_cast<int>(head.biWidth), static_cast<int>(head.biHeight), {}};
    picture.pixels.resize(static_cast<std::size_t>(head.biWidth * head.biHeight), 0xFF000000);
    int x = 0;
    int y = picture.height - 1;
    const auto put = [&](BYTE value, int index) {
        const int nibble = index % 2 == 0 ? value >> 4 : value & 15;
        const BYTE* colour = palette + 4 * (head.biBitCount == 8 ? value : nibble);
        ASSERT_TRUE(x < picture.width && y >= 0) << number;
        picture.pixels[static_cast<std::size_t>(y * picture.width + x++)] =
            static_cast<std::uint32_t>(colour[2] << 16 | colour[1] << 8 | colour[0]);
    };
    for (; at + 1 < end && (at[0] != 0 || at[1] != 1); at += 2) {
        const int count = at[0] != 0 ? at[0] : at[1];
        if (at[0] != 0) {
            for (int i = 0; i < count; ++i) {
                put(at[1], i);
            }
        } else if (count == 0) {
            EXPECT_EQ(x, picture.width) << number;
            x = 0;
            --y;
        } else {
            for (int i = 0; i < count; ++i) {
                put(at[2 + (head.biBitCount == 8 ? i : i / 2)], i);
            }
            at += (count * head.biBitCount + 15) / 16 * 2;
        }
    }
    EXPECT_EQ(y, -1) << number;
    EXPECT_EQ(at + 2, end) << number;
    return picture;
}

// The mean difference of a colour between a picture and another of twice its size.
double DifferenceToTwice(const Picture& picture, const Picture& twice) {
    long sum = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            for (const int shift : {0, 8, 16}) {
                const auto channel = [&](const Picture& of, int u, int v) {
                    return static_cast<int>((of.At(u, v) >> shift) & 0xFF);
                };
                const int four = channel(twice, 2 * x, 2 * y) + channel(twice, 2 * x + 1, 2 * y) +
                                 channel(twice, 2 * x, 2 * y + 1) +
                                 channel(twice, 2 * x + 1, 2 * y + 1);
                sum += std::abs(4 * channel(picture, x, y) - four);
            }
        }
    }
    return static_cast<double>(sum) / (12.0 * picture.width * picture.height);
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

TEST_F(Resources, HaveEveryPictureAtEveryScaleOfPictures) {
    for (const int scale : PictureScales) {
        for (const BitmapSize& size : bitmaps) {
            const int id = PictureNumber(size.id, scale);
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

// The system reads the coding, which makes the program small, as it is meant.
TEST_F(Resources, TheLargestPicturesAreCodedWithoutLoss) {
    for (const BitmapSize& size : bitmaps) {
        const int number = PictureNumber(size.id, MaxScale);
        EXPECT_TRUE(Loaded(file, number) == Decoded(file, number)) << number;
    }
}

TEST_F(Resources, TheLargestPicturesAreTheDrawingsOfTheNextSmaller) {
    for (const BitmapSize& size : bitmaps) {
        const Picture half = Loaded(file, PictureNumber(size.id, MaxScale / 2));
        const Picture whole = Loaded(file, PictureNumber(size.id, MaxScale));
        ASSERT_EQ(whole.width, 2 * half.width) << size.id;
        ASSERT_EQ(whole.height, 2 * half.height) << size.id;
        EXPECT_LT(DifferenceToTwice(half, whole), 1.5) << size.id;
        Picture aside = whole;
        std::rotate(aside.pixels.begin(), aside.pixels.begin() + 1, aside.pixels.end());
        EXPECT_GT(DifferenceToTwice(half, aside), 2.0) << "a column aside " << size.id;
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
