// Pictures of the dialogs as they should look, kept beside the tests.
//
// With TESSARIN_KEEP_PICTURES set in the environment the pictures are kept anew instead of
// compared; look at them before they are committed.
#ifndef TESSARIN_TESTS_WINDOW_DIALOGS_KEPT_PICTURES_H
#define TESSARIN_TESTS_WINDOW_DIALOGS_KEPT_PICTURES_H

#include <string>

#include "tests/window/dialogs/reading.h"

// Whether the window's client area comes to look like the picture of that name and the program's
// scale; the frame is the platform's. Small differences, as another version of a font makes them,
// do not count: the average colours of small squares are compared, and a few squares may differ. A
// picture that differs is left in the folder of the test programs.
testing::AssertionResult LooksAsKept(const RunningProgram& program, HWND window,
                                     const std::wstring& name);

#endif
