#include "ui/smooth_reduce.h"

#include <cstdint>
#include <vector>

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

// What has been added for a target pixel: colours times their weights.
struct ColourSum {
    std::uint32_t channels[3];
};

// Adds a row of the source, with this weight, to the sums for a row of the target. A target pixel
// is as wide as the source has pixels, a source pixel as the target has, and so it is down the
// rows: all is in whole numbers, and a target pixel weighs as much as the source has pixels.
void AddRow(const std::uint32_t* row, int sources, std::uint32_t weight, ColourSum* sums,
            int targets) {
    int wanted = sources; // by the target pixel at hand
    for (int u = 0; u < sources; ++u) {
        int left = targets;
        while (left > 0) {
            const int part = left < wanted ? left : wanted;
            const std::uint32_t share = weight * static_cast<std::uint32_t>(part);
            sums->channels[0] += share * (row[u] & 0xFF);
            sums->channels[1] += share * ((row[u] >> 8) & 0xFF);
            sums->channels[2] += share * ((row[u] >> 16) & 0xFF);
            left -= part;
            wanted -= part;
            if (wanted == 0) {
                ++sums;
                wanted = sources;
            }
        }
    }
}

std::uint32_t MeanColour(const ColourSum& sum, std::uint32_t weight) {
    std::uint32_t colour = 0;
    for (int channel = 0; channel < 3; ++channel) {
        colour |= (sum.channels[channel] + weight / 2) / weight << (8 * channel);
    }
    return colour;
}

void Reduce(const PixelBitmap& source, PixelBitmap& target) {
    const auto weight = static_cast<std::uint32_t>(source.width * source.height);
    std::vector<ColourSum> sums(static_cast<std::size_t>(target.width));
    std::uint32_t* drawn = target.pixels;
    int wanted = source.height; // by the target row at hand
    for (int v = 0; v < source.height; ++v) {
        int left = target.height;
        while (left > 0) {
            const int part = left < wanted ? left : wanted;
            AddRow(source.pixels + v * source.width, source.width, static_cast<std::uint32_t>(part),
                   sums.data(), target.width);
            left -= part;
            wanted -= part;
            if (wanted == 0) {
                for (ColourSum& sum : sums) {
                    *drawn++ = MeanColour(sum, weight);
                    sum = {};
                }
                wanted = source.height;
            }
        }
    }
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
        Reduce(from, to);
        BitBlt(dc, target.left, target.top, width, height, to.dc, 0, 0, SRCCOPY);
    } else {
        DrawAgainLater();
    }
    DeletePixelBitmap(to);
    DeletePixelBitmap(from);
}
