#include "tests/window/harness.h"
#include "ui/resource.h"

namespace {

class Controls : public WindowTest {};

struct Expected {
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    RECT place; // in design pixels
};

// The button column begins a pixel left of the last card (x 192) and is a card (47) wide; buttons
// stand a pixel inside. The labels begin 129 above the bottom of 294.
const Expected expected[] = {
    {IDC_MENU, L"button", L"Menu", {193, 15, 240, 40}},
    {IDC_GAMES, L"button", L"Games", {193, 41, 240, 66}},
    {IDC_BET_ONE, L"button", L"Bet 5", {193, 93, 240, 118}},
    {IDC_DEAL_DRAW, L"button", L"&Deal", {193, 119, 240, 165}},
    {IDC_STATUS, L"static", L"JACKS OR BETTER", {2, 0, 192, 14}},
};

RECT PlaceIn(HWND parent, HWND control) {
    RECT place;
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

TEST_F(Controls, StandWithTheirIdsTextsAndPlacesAndNoOthers) {
    const RunningProgram program = StartProgram();
    for (const Expected& control : expected) {
        SCOPED_TRACE(control.id);
        const HWND window = Control(program, control.id);
        ASSERT_NE(window, nullptr);
        wchar_t name[32];
        GetClassNameW(window, name, 32);
        EXPECT_STREQ(CharLowerW(name), control.windowClass);
        EXPECT_EQ(TextOf(window), control.text);
        const RECT place = PlaceIn(program.window, window);
        EXPECT_EQ(place.left, control.place.left * program.scale);
        EXPECT_EQ(place.top, control.place.top * program.scale);
        EXPECT_EQ(place.right, control.place.right * program.scale);
        EXPECT_EQ(place.bottom, control.place.bottom * program.scale);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_TRUE(IsWindowEnabled(window));
    }
    std::size_t children = 0;
    for (HWND child = GetWindow(program.window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        ++children;
    }
    EXPECT_EQ(children, std::size(expected));
}

TEST_F(Controls, StandInAWindowOfTheDesignsSize) {
    const RunningProgram program = StartProgram();
    RECT client = {};
    GetClientRect(program.window, &client);
    RECT whole = {};
    GetWindowRect(program.window, &whole);
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const auto fits = [&](LONG scale) {
        const LONG width = whole.right - whole.left - client.right + 240 * scale;
        const LONG height = whole.bottom - whole.top - client.bottom + 294 * scale;
        return 3 * width <= 2 * (work.right - work.left) &&
               3 * height <= 2 * (work.bottom - work.top);
    };
    const LONG scale = client.right / 240;
    EXPECT_EQ(client.right, 240 * scale);
    EXPECT_EQ(client.bottom, 294 * scale);
    EXPECT_TRUE(fits(scale) || scale == 1);
    EXPECT_FALSE(fits(scale + 1) && scale < 4) << "a larger scale would fit";
}

TEST_F(Controls, StandInAWindowOfTheProgramsClass) {
    const RunningProgram program = StartProgram();
    const HWND window = program.window;
    EXPECT_EQ(TextOf(window), L"Tessarin CE");
    wchar_t name[80];
    GetClassNameW(window, name, 80);
    EXPECT_STREQ(name, L"vrTessarinCE");
    const auto style = static_cast<DWORD>(GetClassLongW(window, GCL_STYLE));
    EXPECT_EQ(style, static_cast<DWORD>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(GetClassLongW(window, GCL_CBCLSEXTRA), 0U);
    EXPECT_EQ(GetClassLongW(window, GCL_CBWNDEXTRA), 0U);
    EXPECT_EQ(GetMenu(window), nullptr);
    EXPECT_EQ(GetWindow(window, GW_OWNER), nullptr);
    const auto status = static_cast<DWORD>(GetWindowLongW(Control(program, IDC_STATUS), GWL_STYLE));
    EXPECT_EQ(status & SS_TYPEMASK, static_cast<DWORD>(SS_CENTER));
    EXPECT_NE(status & WS_BORDER, 0U);
}

TEST_F(Controls, StandInAWindowThatIsNeverSmallerThanTheDesign) {
    const RunningProgram program = StartProgram();
    SetWindowPos(program.window, nullptr, 0, 0, 100, 100, SWP_NOMOVE | SWP_NOZORDER);
    RECT client = {};
    EXPECT_TRUE(Eventually([&] {
        GetClientRect(program.window, &client);
        return client.right == DesignWidth && client.bottom == DesignHeight;
    })) << client.right
        << " x " << client.bottom;
}
