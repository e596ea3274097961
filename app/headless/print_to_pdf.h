// The runner's prints: the program listing and the screen, drawn as the window prints them, into
// PDF files.
#pragma once

#include <string>

namespace tessaly::core {
class Interpreter;
}
namespace tessaly::screen {
class Renderer;
}

namespace tessaly::app {

// Every stored line, linesPerPage (50, 75 or 100) rows a page, each page numbered below its rows.
bool printListingToPdf(core::Interpreter& interpreter, const screen::Renderer& renderer, int linesPerPage,
    const std::string& path, std::string& error);
// The screen as it stands, on the background colour, positive or negative.
bool printScreenToPdf(core::Interpreter& interpreter, screen::Renderer& renderer, bool negative,
    const std::string& path, std::string& error);

} // namespace tessaly::app
