#include "ui/main_window.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR, int show) {
    return RunProgram(instance, previous, show);
}
