// DEF SEG, POKE, BSAVE, BLOAD and CALL: bytes of the user memory and of the variables' cells.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "io/basic_path.h"
#include "io/memory.h"
#include "io/user_memory.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

std::string_view statementText(core::Interpreter& in, int begin, int end)
{
    return in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
}

// The statement's arguments at its top-level commas, each trimmed.
std::vector<std::string> argumentTexts(std::string_view text)
{
    std::vector<std::string> fields;
    core::splitAtTopLevel(text, [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        fields.push_back(core::trimBlanks(piece));
        return true;
    });
    return fields;
}

// A whole number (truncated toward zero), within what a 64-bit address sum can take.
int wholeNumber(core::Interpreter& in, std::string_view text, int64_t& number)
{
    double given = 0;
    TRY_BASIC(expr::evaluateNumber(in, text, given));
    double whole = std::trunc(given);
    if (!(whole > -4294967296.0 && whole < 4294967296.0))
        return in.raise(ErrorId::IllegalFunctionCall);
    number = static_cast<int64_t>(whole);
    return 0;
}

// A file name: the string value of the expression, its double quotes left out.
int fileName(core::Interpreter& in, std::string_view text, std::string& path)
{
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, text, value));
    if (!value.isString())
        return in.raise(ErrorId::TypeMismatch);
    std::string name;
    for (char c : value.text)
        if (c != '"')
            name += c;
    if (core::trimBlanks(name).empty())
        return in.raise(ErrorId::FileNotOpen);
    path = HostPath(core::trimBlanks(name));
    return 0;
}

// What BSAVE and BLOAD begin with: the file and the offset of the bytes from the DEF SEG base.
struct MemoryFile {
    std::vector<std::string> fields; // all the arguments
    std::string path;
    int64_t offset = 0;
};

// The file name and the offset of a statement that has at least `count` arguments.
int readMemoryFile(core::Interpreter& in, int begin, int end, size_t count, MemoryFile& file)
{
    file.fields = argumentTexts(statementText(in, begin, end));
    if (file.fields.size() < count)
        return in.raise(ErrorId::SyntaxError);
    TRY_BASIC(fileName(in, file.fields[0], file.path));
    return wholeNumber(in, file.fields[1], file.offset);
}

} // namespace

Outcome stmtDefSeg(core::Interpreter& in, int begin, int end)
{
    auto text = statementText(in, begin, end);
    auto equals = text.find('=');
    if (equals == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    return core::outcomeOf(wholeNumber(in, text.substr(equals + 1), in.memory().segmentBase));
}

Outcome stmtPoke(core::Interpreter& in, int begin, int end)
{
    auto fields = argumentTexts(statementText(in, begin, end));
    if (fields.size() < 2)
        return in.raise(ErrorId::SyntaxError);
    int64_t offset = 0;
    int64_t value = 0;
    TRY_BASIC(wholeNumber(in, fields[0], offset));
    TRY_BASIC(wholeNumber(in, fields[1], value));
    uint8_t* byte = nullptr;
    TRY_BASIC(reachBytes(in, in.memory().segmentBase + offset, 1, true, byte));
    *byte = static_cast<uint8_t>(value & 0xFF);
    return kDone;
}

// BSAVE name, offset, length: exactly those bytes, with no header. The range is checked before the
// file is made, so a refused range leaves no file behind.
Outcome stmtBsave(core::Interpreter& in, int begin, int end)
{
    MemoryFile target;
    TRY_BASIC(readMemoryFile(in, begin, end, 3, target));
    int64_t length = 0;
    TRY_BASIC(wholeNumber(in, target.fields[2], length));
    if (length < 0 || length > kAreaBytes)
        return in.raise(ErrorId::IllegalFunctionCall);
    uint8_t* bytes = nullptr;
    TRY_BASIC(reachBytes(in, in.memory().segmentBase + target.offset, static_cast<size_t>(length), false, bytes));
    std::vector<uint8_t> copy;
    if (bytes != nullptr)
        copy.assign(bytes, bytes + length);
    std::FILE* file = std::fopen(target.path.c_str(), "wb");
    if (file == nullptr)
        return in.raise(ErrorId::FileNotOpen);
    bool written = copy.empty() || std::fwrite(copy.data(), 1, copy.size(), file) == copy.size();
    written = std::fclose(file) == 0 && written;
    if (!written)
        return in.raise(ErrorId::DiskIoError);
    return kDone;
}

// BLOAD name, offset: the whole file from that address on. A file longer than the room there is
// refused before anything is written.
Outcome stmtBload(core::Interpreter& in, int begin, int end)
{
    MemoryFile source;
    TRY_BASIC(readMemoryFile(in, begin, end, 2, source));
    std::FILE* file = std::fopen(source.path.c_str(), "rb");
    if (file == nullptr)
        return in.raise(ErrorId::FileNotOpen);
    // No area is larger than 1 MiB: one byte more than that is enough to know the file is too long.
    std::vector<uint8_t> contents;
    uint8_t block[256];
    size_t got = 0;
    while (contents.size() <= kAreaBytes && (got = std::fread(block, 1, sizeof block, file)) > 0)
        contents.insert(contents.end(), block, block + got);
    bool failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed)
        return in.raise(ErrorId::DiskIoError);
    uint8_t* bytes = nullptr;
    TRY_BASIC(reachBytes(in, in.memory().segmentBase + source.offset, contents.size(), true, bytes));
    if (!contents.empty())
        std::copy(contents.begin(), contents.end(), bytes);
    return kDone;
}

// CALL runs machine code at an address of the user memory. This system runs no machine code: the
// statement is refused with "Illegal function call in ", as USR is.
Outcome stmtCall(core::Interpreter& in, int, int)
{
    return in.raise(ErrorId::IllegalFunctionCall);
}

} // namespace tessaly::io
