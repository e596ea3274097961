// FIELD, LSET, RSET, GET # and PUT #: random files read and written one whole record at a time
// through the record buffer, and the keyboard read a record's worth of typed characters at a time.
#include <cmath>
#include <string>
#include <unistd.h>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/outcome.h"
#include "core/rounding.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "expr/print_items.h"
#include "expr/statements.h"
#include "expr/variables.h"
#include "io/file_functions.h"
#include "io/file_table.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The text without its blanks: field names are compared as written, spacing aside.
std::string withoutBlanks(std::string_view text) { return core::withoutBytes(text, " "); }

// The text of the statement's argument.
std::string_view argumentText(core::Interpreter& in, int begin, int end)
{
    return in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
}

// Whether a FIELD name is a string variable: a name (with "$", or of a letter that DEFSTR made
// string), optionally followed by subscripts in parentheses.
bool isStringVariable(core::Interpreter& in, const std::string& name)
{
    if (name.empty() || !core::isUpperLetter(name[0]))
        return false;
    size_t paren = name.find('(');
    std::string base = name.substr(0, paren);
    for (char c : base) {
        if (!core::isUpperCaseNameChar(c))
            return false;
    }
    if (paren != std::string::npos && name.back() != ')')
        return false;
    return base.find('$') != std::string::npos || in.variables().typeOfName(base) == expr::ValueType::String;
}

// Gives a field variable its bytes. The name is read from the statement buffer, so the statement
// being executed is put back afterwards.
int assignFieldVariable(core::Interpreter& in, const std::string& name, std::string bytes)
{
    auto& buffer = in.buffer();
    std::string statement(buffer.view());
    if (!buffer.assign(name))
        return in.raise(ErrorId::LineBufferOverflow);
    expr::Target target;
    int pos = 0;
    int status = expr::parseTarget(in, pos, buffer.length(), target);
    bool whole = pos == buffer.length();
    (void)buffer.assign(statement); // it came from the buffer, so it fits again
    TRY_BASIC(status);
    if (!whole)
        return in.raise(ErrorId::SyntaxError);
    return expr::assignTarget(in, target, expr::Value::makeString(std::move(bytes)));
}

// Hands each field's bytes of the record buffer to its variable.
int distributeFields(core::Interpreter& in, const FileChannel& channel)
{
    for (const auto& field : channel.fields) {
        TRY_BASIC(assignFieldVariable(in, field.name,
            channel.recordBuffer.substr(static_cast<size_t>(field.offset), static_cast<size_t>(field.width))));
    }
    return 0;
}

// One FIELD clause, "width AS name". The AS is the first one that stands after a blank, a digit or
// ")" and before a blank, so names such as CASE$ or widths such as LAST keep their letters.
size_t findAs(std::string_view clause)
{
    for (size_t at = clause.find("AS"); at != std::string_view::npos; at = clause.find("AS", at + 1)) {
        if (at == 0 || at + 2 >= clause.size() || clause[at + 2] != ' ')
            continue;
        char before = clause[at - 1];
        if (before == ' ' || before == ')' || (before >= '0' && before <= '9'))
            return at;
    }
    return std::string_view::npos;
}

int readField(core::Interpreter& in, std::string_view clause, int offset, RecordField& field)
{
    size_t as = findAs(clause);
    if (as == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    expr::Value width;
    TRY_BASIC(expr::evaluateText(in, clause.substr(0, as), width));
    if (width.empty)
        return in.raise(ErrorId::SyntaxError);
    if (width.isString())
        return in.raise(ErrorId::TypeMismatch);
    double rounded = core::roundHalfAwayFromZero(width.number);
    if (!(rounded >= 1 && rounded <= kMaxRecordLength))
        return in.raise(ErrorId::IllegalFunctionCall);
    field.width = static_cast<int>(rounded);
    if (offset + field.width > kMaxRecordLength)
        return in.raise(ErrorId::FieldOverflow);
    field.offset = offset;
    field.name = withoutBlanks(clause.substr(as + 2));
    if (!isStringVariable(in, field.name))
        return in.raise(ErrorId::IllegalFunctionCall);
    return 0;
}

// GET and PUT whose argument starts with "@" or "(" are the screen-image forms, not file records.
bool isImageForm(std::string_view text)
{
    size_t first = text.find_first_not_of(' ');
    return first != std::string_view::npos && (text[first] == '@' || text[first] == '(');
}

// The channel that FIELD, GET and PUT name before their first comma (the whole argument when
// there is none); afterComma is npos when there is no comma.
int channelOf(core::Interpreter& in, std::string_view text, FileChannel*& channel, size_t& afterComma)
{
    size_t comma = text.find(',');
    afterComma = comma == std::string_view::npos ? comma : comma + 1;
    channel = &in.files().entry(fileNumberOf(text.substr(0, comma)));
    if (!channel->isOpen())
        return in.raise(ErrorId::FileNotOpen);
    return 0;
}

// The record that GET or PUT names: the expression after the comma truncated, or, when it is
// missing or 0, the record after the current one. It becomes the current record. A number outside
// 1..65000 is refused and leaves the current record as it was.
int recordNumberOf(core::Interpreter& in, std::string_view text, size_t afterComma, FileChannel& channel, int& record)
{
    double number = 0;
    if (afterComma != std::string_view::npos && !core::trimBlanks(text.substr(afterComma)).empty()) {
        expr::Value value;
        TRY_BASIC(expr::evaluateText(in, text.substr(afterComma), value));
        if (value.empty)
            return in.raise(ErrorId::SyntaxError);
        if (value.isString())
            return in.raise(ErrorId::TypeMismatch);
        number = std::trunc(value.number);
    }
    if (number == 0)
        number = channel.currentRecord + 1.0;
    if (!(number >= 1 && number <= kHighestRecordNumber))
        return in.raise(ErrorId::DiskIoError);
    record = static_cast<int>(number);
    channel.currentRecord = record;
    return 0;
}

off_t recordOffset(const FileChannel& channel, int record)
{
    return static_cast<off_t>(record - 1) * static_cast<off_t>(channel.recordLength);
}

// GET on a keyboard channel: the statement waits (as INPUT$ does) until a record's worth of
// characters has been typed.
Outcome getFromKeyboard(core::Interpreter& in, FileChannel& channel)
{
    std::string typed;
    TRY_BASIC(takeTypedKeys(in, static_cast<size_t>(channel.recordLength), typed));
    channel.recordBuffer.replace(0, typed.size(), typed);
    TRY_BASIC(distributeFields(in, channel));
    return kDone;
}

Outcome setField(core::Interpreter& in, int begin, int end, bool rightAlign)
{
    auto text = argumentText(in, begin, end);
    size_t equals = core::findAtTopLevel(text, 0, [](char c, int depth) { return depth == 0 && c == '='; });
    if (equals == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    std::string name = withoutBlanks(text.substr(0, equals));
    if (name.empty())
        return in.raise(ErrorId::SyntaxError);
    // The first file, in number order, whose FIELD names the variable. The same name in the FIELD
    // of two files is allowed (a program may alternate between them); the lower number wins.
    FileChannel* channel = nullptr;
    const RecordField* field = nullptr;
    for (int n = 1; n <= kHighestFileNumber && field == nullptr; ++n) {
        auto& entry = in.files().entry(n);
        for (const auto& candidate : entry.fields) {
            if (candidate.name == name) {
                channel = &entry;
                field = &candidate;
                break;
            }
        }
    }
    if (field == nullptr)
        return in.raise(ErrorId::IllegalFunctionCall);
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, text.substr(equals + 1), value));
    if (value.empty)
        return in.raise(ErrorId::SyntaxError);
    if (!value.isString())
        return in.raise(ErrorId::TypeMismatch);
    auto width = static_cast<size_t>(field->width);
    std::string bytes = std::move(value.text);
    if (bytes.size() > width)
        bytes = rightAlign ? bytes.substr(bytes.size() - width) : bytes.substr(0, width);
    else if (rightAlign)
        bytes.insert(0, width - bytes.size(), ' ');
    else
        bytes.append(width - bytes.size(), ' ');
    channel->recordBuffer.replace(static_cast<size_t>(field->offset), width, bytes);
    TRY_BASIC(assignFieldVariable(in, field->name, std::move(bytes)));
    return kDone;
}

// The channel of GET # and PUT #; their screen-image forms are not taken here.
int recordChannelOf(core::Interpreter& in, std::string_view text, FileChannel*& channel, size_t& afterComma)
{
    if (isImageForm(text))
        return in.raise(ErrorId::SyntaxError);
    return channelOf(in, text, channel, afterComma);
}

} // namespace

Outcome stmtField(core::Interpreter& in, int begin, int end)
{
    auto text = argumentText(in, begin, end);
    size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    FileChannel* channel = nullptr;
    size_t afterComma = 0;
    TRY_BASIC(channelOf(in, text, channel, afterComma));
    if (channel->device == DeviceKind::Disk && channel->mode != FileMode::Random)
        return in.raise(ErrorId::IllegalFunctionCall);
    // A FIELD that fails leaves the record as OPEN made it: 256 bytes and no fields.
    channel->fields.clear();
    channel->recordLength = kMaxRecordLength;
    std::vector<RecordField> fields;
    int total = 0;
    int status = 0;
    core::splitAtTopLevel(text.substr(afterComma), [](char c) { return c == ','; }, [&](std::string_view clause, char) {
        if (fields.size() == kMaxFields) {
            status = in.raise(ErrorId::OutOfMemory);
            return false;
        }
        RecordField field;
        status = readField(in, clause, total, field);
        if (status < 0)
            return false;
        total += field.width;
        fields.push_back(std::move(field));
        return true;
    });
    TRY_BASIC(status);
    channel->fields = std::move(fields);
    channel->recordLength = total;
    channel->recordBuffer.assign(kMaxRecordLength, ' ');
    return kDone;
}

Outcome stmtLset(core::Interpreter& in, int begin, int end) { return setField(in, begin, end, false); }

Outcome stmtRset(core::Interpreter& in, int begin, int end) { return setField(in, begin, end, true); }

Outcome stmtGetRecord(core::Interpreter& in, int begin, int end)
{
    auto text = argumentText(in, begin, end);
    FileChannel* channel = nullptr;
    size_t afterComma = 0;
    TRY_BASIC(recordChannelOf(in, text, channel, afterComma));
    if (channel->device == DeviceKind::Keyboard)
        return getFromKeyboard(in, *channel);
    if (channel->device != DeviceKind::Disk || channel->mode != FileMode::Random)
        return in.raise(ErrorId::SyntaxError);
    int record = 0;
    TRY_BASIC(recordNumberOf(in, text, afterComma, *channel, record));
    auto length = static_cast<size_t>(channel->recordLength);
    // Bytes of the record beyond the end of the file read as blanks.
    std::string bytes(length, ' ');
    if (::lseek(channel->fd, recordOffset(*channel, record), SEEK_SET) < 0)
        return in.raise(ErrorId::DiskIoError);
    ssize_t got = ::read(channel->fd, bytes.data(), length);
    if (got <= 0)
        return in.raise(ErrorId::DiskIoError);
    channel->recordBuffer.replace(0, length, bytes);
    TRY_BASIC(distributeFields(in, *channel));
    return kDone;
}

Outcome stmtPutRecord(core::Interpreter& in, int begin, int end)
{
    auto text = argumentText(in, begin, end);
    FileChannel* channel = nullptr;
    size_t afterComma = 0;
    TRY_BASIC(recordChannelOf(in, text, channel, afterComma));
    auto length = static_cast<size_t>(channel->recordLength);
    if (channel->device == DeviceKind::Screen || channel->device == DeviceKind::Printer) {
        // The screen shows the record as a line of PRINT would; the printer prints it.
        auto& run = in.run();
        run.printNewline = true;
        std::string line = channel->recordBuffer.substr(0, length);
        if (channel->device == DeviceKind::Printer)
            return expr::deliverPrintLine(in, std::move(line), expr::PrintTarget::Printer);
        run.statementCode = static_cast<int>(core::Stmt::Print);
        return expr::deliverPrintLine(in, std::move(line), expr::PrintTarget::Screen);
    }
    if (channel->device != DeviceKind::Disk || channel->mode != FileMode::Random)
        return in.raise(ErrorId::SyntaxError);
    int record = 0;
    TRY_BASIC(recordNumberOf(in, text, afterComma, *channel, record));
    if (::lseek(channel->fd, recordOffset(*channel, record), SEEK_SET) < 0)
        return in.raise(ErrorId::DiskIoError);
    size_t done = 0;
    while (done < length) {
        ssize_t n = ::write(channel->fd, channel->recordBuffer.data() + done, length - done);
        if (n <= 0)
            return in.raise(ErrorId::DiskIoError);
        done += static_cast<size_t>(n);
    }
    return kDone;
}

} // namespace tessaly::io
