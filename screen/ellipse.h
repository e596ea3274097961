// Ellipses, arcs and sectors on a plane. An ellipse is inscribed in the box from (cx - rx, cy - ry)
// to (cx + rx, cy + ry) with the right and bottom edges left out, so it covers the columns
// cx - rx .. cx + rx - 1; a pixel belongs to it when its centre lies inside, and to its outline
// when, besides, a pixel beside it (left, right, above, below) does not.
#pragma once

#include "screen/paint_brush.h"
#include "screen/raster.h"

namespace tessaly::screen {

struct EllipseBox {
    int cx = 0, cy = 0, rx = 0, ry = 0;
};

// The part of the angle range a pixel must fall in: angles in radians counter-clockwise from the
// positive x axis, upwards on the screen; from start to end going counter-clockwise.
struct AngleRange {
    bool whole = true;
    double start = 0, end = 0;
};

void drawEllipseOutline(Plane& plane, const EllipseBox& box, const AngleRange& range, Pixel colour);
void fillEllipse(Plane& plane, const EllipseBox& box, const AngleRange& range, const Brush& brush);
inline void fillEllipse(Plane& plane, const EllipseBox& box, const AngleRange& range, Pixel colour)
{
    fillEllipse(plane, box, range, Brush::solid(colour));
}

} // namespace tessaly::screen
