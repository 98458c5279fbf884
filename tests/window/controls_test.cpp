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
