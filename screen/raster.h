// The raster layer: 640 x 400 planes of RGB pixels and the drawing operations the screens use
// (fills, copies with and without a see-through colour, pixels, lines without their end pixel),
// all clipped. Which plane holds what, and when it is drawn, is screen/graphics' and the renderer's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/zeroed_allocator.h"

namespace tessaly::screen {

using Pixel = uint32_t; // 0x00RRGGBB

inline constexpr int kScreenWidth = 640;
inline constexpr int kScreenHeight = 400;

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;  // exclusive
    int bottom = 0; // exclusive
    [[nodiscard]] bool empty() const { return right <= left || bottom <= top; }
    [[nodiscard]] Rect intersect(const Rect& other) const;
    // The smallest rectangle holding both (both non-empty).
    [[nodiscard]] Rect united(const Rect& other) const
    {
        return {left < other.left ? left : other.left, top < other.top ? top : other.top,
            right > other.right ? right : other.right, bottom > other.bottom ? bottom : other.bottom};
    }
};

class Plane {
public:
    explicit Plane(int width = kScreenWidth, int height = kScreenHeight, Pixel fill = 0);

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    [[nodiscard]] Rect bounds() const { return {0, 0, m_width, m_height}; }
    [[nodiscard]] const Pixel* row(int y) const { return m_pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(m_width); }
    Pixel* row(int y)
    {
        m_allZero = false;
        return m_pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(m_width);
    }

    // Drawing is limited to the clip rectangle (the whole plane by default).
    void setClip(const Rect& clip) { m_clip = clip.intersect(bounds()); }
    void resetClip() { m_clip = bounds(); }
    [[nodiscard]] const Rect& clip() const { return m_clip; }

    // The pixel, or `outside` when (x, y) lies off the plane.
    [[nodiscard]] Pixel pixel(int x, int y, Pixel outside = 0) const;
    void setPixel(int x, int y, Pixel colour);
    void fill(const Rect& area, Pixel colour);
    // Copies area of source to (x, y) of this plane.
    void copyFrom(const Plane& source, const Rect& area, int x, int y);
    // The same, leaving out source pixels of the see-through colour.
    void copyKeyed(const Plane& source, const Rect& area, int x, int y, Pixel seeThrough);
    // A one-pixel line from (x0, y0) towards (x1, y1); the end pixel is left out. With a style, bit
    // 15 down to 0 of the pattern tell, pixel after pixel, whether a pixel is set.
    void line(int x0, int y0, int x1, int y1, Pixel colour, uint16_t style = 0xFFFF);
    // Fills, from (x, y), the pixels connected to it (left, right, up, down) that are not of the
    // border colour, inside the clip rectangle. Nothing happens when (x, y) is of the border colour
    // or outside the clip.
    void floodFill(int x, int y, Pixel fill, Pixel border)
    {
        floodFillWith(x, y, border, [fill](int, int) { return fill; });
    }
    // The same with the colour of each filled pixel given by brush(x, y).
    template <typename Brush>
    void floodFillWith(int x, int y, Pixel border, Brush brush);

private:
    int m_width;
    int m_height;
    Rect m_clip;
    std::vector<Pixel, core::ZeroedAllocator<Pixel>> m_pixels;
    bool m_allZero; // no pixel was written since the plane was made with zeros: filling with 0 is nothing
};

template <typename Brush>
void Plane::floodFillWith(int x, int y, Pixel border, Brush brush)
{
    const Rect area = m_clip;
    auto inside = [&](int px, int py) { return px >= area.left && px < area.right && py >= area.top && py < area.bottom; };
    if (!inside(x, y) || pixel(x, y) == border)
        return;
    // Span filling with a mark per pixel, so that pixels already painted are not met again.
    const int width = area.right - area.left;
    std::vector<uint8_t> done(static_cast<size_t>(width) * static_cast<size_t>(area.bottom - area.top), 0);
    auto mark = [&](int px, int py) -> uint8_t& {
        return done[static_cast<size_t>(py - area.top) * static_cast<size_t>(width) + static_cast<size_t>(px - area.left)];
    };
    auto open = [&](int px, int py) { return inside(px, py) && !mark(px, py) && row(py)[px] != border; };
    std::vector<std::pair<int, int>> seeds {{x, y}};
    while (!seeds.empty()) {
        auto [sx, sy] = seeds.back();
        seeds.pop_back();
        if (!open(sx, sy))
            continue;
        int left = sx;
        while (open(left - 1, sy))
            --left;
        int right = sx;
        while (open(right + 1, sy))
            ++right;
        Pixel* line = row(sy);
        for (int px = left; px <= right; ++px) {
            line[px] = brush(px, sy);
            mark(px, sy) = 1;
        }
        for (int ny : {sy - 1, sy + 1}) {
            bool inRun = false;
            for (int px = left; px <= right; ++px) {
                bool free = open(px, ny);
                if (free && !inRun)
                    seeds.emplace_back(px, ny);
                inRun = free;
            }
        }
    }
}

} // namespace tessaly::screen
