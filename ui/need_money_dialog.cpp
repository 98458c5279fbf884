#include "ui/need_money_dialog.h"

#include <windows.h>

#include "training/dialog_text.h"
#include "ui/dialog_fields.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

INT_PTR CALLBACK NeedMoneyProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        SetDlgItemTextW(dialog, IDC_PURCHASE,
                        FormatInteger(L"%i", program.table.defaultPurchase).c_str());
        ShellCentreOver(dialog, program.window);
        return TRUE;
    case WM_COMMAND:
        switch (CommandOf(dialog, wParam)) {
        case IDOK:
            BuyCredits(program.table, static_cast<std::int32_t>(
                                          GetDlgItemInt(dialog, IDC_PURCHASE, nullptr, TRUE)));
            InvalidateRect(program.window, nullptr, TRUE);
            EndDialog(dialog, IDOK);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, IDCANCEL);
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

} // namespace

void AskForMoney() {
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_NEED_MONEY),
                    ShellDialogOwner(program.window), NeedMoneyProc, 0);
}
