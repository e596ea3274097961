// The raster layer: 640 x 400 planes of RGB pixels and the drawing operations the screens use
// (fills, copies with and without a see-through colour, pixels, lines without their end pixel),
// all clipped. Which plane holds what, and when it is drawn, is screen/graphics' and the renderer's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

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
    Pixel* row(int y) { return m_pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(m_width); }

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
    void floodFill(int x, int y, Pixel fill, Pixel border);

private:
    int m_width;
    int m_height;
    Rect m_clip;
    std::vector<Pixel> m_pixels;
};

} // namespace tessaly::screen
