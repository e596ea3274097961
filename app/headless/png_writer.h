// Writing a plane as a PNG file (libpng), for the headless runner's screenshots.
#pragma once

#include <string>

#include "screen/raster.h"

namespace tessaly::app {

// Writes the plane as an 8-bit RGB PNG; false with a message on failure.
bool writePng(const screen::Plane& plane, const std::string& path, std::string& error);

} // namespace tessaly::app
