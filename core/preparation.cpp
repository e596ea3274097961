// Program preparation: splitting lines into statement entries, compiling IF statements into branch
// entries, and collecting labels. Lookups in the result are core/prepared_program.cpp.
#include "core/preparation.h"

#include <algorithm>
#include <vector>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/text_scan.h"

namespace tessaly::core {

namespace {

// The end of the line number at the start of an entry's text (leading blanks and digits).
size_t numberEnd(std::string_view text)
{
    size_t pos = 0;
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9')
        ++pos;
    return pos;
}

// The statement of an entry: its text after the number and blanks.
std::string_view statementOf(std::string_view text)
{
    size_t pos = numberEnd(text);
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    return text.substr(pos);
}

void trimTrailing(std::string& text)
{
    auto last = text.find_last_not_of(" \r\n");
    text.erase(last == std::string::npos ? 0 : last + 1);
}

// Position of the first of the given stops outside quotes, from pos; text.size() when none.
// Sets openQuote when the text ends inside quotes.
size_t findStopOutsideQuotes(std::string_view text, size_t pos, std::string_view stops, bool withRem, bool& openQuote)
{
    bool endsQuoted = false;
    size_t found = findOutsideQuotesIf(text, pos, [&](size_t at) {
        char c = text[at];
        return stops.find(c) != std::string_view::npos || (withRem && c == 'R' && text.compare(at, 3, "REM") == 0);
    }, &endsQuoted);
    if (found != std::string_view::npos)
        return found;
    openQuote = endsQuoted;
    return text.size();
}

// Allocation of working entries behind the program.
class EntryAllocator {
public:
    EntryAllocator(Interpreter& in, int firstFree)
        : m_in(in)
        , m_next(firstFree)
    {
    }

    // A new entry numbered one above the entry before it; 0 when the entries are used up.
    int allocate(int source, std::string_view statement)
    {
        if (m_next > kEntryLimit)
            return 0;
        int entry = m_next++;
        auto& store = m_in.program();
        int number = store.numberAt(entry - 1) + 1;
        std::string text = std::to_string(number);
        text += ' ';
        text += statement;
        store.setEntry(entry, number, std::move(text));
        m_in.prepared().setOverride(entry, 0);
        m_in.prepared().setSource(entry, source);
        return entry;
    }
    [[nodiscard]] int next() const { return m_next; }
    [[nodiscard]] int last() const { return m_next - 1; }

private:
    Interpreter& m_in;
    int m_next;
};

// The entries of one program line that hold its statements.
struct LineEntries {
    int first;
    int last;
    int followNumber; // the number the line continues with (next line, or END)
};

// Splits the line held in copy into pieces, cut at colons and a comment outside quotes.
std::vector<std::string_view> splitPieces(std::string_view body)
{
    std::vector<std::string_view> pieces;
    size_t pos = 0;
    while (pos <= body.size()) {
        bool open = false;
        size_t stop = findStopOutsideQuotes(body, pos, ":'\r\n", false, open);
        auto piece = body.substr(pos, stop - pos);
        auto first = piece.find_first_not_of(' ');
        if (first != std::string_view::npos)
            pieces.push_back(piece.substr(first));
        if (stop >= body.size() || body[stop] != ':')
            break;
        pos = stop + 1;
    }
    return pieces;
}

// The label at the start of the statements becomes a statement of its own.
void separateLabel(std::string& copy)
{
    auto blank = copy.find(' ');
    if (blank == std::string::npos)
        return;
    size_t pos = copy.find_first_not_of(' ', blank);
    if (pos == std::string::npos || copy[pos] != '*' || pos + 1 >= copy.size() || !isUpperLetter(copy[pos + 1]))
        return;
    size_t labelEnd = copy.find(' ', pos);
    if (labelEnd == std::string::npos)
        return;
    size_t after = copy.find_first_not_of(' ', labelEnd);
    if (after == std::string::npos)
        return;
    if (copy[after] == ':' || copy[after] == '\'' || copy.compare(after, 3, "REM") == 0)
        return;
    copy[labelEnd] = ':';
}

bool hasColonOutsideQuotes(std::string_view text)
{
    bool open = false;
    size_t pos = findStopOutsideQuotes(text, 0, ":", false, open);
    return pos < text.size();
}

// Splits one line (entry line) whose normalised text is copy. followNumber: where the line goes on.
int splitLine(Interpreter& in, EntryAllocator& entries, int line, const std::string& copy, int followNumber,
    LineEntries& result)
{
    result = {line, line, followNumber};
    in.prepared().setLastPiece(line, 0);
    if (!hasColonOutsideQuotes(copy))
        return 0;
    auto body = std::string_view(copy).substr(numberEnd(copy));
    auto pieces = splitPieces(body);
    int first = 0;
    for (auto piece : pieces) {
        int entry = entries.allocate(line, piece);
        if (entry == 0)
            return in.raiseAt(line, ErrorId::OutOfMemory);
        if (first == 0)
            first = entry;
    }
    int jump = entries.allocate(line, "GOTO " + std::to_string(followNumber));
    if (jump == 0)
        return in.raiseAt(line, ErrorId::OutOfMemory);
    in.prepared().setOverride(line, first != 0 ? first : jump);
    result.first = first != 0 ? first : jump;
    result.last = jump - 1;
    in.prepared().setLastPiece(line, first != 0 ? jump - 1 : 0);
    return 0;
}

// The text of a THEN or ELSE branch: from after the keyword (one blank skipped) to its end.
bool branchText(std::string_view statement, size_t keywordEnd, bool thenBranch, std::string& branch)
{
    size_t pos = keywordEnd;
    if (pos < statement.size() && statement[pos] == ' ')
        ++pos;
    bool endsQuoted = false;
    size_t stop = findOutsideQuotesIf(statement, pos, [&](size_t at) {
        char c = statement[at];
        return c == ':' || c == '\'' || c == '\r' || c == '\n' ||
               (thenBranch && (statement.compare(at, 4, "ELSE") == 0 || statement.compare(at, 3, "REM") == 0));
    }, &endsQuoted);
    if (endsQuoted)
        return false;
    stop = std::min(stop, statement.size());
    branch.assign(statement.substr(pos, stop - pos));
    // A branch that is a line number or a label jumps there: THEN 100 ELSE *DONE means
    // THEN GOTO 100 ELSE GOTO *DONE.
    if (branch.find("GOTO") == std::string::npos && branch.find("GO TO") == std::string::npos &&
        branch.find("GOSUB") == std::string::npos) {
        auto first = branch.find_first_not_of(' ');
        bool target = false;
        if (first != std::string::npos) {
            target = branch[first] == '*' || leadingNumber(branch) >= 1;
        }
        if (target)
            branch.insert(0, "GOTO ");
    }
    return true;
}

// Turns the IF statement of entry into IF k with four branch entries; follows an ELSE IF chain.
int compileIf(Interpreter& in, EntryAllocator& entries, int entry, int line, int continuation)
{
    auto& prepared = in.prepared();
    for (;;) {
        std::string statement(statementOf(in.program().textAt(entry)));
        if (!statement.starts_with("IF "))
            return 0;
        if (prepared.ifCount() + 1 >= kMaxIfStatements)
            return in.raiseAt(line, ErrorId::OutOfMemory);
        size_t thenAt = findOutsideQuotes(statement, "THEN", 3);
        if (thenAt == std::string::npos)
            return in.raiseAt(line, ErrorId::SyntaxError);
        std::string thenBranch;
        if (!branchText(statement, thenAt + 4, true, thenBranch))
            return in.raiseAt(line, ErrorId::SyntaxError);
        std::string elseBranch;
        bool hasElse = false;
        size_t elseAt = findOutsideQuotes(statement, "ELSE", thenAt + 4);
        if (elseAt != std::string::npos) {
            hasElse = true;
            if (!branchText(statement, elseAt + 4, false, elseBranch))
                return in.raiseAt(line, ErrorId::SyntaxError);
        }
        std::string jump = "GOTO " + std::to_string(continuation);
        int base = entries.allocate(line, thenBranch);
        if (base == 0 || entries.allocate(line, jump) == 0)
            return in.raiseAt(line, ErrorId::OutOfMemory);
        int elseEntry = entries.allocate(line, elseBranch);
        if (elseEntry == 0 || entries.allocate(line, jump) == 0)
            return in.raiseAt(line, ErrorId::OutOfMemory);
        if (!hasElse)
            in.program().setEntry(elseEntry, in.program().numberAt(elseEntry), "");
        prepared.addIf(entry, base);
        // An ELSE branch that is itself an IF statement continues the chain.
        entry = elseEntry;
    }
}

// Normalises, separates the label and splits one line; the shared part of program and direct preparation.
int prepareLine(Interpreter& in, EntryAllocator& entries, int line, std::string copy, int followNumber,
    LineEntries& result)
{
    if (copy.find("IF") != std::string::npos && !checkIfStructure(copy))
        return in.raiseAt(line, ErrorId::SyntaxError);
    if (!normaliseStatements(copy))
        return in.raiseAt(line, ErrorId::SyntaxError);
    separateLabel(copy);
    return splitLine(in, entries, line, copy, followNumber, result);
}

int compileLineIfs(Interpreter& in, EntryAllocator& entries, const LineEntries& line, int source)
{
    auto& store = in.program();
    for (int entry = line.first; entry <= line.last; ++entry) {
        if (!statementOf(store.textAt(entry)).starts_with("IF "))
            continue;
        int continuation = entry < line.last ? store.numberAt(entry + 1) : line.followNumber;
        // A split line's pieces are followed by their jump entry, which carries on to the next line.
        if (line.first != source && entry == line.last)
            continuation = store.numberAt(entry + 1);
        TRY_BASIC(compileIf(in, entries, entry, source, continuation));
        break; // one IF statement per line
    }
    return 0;
}

int collectLabels(Interpreter& in, int last)
{
    auto& prepared = in.prepared();
    auto& store = in.program();
    prepared.labels.clear();
    for (int entry = 1; entry <= last; ++entry) {
        if (prepared.overrideAt(entry) != 0)
            continue;
        auto statement = statementOf(store.textAt(entry));
        if (statement.size() < 2 || statement[0] != '*' || !isUpperLetter(statement[1]))
            continue;
        auto end = statement.find_first_of(" ':\r\n");
        std::string name(statement.substr(0, end));
        if (prepared.findLabel(name) != 0)
            return in.raiseAt(entry, ErrorId::DuplicateLabel);
        prepared.labels.push_back({std::move(name), entry});
    }
    return 0;
}

} // namespace

bool checkIfStructure(std::string_view lineText)
{
    std::string text = " ";
    text += lineText;
    int state = 0;
    bool misplaced = false;
    // The walk stops at a comment, or at the first word out of place.
    size_t stop = findOutsideQuotesIf(text, 0, [&](size_t pos) {
        char c = text[pos];
        if (c == '\'' || text.compare(pos, 3, "REM") == 0)
            return true;
        auto endsWith = [&](std::string_view word) {
            return pos + 1 >= word.size() && text.compare(pos + 1 - word.size(), word.size(), word) == 0;
        };
        if (endsWith("IF")) {
            misplaced = state != 0 && state != 3;
            state = 1;
        } else if (endsWith("THEN")) {
            misplaced = state != 1;
            state = 2;
        } else if (endsWith("ELSE")) {
            misplaced = state != 2;
            state = 3;
        } else if (c == ':' && state != 0) {
            misplaced = state == 1;
            state = 4;
        }
        return misplaced;
    });
    if (stop != std::string::npos && misplaced)
        return false;
    return state != 1;
}

bool normaliseStatements(std::string& text)
{
    // Each walk starts outside quotes, at a comment or NEXT found outside them by the one before.
    for (size_t pos = 0;; ++pos) {
        bool endsQuoted = false;
        pos = findOutsideQuotesIf(text, pos, [&](size_t at) {
            return text[at] == '\'' || text.compare(at, 3, "REM") == 0 || text.compare(at, 4, "NEXT") == 0;
        }, &endsQuoted);
        if (pos == std::string::npos)
            return !endsQuoted;
        if (text[pos] == '\'' || text.compare(pos, 3, "REM") == 0) {
            text.erase(pos);
            return true;
        }
        // NEXT I,J becomes NEXT I :NEXT J; the new NEXT is found by the next walk.
        size_t comma = findAtTopLevel(text, pos + 4, [](char c, int depth) {
            return c == ':' || c == '\'' || (c == ',' && depth == 0);
        });
        if (comma != std::string::npos && text[comma] == ',')
            text.replace(comma, 1, " :NEXT ");
    }
}

int prepareProgram(Interpreter& in)
{
    auto& store = in.program();
    auto& prepared = in.prepared();
    auto& run = in.run();
    run.directMode = false;
    prepared.directBase = -1;
    prepared.prepared = false;
    prepared.labels.clear();
    prepared.truncateIfs(0);
    int count = store.count();
    for (int line = 1; line <= count; ++line)
        prepared.setSource(line, line);

    int endEntry = count + 1;
    if (endEntry > kEntryLimit)
        return in.raiseAt(count, ErrorId::OutOfMemory);
    int endNumber = store.numberAt(count) + 1;
    if (count == 0)
        endNumber = 1;
    store.setEntry(endEntry, endNumber, std::to_string(endNumber) + " END ");
    prepared.setOverride(endEntry, 0);
    prepared.setSource(endEntry, endEntry);
    run.endIndex = endEntry;

    EntryAllocator entries(in, endEntry + 1);
    std::vector<LineEntries> lines(static_cast<size_t>(count) + 1);
    for (int line = 1; line <= count; ++line) {
        auto& text = store.mutableText(line);
        trimTrailing(text);
        prepared.setOverride(line, 0);
        int follow = line < count ? store.numberAt(line + 1) : endNumber;
        TRY_BASIC(prepareLine(in, entries, line, text, follow, lines[static_cast<size_t>(line)]));
    }
    for (int line = 1; line <= count; ++line)
        TRY_BASIC(compileLineIfs(in, entries, lines[static_cast<size_t>(line)], line));

    prepared.programIfCount = prepared.ifCount();
    prepared.preparedHighWater = entries.last();
    prepared.lastAllocated = entries.last();
    TRY_BASIC(collectLabels(in, entries.last()));
    prepared.prepared = true;
    return 0;
}

namespace {

// The prepared form of the program is given up: its entries behind the program lines may be
// overwritten, so the lines lose their continuations and labels, and CONT is no longer possible.
void forgetPreparedForm(Interpreter& in)
{
    auto& prepared = in.prepared();
    for (int line = 1; line <= in.program().count(); ++line)
        prepared.setOverride(line, 0);
    prepared.labels.clear();
    prepared.truncateIfs(0);
    prepared.programIfCount = 0;
    prepared.preparedHighWater = 0;
    prepared.prepared = false;
    in.run().canContinue = false;
    in.run().continueIndex = -1;
}

} // namespace

int prepareDirect(Interpreter& in)
{
    auto& store = in.program();
    auto& prepared = in.prepared();
    auto& run = in.run();
    run.directMode = true;
    // A prepared program that leaves no room behind it for a direct command is given up rather
    // than refusing every command (NEW, SAVE and LIST included). The program itself always
    // leaves room: it holds at most kMaxProgramLines lines.
    static_assert(kMaxProgramLines < kEntryLimit - 6);
    if (prepared.preparedHighWater >= kEntryLimit - 6 && store.count() < kEntryLimit - 6)
        forgetPreparedForm(in);
    prepared.truncateIfs(prepared.programIfCount);
    int base = std::max(store.count(), prepared.preparedHighWater);
    prepared.directBase = base;
    if (base >= kEntryLimit - 6)
        return in.raiseWithoutLine(ErrorId::OutOfMemory);

    std::string command(in.buffer().view());
    rewriteQuestionMarks(command, QuestionMarks::OutsideQuotes);
    EntryAllocator entries(in, base + 1);
    int commandEntry = entries.allocate(base + 1, command);
    int endEntry = entries.allocate(base + 2, "END");
    prepared.setSource(commandEntry, commandEntry);
    prepared.setSource(endEntry, endEntry);
    prepared.lastAllocated = entries.last();
    run.startEntry = commandEntry;

    LineEntries line {};
    int endNumber = store.numberAt(endEntry);
    TRY_BASIC(prepareLine(in, entries, commandEntry, store.textAt(commandEntry), endNumber, line));
    if (line.first != commandEntry) {
        run.startEntry = line.first;
        prepared.setOverride(commandEntry, 0);
    }
    prepared.lastAllocated = entries.last();
    TRY_BASIC(compileLineIfs(in, entries, line, commandEntry));
    prepared.lastAllocated = entries.last();
    return 0;
}

} // namespace tessaly::core
