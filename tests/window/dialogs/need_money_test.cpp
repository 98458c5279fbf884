#include "tests/window/dialogs/kept_pictures.h"
#include "ui/resource.h"

// The offer of more credits as it looks; what it does is tested with the hands.

namespace {

class NeedMoney : public WindowTest {};

} // namespace

TEST_F(NeedMoney, HasItsControlsAndLooksAsKept) {
    SetSetting(L"Credits", 0);
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenDialog(program, IDC_DEAL_DRAW, L"Need Money");
    ExpectPlaces(
        dialog, IDD_NEED_MONEY,
        {{IDC_PURCHASE, 40, 26, 50, 12}, {IDOK, 12, 43, 50, 14}, {IDCANCEL, 68, 43, 50, 14}});
    EXPECT_EQ(FieldText(dialog, IDC_PURCHASE), L"100");
    EXPECT_TRUE(LooksAsKept(program, dialog, L"money"));
    LeaveDialog(dialog, IDCANCEL);
}
