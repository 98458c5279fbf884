#include <algorithm>
#include <cstdio>
#include <set>

#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/forecast.h"
#include "tests/window/hostile/companion.h"
#include "ui/resource.h"

// No fonts but those that the system brings with it: every text is there, and in its place.

namespace {

class BareFonts : public WindowTest {
  protected:
    void SetUp() override {
        if (GetEnvironmentVariableW(L"FONTCONFIG_FILE", nullptr, 0) == 0) {
            GTEST_SKIP() << "this run has all fonts";
        }
        WindowTest::SetUp();
    }
};

int CALLBACK AddFamily(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM parameter) {
    reinterpret_cast<std::set<std::wstring>*>(parameter)->insert(font->lfFaceName);
    return 1;
}

std::set<std::wstring> Families() {
    std::set<std::wstring> families;
    const HDC screen = GetDC(nullptr);
    LOGFONTW any = {};
    any.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(screen, &any, AddFamily, reinterpret_cast<LPARAM>(&families), 0);
    ReleaseDC(nullptr, screen);
    return families;
}

// How many pixels of the area are of the colour.
int InkIn(const RunningProgram& program, const Area& area, std::uint32_t colour) {
    const Picture picture = Grab(program, area);
    return static_cast<int>(std::ranges::count(picture.pixels, colour));
}

// A text that nothing is drawn of would look as one expects that is drawn with nothing.
void ExpectInk(const RunningProgram& program) {
    const Layout& layout = program.layout;
    EXPECT_GT(InkIn(program, layout.names, Yellow), 200);
    EXPECT_GT(InkIn(program, layout.payouts, Yellow), 50);
    EXPECT_GT(InkIn(program, layout.credits, White), 20);
    EXPECT_GT(InkIn(program, layout.coinsIn, White), 20);
    EXPECT_GT(InkIn(program, layout.prompt, Yellow), 20);
    EXPECT_GT(InkIn(program, layout.held[0], White), 10);
}

bool ShowsSomething(HWND control) {
    const Picture picture = GrabWindow(control);
    return std::ranges::any_of(picture.pixels,
                               [&](std::uint32_t pixel) { return pixel != picture.pixels[0]; });
}

BOOL CALLBACK ExpectTextShown(HWND control, LPARAM) {
    const std::wstring text = TextOf(control);
    if (!text.empty()) {
        EXPECT_TRUE(Eventually([&] { return ShowsSomething(control); })) << Readable(text);
    }
    return TRUE;
}

} // namespace

TEST_F(BareFonts, AreAllThereIs) {
    const std::set<std::wstring> families = Families();
    EXPECT_FALSE(families.empty());
    for (const std::wstring& family : families) {
        static const std::set<std::wstring> own = {
            L"Courier", L"Fixedsys", L"MS Sans Serif", L"MS Serif", L"Marlett",   L"Small Fonts",
            L"Symbol",  L"System",   L"Tahoma",        L"Terminal", L"Wingdings", L"Webdings"};
        EXPECT_EQ(own.count(family), 1U) << Readable(family);
    }
    std::printf("%d families\n", static_cast<int>(families.size()));
}

TEST_F(BareFonts, AreEnoughForATableOfEveryGame) {
    Faults faults;
    Companion companion;
    StartCompanion(companion, 3);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        ChangeTheGame(companion, id);
        DealHand(companion);
        TapMiddle(companion.program, companion.program.layout.cards[0]);
        Settle(companion.program);
        companion.table.hand.held[0] = 1;
        ExpectTable(companion.program, companion.table);
        ExpectInk(companion.program);
        Do(companion.program, IDC_DEAL_DRAW);
        CountDraw(companion.table, companion.stats, 1);
        EXPECT_TRUE(ShowsCredits(companion.program, companion.table.credits));
        EXPECT_TRUE(ShowsPrompt(companion.program, GameOver));
    }
    CloseProgram(companion.program);
}

TEST_F(BareFonts, AreEnoughForTheDialogs) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const int command : {IDM_SESSION_STATS, IDM_HAND_ANALYSIS, IDM_GAME_ANALYSIS,
                              IDM_CHANGE_PAYTABLE, IDM_HAND_DETAILS}) {
        SCOPED_TRACE(command);
        Post(program, command);
        HWND dialog = nullptr;
        ASSERT_TRUE(Eventually([&] {
            dialog = GetLastActivePopup(program.window);
            return dialog != program.window && IsWindowVisible(dialog);
        }));
        EnumChildWindows(dialog, ExpectTextShown, 0);
        LeaveDialog(dialog, IDCANCEL);
    }
    CloseProgram(program);
}
