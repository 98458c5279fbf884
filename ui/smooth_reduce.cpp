#include "ui/smooth_reduce.h"

#include <cstdint>

#include "ui/drawing.h"
#include "ui/shell.h"

namespace {

// A bitmap of 32-bit pixels, top row first, that can be read and written directly.
struct PixelBitmap {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ before;
    std::uint32_t* pixels; // null if the bitmap or its device context could not be made
    int width;
    int height;
};

PixelBitmap MakePixelBitmap(HDC like, int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(like, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HDC dc = CreateCompatibleDC(like);
    const HGDIOBJ before = dc != nullptr && bitmap != nullptr ? SelectObject(dc, bitmap) : nullptr;
    auto* drawn = before != nullptr ? static_cast<std::uint32_t*>(pixels) : nullptr;
    return {dc, bitmap, before, drawn, width, height};
}

void DeletePixelBitmap(PixelBitmap& bitmap) {
    if (bitmap.before != nullptr) {
        SelectObject(bitmap.dc, bitmap.before);
    }
    DeleteObject(bitmap.bitmap);
    DeleteDC(bitmap.dc);
}

// How much of source pixel i lies within target pixel t, when `targets` pixels stand for `sources`;
// in units of one source pixel / targets, so that all is whole numbers.
int Overlap(int i, int t, int sources, int targets) {
    const int from = i * targets > t * sources ? i * targets : t * sources;
    const int end = (i + 1) * targets < (t + 1) * sources ? (i + 1) * targets : (t + 1) * sources;
    return end > from ? end - from : 0;
}

std::uint32_t MeanColour(const PixelBitmap& source, const PixelBitmap& target, int x, int y) {
    std::uint64_t sum[3] = {};
    std::uint64_t weights = 0;
    for (int v = y * source.height / target.height; v < source.height; ++v) {
        const int down = Overlap(v, y, source.height, target.height);
        if (down == 0) {
            break;
        }
        for (int u = x * source.width / target.width; u < source.width; ++u) {
            const int across = Overlap(u, x, source.width, target.width);
            if (across == 0) {
                break;
            }
            const std::uint32_t pixel = source.pixels[v * source.width + u];
            const auto weight =
                static_cast<std::uint64_t>(down) * static_cast<std::uint64_t>(across);
            weights += weight;
            for (int channel = 0; channel < 3; ++channel) {
                sum[channel] += weight * ((pixel >> (8 * channel)) & 0xFF);
            }
        }
    }
    std::uint32_t colour = 0;
    for (int channel = 0; channel < 3; ++channel) {
        const std::uint64_t mean = (sum[channel] + weights / 2) / weights;
        colour |= static_cast<std::uint32_t>(mean) << (8 * channel);
    }
    return colour;
}

} // namespace

void DrawReduced(HDC dc, const Area& target, HBITMAP picture, const Area& part) {
    const int width = Width(target);
    const int height = Height(target);
    PixelBitmap from = MakePixelBitmap(dc, Width(part), Height(part));
    PixelBitmap to = MakePixelBitmap(dc, width, height);
    if (from.pixels != nullptr && to.pixels != nullptr) {
        CopyPicture(from.dc, 0, 0, from.width, from.height, picture, part.left, part.top);
        ShellFinishDrawing();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                to.pixels[y * width + x] = MeanColour(from, to, x, y);
            }
        }
        BitBlt(dc, target.left, target.top, width, height, to.dc, 0, 0, SRCCOPY);
    } else {
        DrawAgainLater();
    }
    DeletePixelBitmap(to);
    DeletePixelBitmap(from);
}
