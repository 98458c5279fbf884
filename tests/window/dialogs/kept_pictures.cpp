#include "tests/window/dialogs/kept_pictures.h"

#include <algorithm>
#include <cstdlib>

#include "tests/window/picture_file.h"

namespace {

constexpr int SquareSize = 8;
constexpr int ColourTolerance = 24;       // of 255, in a square's average
constexpr int SquaresPerDifference = 200; // one in so many may differ

struct Average {
    int red = 0;
    int green = 0;
    int blue = 0;
};

Average AverageOf(const Picture& picture, int left, int top) {
    const int right = std::min(left + SquareSize, picture.width);
    const int bottom = std::min(top + SquareSize, picture.height);
    const int pixels = (right - left) * (bottom - top);
    Average sum;
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const auto pixel = static_cast<int>(picture.At(x, y));
            sum.red += pixel >> 16;
            sum.green += pixel >> 8 & 0xFF;
            sum.blue += pixel & 0xFF;
        }
    }
    return {sum.red / pixels, sum.green / pixels, sum.blue / pixels};
}

bool Near(int a, int b) {
    return std::abs(a - b) <= ColourTolerance;
}

bool LookAlike(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height) {
        return false;
    }
    int squares = 0;
    int different = 0;
    for (int top = 0; top < a.height; top += SquareSize) {
        for (int left = 0; left < a.width; left += SquareSize) {
            const Average one = AverageOf(a, left, top);
            const Average other = AverageOf(b, left, top);
            ++squares;
            different += Near(one.red, other.red) && Near(one.green, other.green) &&
                                 Near(one.blue, other.blue)
                             ? 0
                             : 1;
        }
    }
    return different * SquaresPerDifference <= squares;
}

} // namespace

testing::AssertionResult LooksAsKept(const RunningProgram& program, HWND window,
                                     const std::wstring& name) {
    const std::wstring file = name + L"-" + std::to_wstring(program.scale) + L"x.png";
    const std::wstring kept = std::wstring(TESSARIN_PICTURES) + L"/" + file;
    // A button under the pointer is lit.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    // The dialog may still be painting.
    if (std::getenv("TESSARIN_KEEP_PICTURES") != nullptr) {
        Picture before = GrabWindow(window);
        Eventually([&] {
            Sleep(100);
            const Picture now = GrabWindow(window);
            const bool still = now == before;
            before = now;
            return still;
        });
        return WritePicture(kept, before) ? testing::AssertionSuccess()
                                          : testing::AssertionFailure() << "cannot be kept";
    }
    const std::optional<Picture> wanted = ReadPicture(kept);
    if (!wanted) {
        return testing::AssertionFailure() << "there is no kept picture";
    }
    Picture seen;
    if (Eventually([&] {
            seen = GrabWindow(window);
            return LookAlike(seen, *wanted);
        })) {
        return testing::AssertionSuccess();
    }
    WritePicture(ProgramFolder() + L"seen-" + file, seen);
    return testing::AssertionFailure()
           << "does not look as kept: see seen-" << std::string(file.begin(), file.end());
}
