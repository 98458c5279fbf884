// A window that does nothing but fill itself, to measure the program's start against and to stand
// in its way.
#include <windows.h>

namespace {

LRESULT CALLBACK EmptyWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show) {
    WNDCLASSW description = {};
    description.lpfnWndProc = EmptyWindowProc;
    description.hInstance = instance;
    description.hbrBackground = CreateSolidBrush(RGB(0, 0, 128));
    description.lpszClassName = L"TessarinEmptyWindow";
    RegisterClassW(&description);
    const HWND window =
        CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                        CW_USEDEFAULT, 486, 613, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, show);
    UpdateWindow(window);
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) == 1) {
        DispatchMessageW(&message);
    }
    return 0;
}
