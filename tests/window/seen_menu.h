// What the seeded program tells of the popup menus it opens: a menu's items cannot be read from
// another process, so the program writes down what its own menus say.
#ifndef TESSARIN_TESTS_WINDOW_SEEN_MENU_H
#define TESSARIN_TESTS_WINDOW_SEEN_MENU_H

#include <windows.h>

inline constexpr wchar_t SeenMenuName[] = L"TessarinSeenMenu"; // of the shared memory
inline constexpr int SeenMenuItems = 32;
inline constexpr int SeenMenuText = 64;

struct SeenMenuItem {
    UINT id; // 0 for a separator
    bool separator;
    bool checked;
    bool enabled;
    wchar_t text[SeenMenuText];
    RECT place; // on the screen
};

// Zero filled at first.
struct SeenMenu {
    volatile LONG shown; // counts the menus that have come to rest on the screen
    int count;
    SeenMenuItem items[SeenMenuItems];
};

#endif
