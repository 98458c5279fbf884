// What the seeded program's windows were given and what they showed, entry by entry: the taps, keys
// and commands in the order in which they were delivered, and the texts that changed. A test that
// makes the shared memory before the program's start gets a journal; any other start keeps none.
//
// Nothing of the program's own state is in it but what says whether a command was let in.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_JOURNAL_H
#define TESSARIN_TESTS_WINDOW_SOAK_JOURNAL_H

#include <windows.h>

inline constexpr wchar_t JournalName[] = L"TessarinJournal"; // of the shared memory

// Messages of the test, by their registered names; all but the tap to the main window.
inline constexpr wchar_t MarkMessage[] = L"TessarinJournalMark"; // writes wParam down
// To a dialog: taps the control with the number wParam, or the close box for 0. As with a real tap,
// nothing happens while another dialog stands before it.
inline constexpr wchar_t TapMessage[] = L"TessarinJournalTap";
// Answers how many menus and icons the program has.
inline constexpr wchar_t CountMessage[] = L"TessarinJournalCount";
// Answers how many bytes of its heaps are in use.
inline constexpr wchar_t HeapMessage[] = L"TessarinJournalHeap";

enum class Told : LONG {
    Command,     // to the main window: number = its id
    CommandDone, // number = its id
    Key,         // number = the character
    Tap,         // x and y in the client area, whose size is with it
    MainGone,    // the window is being destroyed
    Resized,     // the client area's size, which is not that of a minimised window
    DealText,    // the control's new text
    BetText,
    StatusText,
    DialogOpened,  // number = its texts, the controls of the class Static
    DialogCommand, // number = id; text: the purchase typed
    DialogClosed,
    Payouts, // number = row; x and y: what the store holds for one and five coins after an OK
    Mark,
};

enum class DialogKind : LONG { Other, NeedMoney, Question, Stats, ConfirmReset };

inline constexpr int JournalText = 32;

struct JournalEntry {
    Told told;
    LONG number;
    LONG x;
    LONG y;
    LONG width;
    LONG height;
    DialogKind dialog;
    bool enabled;      // the main window, or the dialog that is given a command
    bool asking;       // about a play
    bool analysisRuns; // beside the dialog
    bool stored[2];    // of Payouts: whether the store holds a value
    wchar_t text[JournalText];
};

// Entry n stands at n modulo the size; the reader must not fall so far behind.
inline constexpr LONG JournalSize = 1 << 15;

struct Journal {
    volatile LONG written; // entries so far
    JournalEntry entries[JournalSize];
};

// The seeded program's part: begins the journal, if there is to be one.
void KeepJournal();

#endif
