#include "tests/window/soak/pulse.h"

#include <algorithm>

namespace {

constexpr UINT Moment = 200;      // milliseconds: an answer within them is no matter
constexpr DWORD Forever = 120000; // no answer for so long is a hang on any machine
constexpr DWORD Rhythm = 25;
constexpr double UsualLateness = 60; // of a wait of Rhythm

double Now() {
    LARGE_INTEGER ticks;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

bool Answers(HWND window, UINT milliseconds) {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, milliseconds, &answer) != 0;
}

} // namespace

Pulse::Pulse(HWND felt, const SystemView& system)
    : window(felt), view(system), feeling([this] { Feel(); }), watching([this] { Watch(); }) {}

Pulse::~Pulse() {
    Stop();
}

void Pulse::Stop() {
    stop = true;
    if (feeling.joinable()) {
        feeling.join();
        watching.join();
    }
}

void Pulse::Watch() {
    while (!stop) {
        const double start = Now();
        Sleep(Rhythm);
        GetWindowThreadProcessId(window, nullptr);
        late = late + std::max(0.0, Now() - start - Rhythm - UsualLateness);
    }
}

// The first moment of a silence is never taken off.
void Pulse::Beat() {
    const double start = Now();
    if (Answers(window, Moment)) {
        return;
    }
    const double waitedBefore = view.WaitedForProcessor();
    const double lateBefore = late;
    Answers(window, Forever);
    const double silence = Now() - start;
    const double excused = view.WaitedForProcessor() - waitedBefore + late - lateBefore;
    byClock = std::max<double>(byClock, silence);
    ofItsOwn = std::max<double>(ofItsOwn, silence - excused);
}

void Pulse::Feel() {
    while (!stop && IsWindow(window)) {
        Beat();
        ++beats;
        Sleep(Rhythm);
    }
}
