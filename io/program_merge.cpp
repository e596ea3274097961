// Reading a file for MERGE or CHAIN and storing its numbered lines.
#include "io/program_merge.h"

#include <algorithm>
#include <fstream>

#include "core/interpreter.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "io/basic_path.h"

namespace tessaly::io {

int ReadFileForMerge(core::Interpreter& in, const std::string& path, std::string& contents)
{
    std::ifstream file(HostPath(path), std::ios::binary);
    if (!file)
        return in.raise(core::ErrorId::FileNotFound);
    // No more than a full program store can hold is read: further lines could not be stored.
    constexpr size_t kMostBytes = static_cast<size_t>(core::kEntryCapacity) * core::kMaxStoredLineLength;
    file.seekg(0, std::ios::end);
    auto size = static_cast<size_t>(std::max<std::streamoff>(file.tellg(), 0));
    file.seekg(0, std::ios::beg);
    contents.assign(std::min(size, kMostBytes), '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (file.bad())
        return in.raise(core::ErrorId::DiskIoError);
    contents.resize(static_cast<size_t>(file.gcount()));
    return 0;
}

int MergeProgramText(core::Interpreter& in, std::string_view text, bool upperCase)
{
    auto& store = in.program();
    size_t pos = 0;
    std::string line;
    int result = 0;
    while (pos < text.size() && result == 0) {
        auto raw = core::takeLine(text, pos, "\r\n");
        // Blanks before the number are dropped; a line without a number is left out, as the
        // program reader does.
        auto first = raw.find_first_not_of(' ');
        if (first == std::string_view::npos || raw[first] < '0' || raw[first] > '9')
            continue;
        line.assign(raw.substr(first));
        if (upperCase)
            core::upperCaseOutsideStrings(line, core::CaseRules::AllOutsideStrings);
        auto digits = std::string_view(line).substr(0, line.find_first_not_of("0123456789"));
        // Refused lines are reported as line entry reports them: a line too long with its own
        // number, a number out of range or a full program with 0.
        switch (store.enterLine(line, digits)) {
        case core::StoreOutcome::Stored:
            break;
        case core::StoreOutcome::LineTooLong:
            result = in.raiseForLine(core::ErrorId::LineBufferOverflow, core::leadingNumber(digits));
            break;
        case core::StoreOutcome::NumberOutOfRange:
        case core::StoreOutcome::StoreFull:
            result = in.raiseForLine(core::ErrorId::OutOfMemory, 0);
            break;
        }
    }
    core::programEdited(in);
    return result;
}

} // namespace tessaly::io
