// Planes of pixels and the clipped drawing operations on them; whole rows where the operation allows.
#include "screen/raster.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace tessaly::screen {

Rect Rect::intersect(const Rect& other) const
{
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
        std::min(bottom, other.bottom)};
}

Plane::Plane(int width, int height, Pixel fill)
    : m_width(std::max(width, 1))
    , m_height(std::max(height, 1))
    , m_clip {0, 0, m_width, m_height}
    , m_pixels(static_cast<size_t>(m_width) * static_cast<size_t>(m_height))
    , m_allZero(fill == 0)
{
    if (fill != 0)
        std::fill(m_pixels.begin(), m_pixels.end(), fill);
}

Pixel Plane::pixel(int x, int y, Pixel outside) const
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_height)
        return outside;
    return row(y)[x];
}

void Plane::setPixel(int x, int y, Pixel colour)
{
    if (x < m_clip.left || y < m_clip.top || x >= m_clip.right || y >= m_clip.bottom)
        return;
    row(y)[x] = colour;
}

void Plane::fill(const Rect& area, Pixel colour)
{
    if (colour == 0 && m_allZero)
        return;
    Rect target = area.intersect(m_clip);
    if (target.empty())
        return;
    for (int y = target.top; y < target.bottom; ++y)
        std::fill(row(y) + target.left, row(y) + target.right, colour);
}

namespace {

// The part of area (in the source) that lands inside the clip at (x, y), and where it lands.
bool clipCopy(const Rect& sourceBounds, const Rect& clip, Rect& area, int& x, int& y)
{
    area = area.intersect(sourceBounds);
    int dx = x - area.left;
    int dy = y - area.top;
    Rect landed {area.left + dx, area.top + dy, area.right + dx, area.bottom + dy};
    landed = landed.intersect(clip);
    if (landed.empty())
        return false;
    area = {landed.left - dx, landed.top - dy, landed.right - dx, landed.bottom - dy};
    x = landed.left;
    y = landed.top;
    return true;
}

} // namespace

void Plane::copyFrom(const Plane& source, const Rect& area, int x, int y)
{
    Rect from = area;
    if (!clipCopy(source.bounds(), m_clip, from, x, y))
        return;
    auto width = static_cast<size_t>(from.right - from.left);
    int height = from.bottom - from.top;
    // Rows are copied in the order that keeps an overlapping copy within one plane correct.
    bool upward = &source == this && y > from.top;
    for (int k = 0; k < height; ++k) {
        int line = upward ? height - 1 - k : k;
        std::memmove(row(y + line) + x, source.row(from.top + line) + from.left, width * sizeof(Pixel));
    }
}

void Plane::copyKeyed(const Plane& source, const Rect& area, int x, int y, Pixel seeThrough)
{
    Rect from = area;
    if (!clipCopy(source.bounds(), m_clip, from, x, y))
        return;
    int width = from.right - from.left;
    for (int k = 0; k < from.bottom - from.top; ++k) {
        const Pixel* in = source.row(from.top + k) + from.left;
        Pixel* out = row(y + k) + x;
        for (int i = 0; i < width; ++i) {
            if (in[i] != seeThrough)
                out[i] = in[i];
        }
    }
}

void Plane::line(int x0, int y0, int x1, int y1, Pixel colour, uint16_t style)
{
    int dx = std::abs(x1 - x0);
    int dy = -std::abs(y1 - y0);
    int sx = x0 < x1 ? 1 : -1;
    int sy = y0 < y1 ? 1 : -1;
    int error = dx + dy;
    int step = 0;
    while (x0 != x1 || y0 != y1) {
        if (style & (0x8000 >> (step & 15)))
            setPixel(x0, y0, colour);
        ++step;
        int doubled = 2 * error;
        if (doubled >= dy) {
            error += dy;
            x0 += sx;
        }
        if (doubled <= dx) {
            error += dx;
            y0 += sy;
        }
    }
}

} // namespace tessaly::screen
