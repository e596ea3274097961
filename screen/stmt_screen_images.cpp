// ROLL and COPY: the active page scrolled, and the screen written to a bitmap file; and the two
// clipboard copies of the screens that the window's menu offers.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/graphics.h"
#include "screen/renderer.h"
#include "screen/statements.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

void putLittleEndian(std::string& out, uint32_t value, int bytes)
{
    for (int k = 0; k < bytes; ++k)
        out += static_cast<char>((value >> (8 * k)) & 0xFF);
}

// The 640 x 400 24-bit bitmap file of a plane, rows from the bottom, pixels blue, green, red.
std::string bitmapFile(const Plane& plane, bool inverted)
{
    constexpr uint32_t kPixelBytes = kScreenWidth * kScreenHeight * 3;
    std::string out = "BM";
    putLittleEndian(out, 54 + kPixelBytes, 4);
    putLittleEndian(out, 0, 4);
    putLittleEndian(out, 54, 4);
    putLittleEndian(out, 40, 4);
    putLittleEndian(out, kScreenWidth, 4);
    putLittleEndian(out, kScreenHeight, 4);
    putLittleEndian(out, 1, 2);
    putLittleEndian(out, 24, 2);
    putLittleEndian(out, 0, 4);
    putLittleEndian(out, kPixelBytes, 4);
    out.append(16, '\0');
    out.reserve(out.size() + kPixelBytes);
    for (int y = kScreenHeight - 1; y >= 0; --y) {
        for (int x = 0; x < kScreenWidth; ++x) {
            Pixel p = plane.pixel(x, y);
            if (inverted)
                p = ~p & 0xFFFFFF;
            out += static_cast<char>(p & 0xFF);
            out += static_cast<char>((p >> 8) & 0xFF);
            out += static_cast<char>((p >> 16) & 0xFF);
        }
    }
    return out;
}

} // namespace

Outcome stmtRoll(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    // The Y or N word is not an expression: only the first two arguments are evaluated.
    std::vector<std::string> fields;
    core::splitAtTopLevel(text, [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        fields.push_back(core::trimBlanks(piece));
        return true;
    });
    int shift[2] = {0, 0};
    for (size_t k = 0; k < 2 && k < fields.size(); ++k) {
        if (fields[k].empty())
            continue;
        expr::Value v;
        TRY_BASIC(expr::evaluateText(in, fields[k], v));
        if (v.isString())
            return in.raise(ErrorId::TypeMismatch);
        shift[k] = roundHalfAway(v.number);
    }
    int dy = shift[0];
    int dx = shift[1];
    if (dy < -399 || dy > 399 || dx < -639 || dx > 639)
        return in.raise(ErrorId::SyntaxError);
    std::string rest;
    for (size_t k = 2; k < fields.size(); ++k)
        rest += fields[k];
    bool background = rest.find('Y') != std::string::npos || rest.find('y') != std::string::npos;
    auto& colours = in.colours();
    Pixel fill = colours.palette[static_cast<size_t>(background ? std::clamp(colours.backgroundInEffect, 0, 15) : 0)];
    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return kDone;
    Plane& page = renderer->activePage();
    Rect clip = page.clip();
    page.resetClip();
    // The content moves up by dy and left by dx; the uncovered strips take the fill colour.
    Rect source {std::max(0, dx), std::max(0, dy), kScreenWidth + std::min(0, dx), kScreenHeight + std::min(0, dy)};
    Plane moved = page;
    page.fill(page.bounds(), fill);
    page.copyFrom(moved, source, std::max(0, -dx), std::max(0, -dy));
    page.setClip(clip);
    renderer->composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
    return kDone;
}

Outcome stmtCopy(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    int n = 3;
    if (!core::trimBlanks(text).empty()) {
        expr::Value v;
        TRY_BASIC(expr::evaluateText(in, text, v));
        if (v.isString())
            return in.raise(ErrorId::TypeMismatch);
        n = roundHalfAway(v.number);
    }
    if (n < 1 || n > 5)
        return in.raise(ErrorId::SyntaxError);
    auto* renderer = in.renderer();
    auto& g = in.graphics();
    ++g.copyCounter;
    std::string name = "COPY" + std::to_string(g.copyCounter) + ".BMP";
    // 1 the characters, 2 the page drawn on inverted, 3 the screen inverted, 4 the page drawn on
    // as it is (the page counterpart of 5), 5 the screen as shown.
    std::string bytes;
    if (renderer != nullptr) {
        switch (n) {
        case 1: bytes = bitmapFile(renderer->textPlane(), false); break;
        case 2: bytes = bitmapFile(renderer->activePage(), true); break;
        case 3: bytes = bitmapFile(renderer->composite(), true); break;
        case 4: bytes = bitmapFile(renderer->activePage(), false); break;
        default: bytes = bitmapFile(renderer->composite(), false); break;
        }
    } else {
        bytes = bitmapFile(Plane(), n == 2 || n == 3);
    }
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr)
        return in.raise(ErrorId::FileNotOpen);
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    written = std::fclose(file) == 0 && written;
    if (!written)
        return in.raise(ErrorId::DiskIoError);
    return kDone;
}

std::string textScreenForClipboard(const TextScreen& screen)
{
    std::string text;
    for (int r = 0; r <= 23; ++r) {
        if (text.size() < 2 || text.compare(text.size() - 2, 2, "\r\n") != 0)
            text += "\r\n";
        text += screen.row(r);
    }
    return text;
}

void copyTextScreenToClipboard(core::Interpreter& in)
{
    in.host().setClipboardText(textScreenForClipboard(in.screen()));
}

void copyGraphicsToClipboard(core::Interpreter& in)
{
    auto& g = in.graphics();
    auto* renderer = in.renderer();
    if (renderer == nullptr || g.graphicsSwitch != 0 || g.displayPageValue == 0) {
        in.host().clearClipboard();
        return;
    }
    const Plane& page = renderer->page(0);
    in.host().setClipboardImage(page.row(0), page.width(), page.height());
}

} // namespace tessaly::screen
