// A test session with a renderer (no glyphs), for statements that draw on the graphics pages.
#pragma once

#include "screen/renderer.h"
#include "support/test_host.h"

namespace tessaly::test {

struct GraphicsSession {
    screen::Font font = screen::Font::parse("");
    Session session;
    screen::Renderer renderer {font, session.interpreter().colours(), session.interpreter().functionKeys(),
        session.interpreter().graphics()};

    GraphicsSession() { session.interpreter().setRenderer(&renderer); }
    ~GraphicsSession() { session.interpreter().setRenderer(nullptr); }
    GraphicsSession(const GraphicsSession&) = delete;
    GraphicsSession& operator=(const GraphicsSession&) = delete;

    // A pixel of graphics page 0.
    screen::Pixel at(int x, int y) { return renderer.page(0).pixel(x, y); }
};

} // namespace tessaly::test
