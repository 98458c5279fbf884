#include "ui/statistical_error_dialog.h"

#include "ui/dialog_fields.h"
#include "ui/hand_details_dialog.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

struct Question {
    const Hand& hand;
    const GameDescriptor& game;
    GradingTexts texts;
    HFONT displayFont;
};

Question* question = nullptr;

constexpr int DisplayFontPixels = 16;
constexpr INT_PTR AnswerNo = 0;
constexpr INT_PTR AnswerYes = 1;

void UseFont(HWND dialog, int id, HFONT font) {
    SendDlgItemMessageW(dialog, id, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void SetFonts(HWND dialog) {
    const HFONT before = question->displayFont;
    question->displayFont = MakeBoldFont(DialogPixels(dialog, DisplayFontPixels));
    UseFont(dialog, GradingCost, question->displayFont);
    if (question->texts.errorInDisplayFont) {
        UseFont(dialog, GradingError, question->displayFont);
    }
    DeleteObject(before);
}

void Fill(HWND dialog) {
    SetFieldTexts(dialog, question->texts.fields);
    SetFonts(dialog);
    ShellCentreOver(dialog, program.window);
}

INT_PTR CALLBACK StatisticalErrorDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ShellWatchDensity(dialog, message);
    switch (message) {
    case WM_INITDIALOG:
        Fill(dialog);
        return TRUE;
    case LayOutMessage:
        SetFonts(dialog);
        return TRUE;
    case WM_CTLCOLORSTATIC:
        return ColourField(question->texts.fields, reinterpret_cast<HDC>(wParam),
                           reinterpret_cast<HWND>(lParam));
    case WM_COMMAND:
        switch (CommandOf(dialog, wParam)) {
        case IDC_ANSWER_YES:
            EndDialog(dialog, AnswerYes);
            return TRUE;
        case IDC_ANSWER_NO:
            EndDialog(dialog, AnswerNo);
            return TRUE;
        case IDC_GRADING_DETAILS:
            ShowHandDetails(dialog, question->hand, question->game);
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

} // namespace

// A dialog that goes with its window was not answered, which is no yes.
bool PlayItAnyway(HWND owner, const Hand& hand, const GameDescriptor& game,
                  const PlayGrade& grade) {
    Question asked = {hand, game, DescribeGrade(grade), nullptr};
    question = &asked;
    const INT_PTR answer =
        DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_STATISTICAL_ERROR),
                        ShellDialogOwner(owner), StatisticalErrorDialog, 0);
    question = nullptr;
    DeleteObject(asked.displayFont);
    return answer == AnswerYes;
}
