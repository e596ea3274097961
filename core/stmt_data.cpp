// READ, DATA and RESTORE: the DATA items of the program are collected at the first READ and
// handed out in order.
#include <string>

#include "core/find_target.h"
#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/program_walk.h"
#include "core/statements.h"
#include "expr/evaluator.h"
#include "expr/statements.h"

namespace tessaly::core {

namespace {

// The items of one DATA statement text, appended to items (at most kMaxDataItems in all).
void collectItems(std::string_view text, std::vector<std::string>& items)
{
    size_t pos = 0;
    // Characters up to "9" (the number, blanks, punctuation) are passed over; then DATA or nothing.
    while (pos < text.size() && static_cast<unsigned char>(text[pos]) <= '9') {
        if (text[pos] == '\'')
            return;
        ++pos;
    }
    if (text.compare(pos, 4, "DATA") != 0)
        return;
    pos += 4;
    std::string item;
    auto add = [&] {
        if (items.size() < kMaxDataItems)
            items.push_back(item);
        item.clear();
    };
    // Passes over characters up to the next comma; false when the statement ends on the way.
    auto skipToComma = [&] {
        while (pos < text.size() && text[pos] != ',') {
            if (text[pos] == '\'')
                return false;
            ++pos;
        }
        if (pos >= text.size())
            return false;
        ++pos;
        return true;
    };
    for (;;) {
        if (pos >= text.size()) {
            add();
            return;
        }
        char c = text[pos];
        if (c == '\'') {
            add();
            return;
        }
        if (c == '"') {
            auto close = text.find('"', pos + 1);
            item.assign(text.substr(pos + 1, close == std::string_view::npos ? std::string_view::npos : close - pos - 1));
            add();
            if (close == std::string_view::npos)
                return;
            pos = close + 1;
            if (!skipToComma())
                return;
            continue;
        }
        if (c == ',') {
            add();
            ++pos;
            continue;
        }
        if (c == ' ') {
            if (item.empty()) {
                ++pos;
                continue;
            }
            add();
            if (!skipToComma())
                return;
            continue;
        }
        item += c;
        ++pos;
    }
}

void collectData(Interpreter& in)
{
    auto& data = in.dataState();
    data.items.clear();
    int count = in.program().count();
    for (int line = 1; line <= count; ++line) {
        if (in.program().numberAt(line) < data.restoreLine)
            continue;
        int found = 0;
        walkLine(in, line, [&](int entry) {
            std::string_view text = in.program().textAt(entry);
            // A piece's text starts with its own number; the line's text with the line's.
            collectItems(text, data.items);
            return false;
        }, found);
    }
}

// A DATA item written with & is read as hexadecimal (&H) or octal.
std::string convertAmpersand(const std::string& item)
{
    if (item.find('&') == std::string::npos)
        return item;
    bool hex = item.find('H') != std::string::npos || item.find('h') != std::string::npos;
    uint32_t value = 0;
    for (char c : item) {
        if (c == '&' || c == 'H' || c == 'h' || c == ' ')
            continue;
        char u = toUpperAscii(c);
        int digit = (u >= '0' && u <= '9') ? u - '0' : (u >= 'A' && u <= 'F') ? u - 'A' + 10 : 99;
        if (digit >= (hex ? 16 : 8))
            break;
        value = value * (hex ? 16u : 8u) + static_cast<uint32_t>(digit);
    }
    return std::to_string(static_cast<int32_t>(value));
}

} // namespace

Outcome stmtRead(Interpreter& in, int begin, int end)
{
    auto& data = in.dataState();
    if (data.items.empty() && !data.collected) {
        collectData(in);
        data.collected = true;
    }
    if (data.items.empty())
        return in.raise(ErrorId::OutOfData);
    int pos = begin;
    auto& buffer = in.buffer();
    for (;;) {
        while (pos < end && (buffer.at(pos) == ' ' || buffer.at(pos) == ','))
            ++pos;
        if (pos >= end)
            break;
        expr::Target target;
        TRY_BASIC(expr::parseTarget(in, pos, end, target));
        if (data.index >= static_cast<int>(data.items.size()))
            return in.raise(ErrorId::OutOfData);
        std::string item = data.items[static_cast<size_t>(data.index++)];
        expr::Value value;
        if (target.type == expr::ValueType::String) {
            value = expr::Value::makeString(item);
        } else {
            if (!target.isElement)
                item = convertAmpersand(item);
            TRY_BASIC(expr::evaluateText(in, item, value));
            if (value.empty)
                value = expr::Value::makeNumber(0, expr::NumberForm::Literal);
        }
        TRY_BASIC(expr::assignTarget(in, target, value));
    }
    return kDone;
}

Outcome stmtRestore(Interpreter& in, int begin, int end)
{
    auto& data = in.dataState();
    data.index = 0;
    data.items.clear();
    data.collected = false;
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (argument.find_first_not_of(' ') == std::string_view::npos) {
        data.restoreLine = 0;
        return kDone;
    }
    if (argument.find('*') != std::string_view::npos) {
        auto star = argument.find('*');
        auto label = argument.substr(star, argument.find(' ', star) - star);
        int entry = in.prepared().findLabel(label);
        if (entry <= 0)
            return in.raise(ErrorId::SyntaxError);
        data.restoreLine = leadingNumber(in.program().textAt(in.prepared().sourceAt(entry)));
        return kDone;
    }
    expr::Value value;
    TRY_BASIC(expr::evaluateExpression(in, begin, end, value));
    if (value.isString())
        return in.raise(ErrorId::TypeMismatch);
    data.restoreLine = expr::integerOf(value);
    return kDone;
}

} // namespace tessaly::core
