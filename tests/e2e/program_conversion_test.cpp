// tessaly --list and tessaly --convert as processes: program files in line records, Shift-JIS and
// UTF-8 text, round trips between the formats, and refusals that leave the output file alone.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/binary_process.h"
#include "support/temp_folder.h"

namespace tessaly::test {
namespace {

using namespace std::string_literals;

// Keywords upper case, a string, a comment and DATA keeping lower case, Japanese in a string.
const std::string kShiftJisText = "10 REM keep case\r\n20 PRINT \"\x82\xa0\x93\xfa\"\r\n30 DATA abc,\xb1\r\n40 END\r\n";
const std::string kSameInUtf8 = "10 REM keep case\n20 PRINT \"あ日\"\n30 DATA abc,ｱ\n40 END\n";
// The same program as line records: 0xFE, then length, number and the text after the number.
const std::string kSameAsRecords = "\xFE"
                                   "\x12\x00\x0A\x00 REM keep case"
                                   "\x11\x00\x14\x00 PRINT \"\x82\xa0\x93\xfa\""
                                   "\x0F\x00\x1E\x00 DATA abc,\xb1"
                                   "\x08\x00\x28\x00 END"s;

class Conversion : public InFolder {
protected:
    std::string path(const std::string& name) const { return (m_folder / name).string(); }
    FinishedRun convert(const std::string& in, const std::string& out, std::vector<std::string> more = {})
    {
        std::vector<std::string> args {"--convert", path(in), path(out)};
        args.insert(args.end(), more.begin(), more.end());
        return runBinary(args, "");
    }
    FinishedRun list(const std::string& name) { return runBinary({"--list", path(name)}, ""); }
};

TEST_F(Conversion, TextToRecordsAndBackIsByteForByte)
{
    writeFile("prog.bas", kShiftJisText);
    auto toRecords = convert("prog.bas", "prog.rec", {"--records"});
    EXPECT_EQ(toRecords.status, 0) << toRecords.errors;
    EXPECT_EQ(toRecords.errors + toRecords.output, "");
    EXPECT_EQ(fileBytes("prog.rec"), kSameAsRecords);
    auto toText = convert("prog.rec", "back.bas");
    EXPECT_EQ(toText.status, 0) << toText.errors;
    EXPECT_EQ(fileBytes("back.bas"), kShiftJisText);
    auto again = convert("back.bas", "again.bas", {"--text"});
    EXPECT_EQ(again.status, 0) << again.errors;
    EXPECT_EQ(fileBytes("again.bas"), kShiftJisText);
}

// A program typed in an editor of this machine: UTF-8, LF line ends, lower-case keywords, blank lines.
TEST_F(Conversion, Utf8JapaneseBecomesShiftJisRecordsAndListsBackAsUtf8)
{
    writeFile("prog.txt", "10 rem keep case\n\n20 print \"あ日\"\n   \n30 data abc,ｱ\n40 end");
    auto toRecords = convert("prog.txt", "prog.bas", {"--records"});
    EXPECT_EQ(toRecords.status, 0) << toRecords.errors;
    EXPECT_EQ(fileBytes("prog.bas"), kSameAsRecords);
    auto listing = list("prog.bas");
    EXPECT_EQ(listing.status, 0) << listing.errors;
    EXPECT_EQ(listing.output, kSameInUtf8);
    EXPECT_EQ(listing.errors, "");
}

// Each format is listed the same: UTF-8 with LF; a UTF-8 byte order mark and CR line ends are
// taken too, and bytes that are not UTF-8 are Shift-JIS.
TEST_F(Conversion, EveryFormatListsAsUtf8WithLineFeeds)
{
    const std::vector<std::pair<std::string, std::string>> files = {
        {"sjis.bas", kShiftJisText},
        {"records.bas", kSameAsRecords},
        {"utf8.txt", kSameInUtf8},
        {"marked.txt", "\xEF\xBB\xBF" "10 REM keep case\r20 PRINT \"あ日\"\r30 DATA abc,ｱ\r\n40 END\r\n"},
        {"dos.bas", "10 REM keep case\r\n\t\r\n20 PRINT \"\x82\xa0\x93\xfa\"\r\n30 DATA abc,\xb1\r\n40 END\r\n\x1A"},
    };
    for (const auto& [name, bytes] : files) {
        writeFile(name, bytes);
        auto listing = list(name);
        EXPECT_EQ(listing.status, 0) << name << ": " << listing.errors;
        EXPECT_EQ(listing.output, kSameInUtf8) << name;
    }
}

struct Refusal {
    const char* name;
    std::string input; // the bytes of IN; "" with no file at all
    std::vector<std::string> options;
    std::string message; // after "tessaly: IN: " (or the whole line after "tessaly: " for a missing file)
};

class Refusals : public Conversion, public ::testing::WithParamInterface<Refusal> {};

// A program that cannot be taken whole: one line on standard error, status 2, OUT as it was, and
// --list of the same input refused the same way.
TEST_P(Refusals, SayWhyAndLeaveTheOutputAlone)
{
    const Refusal& refusal = GetParam();
    if (!refusal.input.empty())
        writeFile("in.bas", refusal.input);
    writeFile("out.bas", "10 PRINT \"before\"\r\n");
    auto run = convert("in.bas", "out.bas", refusal.options);
    std::string expected = refusal.input.empty() ? "tessaly: cannot read " + path("in.bas") + "\n"
                                                 : "tessaly: " + path("in.bas") + ": " + refusal.message + "\n";
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, expected);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(fileBytes("out.bas"), "10 PRINT \"before\"\r\n");
    if (refusal.message.find("; ") == std::string::npos) {
        auto listing = list("in.bas");
        EXPECT_EQ(listing.status, 2);
        EXPECT_EQ(listing.errors, expected);
        EXPECT_EQ(listing.output, "");
    }
}

std::string longProgram(int lines, const std::string& text)
{
    std::string program;
    for (int n = 1; n <= lines; ++n)
        program += std::to_string(n) + text + "\r\n";
    return program;
}

INSTANTIATE_TEST_SUITE_P(Conversion, Refusals,
    ::testing::Values(Refusal {"MissingFile", "", {}, ""},
        Refusal {"NoShiftJisForm", "10 PRINT \"あ\"\n20 PRINT \"café\"\n", {}, "line 2: \"é\" (U+00E9) has no Shift-JIS form"},
        Refusal {"NoShiftJisFormAfterCrLf", "10 A=1\r\n\r\n30 PRINT \"\U0001F600\"\r\n", {"--records"},
            "line 3: \"\U0001F600\" (U+1F600) has no Shift-JIS form"},
        Refusal {"NoLineNumber", "10 A=1\n\nPRINT A\n", {}, "line 3 does not begin with a line number from 1 to 65535"},
        Refusal {"LineNumberZero", "0 A=1\n", {}, "line 1 does not begin with a line number from 1 to 65535"},
        Refusal {"LineNumberTooLarge", "65536 A=1\n", {}, "line 1 does not begin with a line number from 1 to 65535"},
        Refusal {"NumberThatLoadWouldJoin", "10-5 A=1\n", {}, "line 1 does not begin with a line number from 1 to 65535"},
        Refusal {"LinesOutOfOrder", "20 A=1\n10 B=2\n", {}, "line 2: line number 10 is not above the one before it (20)"},
        Refusal {"SameNumberTwice", "10 A=1\r\n10 B=2\r\n", {}, "line 2: line number 10 is not above the one before it (10)"},
        Refusal {"RecordCutShort", "\xFE\x08\x00\x0A\x00 END\x05\x00"s, {}, "record 2 is cut short"},
        Refusal {"RecordLengthPastTheEnd", "\xFE\x09\x00\x0A\x00 END"s, {}, "record 1 is cut short or has a broken length"},
        Refusal {"RecordNumberZero", "\xFE\x08\x00\x00\x00 END"s, {}, "record 1: line number 0 is not from 1 to 65535"},
        Refusal {"RecordWithALineEnd", "\xFE\x09\x00\x0A\x00 A\r\nB"s, {}, "record 1 (line 10) holds a CR or LF byte"},
        Refusal {"TextTooLong", longProgram(6000, " PRINT 12345"), {},
            "longer than 65535 bytes as a program file (Shift-JIS text with CR LF line ends)"},
        Refusal {"RecordsTooLong", "\xFE"s + std::string(65535, 'A'), {}, "longer than 65535 bytes as a program file"}),
    [](const ::testing::TestParamInfo<Refusal>& info) { return std::string(info.param.name); });

TEST_F(Conversion, AnOutputFormatTooLongForLoadIsRefused)
{
    // Records of line numbers 10000 and up take fewer bytes than their text (4 against 5 + 2).
    std::string records = "\xFE";
    for (int n = 10000; n < 10000 + 9000; ++n) {
        records += "\x07\x00"s;
        records += static_cast<char>(n & 0xFF);
        records += static_cast<char>(n >> 8);
        records += " ?1";
    }
    ASSERT_LE(records.size(), 65535u);
    writeFile("in.bas", records);
    writeFile("out.bas", "kept");
    auto run = convert("in.bas", "out.bas");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "tessaly: " + path("in.bas") + ": the program would take 90000 bytes as text, more than the 65535 "
                          "that LOAD reads; " + path("out.bas") + " is not written\n");
    EXPECT_EQ(fileBytes("out.bas"), "kept");
}

TEST_F(Conversion, AnOutputThatCannotBeWrittenIsStatusTwo)
{
    writeFile("in.bas", kShiftJisText);
    auto run = runBinary({"--convert", path("in.bas"), path("no/such/folder/out.bas")}, "");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "tessaly: cannot write " + path("no/such/folder/out.bas") + "\n");
}

} // namespace
} // namespace tessaly::test
