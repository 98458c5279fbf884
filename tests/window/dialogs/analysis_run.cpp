#include "tests/window/dialogs/analysis_run.h"

#include "ui/resource.h"

HWND OpenAnalysis(const RunningProgram& program, int rows) {
    const HWND dialog = OpenDialog(program, IDM_GAME_ANALYSIS, AnalysisTitle);
    const HWND list = ListOf(dialog, IDC_ANALYSIS_LIST);
    EXPECT_TRUE(Eventually([&] { return CountRows(list) == rows; })) << "the rows do not come";
    return dialog;
}

void StartRun(const RunningProgram& program, HWND dialog) {
    PressButton(dialog, IDC_RUN_ANALYSIS);
    LeaveDialog(WaitForDialog(program, L"Confirm"), IDYES);
    // The answer is dealt with before the next message.
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, IDOK) == L"Cancel" || Idle(dialog); }))
        << "no run begins";
}

bool Idle(HWND dialog) {
    const std::wstring close = FieldText(dialog, IDOK);
    return FieldText(dialog, IDC_RUN_ANALYSIS) == L"Run Analysis" &&
           (close == L"&Close" || close == L"Close");
}

void WaitUntilIdle(HWND dialog) {
    EXPECT_TRUE(Eventually([&] { return Idle(dialog); }, CyclePatience)) << "the run does not end";
}

HWND AskToStop(const RunningProgram& program, HWND dialog) {
    PressButton(dialog, IDOK);
    return WaitForDialog(program, L"Cancel?");
}

std::wstring MessageText(HWND messageBox) {
    return FieldText(messageBox, 0xFFFF);
}

Gate::Gate()
    : memory(OpenFileMappingW(FILE_MAP_WRITE, FALSE, AnalysisGateName)),
      gate(static_cast<AnalysisGate*>(
          MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(AnalysisGate)))) {
    EXPECT_NE(gate, nullptr);
}

Gate::~Gate() {
    Open();
    UnmapViewOfFile(gate);
    CloseHandle(memory);
}

void Gate::CloseAt(int percent) {
    gate->percent = percent;
    gate->closed = 1;
}

void Gate::Open() {
    gate->closed = 0;
}

void Gate::WaitForRun() {
    EXPECT_TRUE(Eventually([&] { return gate->waiting == 1; }, CyclePatience))
        << "no run comes to the gate";
}
