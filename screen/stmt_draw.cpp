// DRAW: a string of one-letter drawing commands interpreted on the active page from the pen (the
// last point).
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/graphics.h"
#include "screen/paint_brush.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// A string that keeps rewriting itself through X is stopped after this many restarts.
constexpr int kMostRestarts = 255;
constexpr size_t kMostDrawBytes = 4096;

std::string upperWithoutQuotes(std::string_view text) { return core::upperCased(core::withoutBytes(text, "\"")); }

class DrawInterpreter {
public:
    DrawInterpreter(core::Interpreter& in, std::string commands)
        : m_in(in)
        , m_g(in.graphics())
        , m_colours(in.colours())
        , m_state(in.graphics().draw)
        , m_text(std::move(commands))
    {
    }

    int run()
    {
        int restarts = 0;
        size_t pos = 0;
        while (pos < m_text.size()) {
            long long next = step(pos);
            if (next < 0)
                return core::kFailed;
            if (next == 0 && m_restarted) {
                m_restarted = false;
                if (++restarts > kMostRestarts || m_text.size() > kMostDrawBytes)
                    return m_in.raise(ErrorId::OutOfMemory);
            }
            pos = static_cast<size_t>(next);
        }
        return 0;
    }

private:
    int illegal() { return m_in.raise(ErrorId::IllegalFunctionCall); }
    bool colourFits(int c) const { return c >= 0 && c <= (m_colours.colourMode == 2 ? 15 : 7); }
    int distance(double n) const { return roundHalfAway(n * m_state.scale); }

    // The argument of the command at pos: up to the next command letter.
    std::string argumentAt(size_t pos) const
    {
        size_t end = pos + 1;
        while (end < m_text.size() && !core::isUpperLetter(m_text[end]))
            ++end;
        return m_text.substr(pos + 1, end - pos - 1);
    }

    // Two numbers separated by ","; false when there is no ",".
    static bool pairOf(const std::string& argument, double& a, double& b)
    {
        auto comma = argument.find(',');
        if (comma == std::string::npos)
            return false;
        a = std::atof(argument.substr(0, comma).c_str());
        b = std::atof(argument.substr(comma + 1).c_str());
        return true;
    }

    void rotate(int& dx, int& dy) const
    {
        int x = dx, y = dy;
        switch (m_state.angle & 3) {
        case 1: dx = y, dy = -x; break;
        case 2: dx = -x, dy = -y; break;
        case 3: dx = -y, dy = x; break;
        default: break;
        }
    }

    static bool onScreen(int x, int y) { return x >= 0 && y >= 0 && x <= kScreenWidth && y <= kScreenHeight; }

    // A segment as DRAW draws it: black first, then the style in the drawing colour or the C colour.
    void drawSegment(int x0, int y0, int x1, int y1)
    {
        auto* renderer = m_in.renderer();
        if (renderer == nullptr)
            return;
        if (m_g.viewActive) {
            x0 = m_g.toDeviceX(x0), y0 = m_g.toDeviceY(y0), x1 = m_g.toDeviceX(x1), y1 = m_g.toDeviceY(y1);
        }
        Plane& page = renderer->activePage();
        page.line(x0, y0, x1, y1, 0x000000);
        if (m_state.styleSet)
            page.line(x0, y0, x1, y1, m_colours.palette[static_cast<size_t>(m_colours.foregroundColour)], m_state.style);
        else
            page.line(x0, y0, x1, y1, m_colours.palette[static_cast<size_t>(m_state.colour & 15)]);
        renderer->composeRect(std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1));
    }

    // A relative move from the pen, rotated; drawn unless B came before.
    int move(int dx, int dy)
    {
        rotate(dx, dy);
        int x = m_g.lastX + dx;
        int y = m_g.lastY + dy;
        if (!onScreen(m_g.lastX, m_g.lastY) || !onScreen(x, y))
            return illegal();
        if (!m_blankMove)
            drawSegment(m_g.lastX, m_g.lastY, x, y);
        m_g.lastX = x;
        m_g.lastY = y;
        return 0;
    }

    // Fills from (x, y) up to the border colour with the brush colour, the C colour or the tile.
    int fill(int x, int y, int border)
    {
        if (!colourFits(border))
            return illegal();
        int inside = m_state.useBrushColour ? m_state.brushColour : m_state.colour;
        Brush brush = Brush::solid(m_colours.palette[static_cast<size_t>(inside & 15)]);
        if (!m_g.tileText.empty())
            TRY_BASIC(makeBrush(m_in, m_g.tileText, brush));
        if (auto* renderer = m_in.renderer()) {
            if (m_g.viewActive)
                x = m_g.toDeviceX(x), y = m_g.toDeviceY(y);
            renderer->activePage().floodFillWith(x, y, m_colours.palette[static_cast<size_t>(border)],
                [&brush](int px, int py) { return brush.at(px, py); });
            renderer->composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
        }
        return 0;
    }

    // The box of Q and T: its outline from the pen to the far corner, where the pen ends.
    int box(const std::string& argument, bool filled)
    {
        double a = 0, b = 0;
        if (!pairOf(argument, a, b))
            return illegal();
        int dx = distance(a), dy = distance(b);
        rotate(dx, dy);
        int x0 = m_g.lastX, y0 = m_g.lastY, x1 = x0 + dx, y1 = y0 + dy;
        if (!onScreen(x0, y0) || !onScreen(x1, y1))
            return illegal();
        drawSegment(x0, y0, x0, y1);
        drawSegment(x0, y1, x1, y1);
        drawSegment(x1, y1, x1, y0);
        drawSegment(x1, y0, x0, y0);
        m_g.lastX = x1;
        m_g.lastY = y1;
        if (filled)
            TRY_BASIC(fill((x0 + x1 + 1) / 2, (y0 + y1 + 1) / 2, m_state.colour));
        return 0;
    }

    // X=var; and Z=var;: the expression between "=" and ";" after pos; npos end when malformed.
    int expressionAfter(size_t pos, std::string& value, size_t& semicolon)
    {
        size_t equals = m_text.find('=', pos);
        semicolon = equals == std::string::npos ? equals : m_text.find(';', equals);
        if (semicolon == std::string::npos)
            return illegal();
        expr::Value v;
        TRY_BASIC(expr::evaluateText(m_in, m_text.substr(equals + 1, semicolon - equals - 1), v));
        value = v.isString() ? v.text : std::string();
        return 0;
    }

    // One command at pos: the position of the next, 0 to start again, -1 after an error.
    long long step(size_t pos)
    {
        char command = m_text[pos];
        if (!core::isUpperLetter(command))
            return static_cast<long long>(pos) + 1;
        std::string argument = argumentAt(pos);
        long long next = static_cast<long long>(pos + 1 + argument.size());
        double n = std::atof(argument.c_str());
        int result = 0;
        bool prefix = false;
        switch (command) {
        case 'U': result = move(0, -distance(n)); break;
        case 'D': result = move(0, distance(n)); break;
        case 'L': result = move(-distance(n), 0); break;
        case 'R': result = move(distance(n), 0); break;
        case 'E': result = move(distance(n), -distance(n)); break;
        case 'F': result = move(distance(n), distance(n)); break;
        case 'G': result = move(-distance(n), distance(n)); break;
        case 'H': result = move(-distance(n), -distance(n)); break;
        case 'M': {
            double a = -1, b = 0;
            if (!pairOf(argument, a, b))
                b = n;
            int x = devicePixel(a), y = devicePixel(b);
            if (!m_blankMove)
                drawSegment(m_g.lastX, m_g.lastY, x, y);
            m_g.lastX = x;
            m_g.lastY = y;
            break;
        }
        case 'B': m_blankMove = true, prefix = true; break;
        case 'N': m_noUpdate = true, prefix = true; break;
        case 'A':
            if (n < 0 || n > 3 || n != std::trunc(n))
                return illegalStep();
            m_state.angle = static_cast<int>(n);
            break;
        case 'C':
        case 'Z': {
            if (command == 'Z' && m_text.find('=', pos) != std::string::npos) {
                size_t semicolon = 0;
                std::string value;
                if (expressionAfter(pos, value, semicolon) < 0)
                    return -1;
                m_g.tileText = value;
                next = static_cast<long long>(semicolon) + 1;
                break;
            }
            int c = roundHalfAway(n);
            // Outside 0..15 the colour is not kept; 8..15 outside the 16-colour mode is kept but refused.
            if (c < 0 || c > 15)
                return illegalStep();
            (command == 'C' ? m_state.colour : m_state.brushColour) = c;
            if (command == 'Z')
                m_state.useBrushColour = true;
            if (!colourFits(c))
                return illegalStep();
            break;
        }
        case 'S':
            if (!(n > 0))
                return illegalStep();
            m_state.scale = static_cast<float>(n);
            break;
        case 'P': {
            int border = argument.empty() ? m_state.colour : roundHalfAway(n);
            result = fill(m_g.lastX, m_g.lastY, border);
            break;
        }
        case 'Q': result = box(argument, false); break;
        case 'T': result = box(argument, true); break;
        case 'W': {
            double a = 0, b = 0;
            if (!pairOf(argument, a, b))
                return illegalStep();
            drawSegment(m_g.lastX, m_g.lastY, m_g.lastX + distance(a), m_g.lastY + distance(b));
            break;
        }
        case 'X': {
            size_t semicolon = 0;
            std::string value;
            if (expressionAfter(pos, value, semicolon) < 0)
                return -1;
            m_text = upperWithoutQuotes(value) + m_text.substr(semicolon + 1);
            m_restarted = true;
            return 0;
        }
        case 'Y': {
            uint32_t style = 0;
            if (m_text.find('&', pos) != std::string::npos) {
                // The hexadecimal form takes every remaining character of the string.
                std::string digits;
                for (char c : m_text.substr(pos + 1))
                    if (c != '&' && c != 'H')
                        digits += c;
                if (digits.size() > 4 || digits.find_first_not_of("0123456789ABCDEF") != std::string::npos)
                    return illegalStep();
                style = digits.empty() ? 0 : static_cast<uint32_t>(std::strtoul(digits.c_str(), nullptr, 16));
                next = static_cast<long long>(m_text.size());
            } else {
                int scaled = distance(n);
                if (scaled < 0 || scaled > 65535)
                    return illegalStep();
                style = static_cast<uint32_t>(scaled);
            }
            m_state.style = static_cast<uint16_t>(style);
            m_state.styleSet = true;
            break;
        }
        default:
            break;
        }
        if (result < 0)
            return -1;
        if (!prefix) {
            // After a command that N came before, the pen stands at the origin.
            if (m_noUpdate)
                m_g.lastX = m_g.lastY = 0;
            m_blankMove = m_noUpdate = false;
        }
        return next;
    }

    long long illegalStep()
    {
        illegal();
        return -1;
    }

    core::Interpreter& m_in;
    GraphicScreen& m_g;
    Colours& m_colours;
    DrawState& m_state;
    std::string m_text;
    bool m_blankMove = false;
    bool m_noUpdate = false;
    bool m_restarted = false;
};

} // namespace

Outcome stmtDraw(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, text, value));
    std::string commands = upperWithoutQuotes(value.isString() ? value.text : std::string());
    if (commands.empty())
        return in.raise(ErrorId::SyntaxError);
    DrawInterpreter interpreter(in, std::move(commands));
    TRY_BASIC(interpreter.run());
    return kDone;
}

} // namespace tessaly::screen
