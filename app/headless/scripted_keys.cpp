// Loading the key script of the options and typing its strokes into the interpreter.
#include "app/headless/scripted_keys.h"

#include <algorithm>

#include "app/headless/read_whole_file.h"
#include "core/interpreter.h"
#include "core/shift_jis.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"

namespace tessaly::app {

namespace {

// The keys of the window that also give a character message (the same code).
bool givesCharacter(int key)
{
    return key == screen::vk::kEnter || key == screen::vk::kEscape || key == screen::vk::kBackspace
        || key == screen::vk::kTab;
}

bool isEscape(KeyStroke stroke) { return stroke == KeyStroke {StrokeKind::Key, screen::vk::kEscape}; }

} // namespace

bool ScriptedKeys::load(const std::vector<KeySource>& sources, std::string& error)
{
    for (const auto& source : sources) {
        std::string fileText;
        if (source.isFile && !ReadWholeFile(source.text, fileText, kMaxKeyScriptBytes)) {
            error = std::string("cannot read ") + source.text;
            return false;
        }
        auto read = parseKeyScript(source.isFile ? std::string_view(fileText) : std::string_view(source.text),
            std::move(m_strokes));
        if (!read.ok) {
            error = source.isFile ? std::string("--keys-file ") + source.text + ": " + read.error
                                  : "--keys: " + read.error;
            return false;
        }
        m_strokes = std::move(read.strokes);
    }
    return true;
}

bool ScriptedKeys::typeForProgram(core::Interpreter& in)
{
    if (m_heldEscape)
        return true;
    if (m_next >= m_strokes.size())
        return false;
    KeyStroke stroke = m_strokes[m_next++];
    if (isEscape(stroke))
        m_heldEscape = true;
    else
        type(in, stroke);
    return true;
}

void ScriptedKeys::typeHeld(core::Interpreter& in)
{
    if (!m_heldEscape)
        return;
    m_heldEscape = false;
    type(in, {StrokeKind::Key, screen::vk::kEscape});
}

std::optional<KeyStroke> ScriptedKeys::take()
{
    if (m_next >= m_strokes.size())
        return std::nullopt;
    return m_strokes[m_next++];
}

void ScriptedKeys::type(core::Interpreter& in, KeyStroke stroke)
{
    switch (stroke.kind) {
    case StrokeKind::Character:
        in.onChar(stroke.code);
        break;
    case StrokeKind::Key:
        in.onKeyDown(stroke.code);
        if (givesCharacter(stroke.code))
            in.onChar(stroke.code);
        in.onKeyUp(stroke.code);
        break;
    case StrokeKind::NoKey:
        break;
    }
}

std::vector<std::string> rowsEnterTakes(core::Interpreter& in)
{
    const auto& screen = in.screen();
    int last = screen.cursorRow();
    auto link = screen.link(last);
    int first = link.firstRow >= 0 && link.firstRow <= last ? link.firstRow : last;
    std::vector<std::string> rows;
    size_t taken = 0; // bytes of this row that ended the row above (a character's trail byte)
    for (int r = first; r <= last; ++r) {
        const std::string& row = screen.row(r);
        std::string text = row.substr(std::min(taken, row.size()));
        taken = 0;
        size_t at = 0;
        while (at < text.size())
            at += core::IsLeadByte(static_cast<uint8_t>(text[at])) ? 2 : 1;
        if (at > text.size() && r < last && !screen.row(r + 1).empty()) {
            text += screen.row(r + 1)[0];
            taken = 1;
        }
        rows.push_back(std::move(text));
    }
    auto end = rows.back().find_last_not_of(' ');
    rows.back().erase(end == std::string::npos ? 0 : end + 1);
    bool anyText = std::any_of(rows.begin(), rows.end(), [](const std::string& row) { return !row.empty(); });
    return anyText ? rows : std::vector<std::string> {};
}

} // namespace tessaly::app
