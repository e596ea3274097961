// Reading and writing program files in both formats.
// Opening files and the LOAD/SAVE statements are tested with the statements.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "io/program_file.h"

namespace tessaly::io {
namespace {

using namespace std::string_literals;

std::vector<std::string> lines(const core::ProgramStore& store)
{
    std::vector<std::string> result;
    for (int i = 1; i <= store.count(); ++i)
        result.push_back(std::to_string(store.numberAt(i)) + "|" + store.textAt(i));
    return result;
}

struct ReadCase {
    const char* name;
    std::string file;
    std::vector<std::string> stored;
};

class TextReading : public ::testing::TestWithParam<ReadCase> {};

TEST_P(TextReading, StoresTheLines)
{
    core::ProgramStore store;
    store.replaceAll({{5, "5 OLD\r\n"}});
    EXPECT_EQ(ProgramFile::Read(GetParam().file, store), ProgramFileFormat::Text);
    EXPECT_EQ(lines(store), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(ProgramFile, TextReading,
    ::testing::Values(ReadCase {"CrLf", "10 print 1\r\n20 end\r\n", {"10|10 PRINT 1\r\n", "20|20 END\r\n"}},
        ReadCase {"CrOnlyAndBlankLines", "\r\n10 A=1\r\r\n\n\r20 END", {"10|10 A=1\r\n", "20|20 END\r\n"}},
        ReadCase {"LfOnlyCarriesRem", "10 rem a\n20 print b\r\n30 print c", {"10|10 REM a\r\n", "20|20 print b\r\n", "30|30 PRINT C\r\n"}},
        ReadCase {"LfOnlyCarriesComment", "10 'a\n20 print b", {"10|10 'a\r\n", "20|20 print b\r\n"}},
        ReadCase {"LfOnlyCarriesData", "10 data a\n20 print b", {"10|10 DATA a\r\n", "20|20 print b\r\n"}},
        ReadCase {"LfOnlyCarriesString", "10 print \"a\n20 print\"x", {"10|10 PRINT \"a\r\n", "20|20 print\"X\r\n"}},
        ReadCase {"GluedNumber", "10print\r\n", {"10|10PRINT\r\n"}},
        ReadCase {"LeadingBlanksKept", "  20 a=1\r\n", {"20|  20 A=1\r\n"}},
        ReadCase {"LineOfBlanksJoinsTheNext", "  \r\n20 A=1\r\n", {"20|  20 A=1\r\n"}},
        ReadCase {"UnnumberedLineDropped", "hello world\r\n20 a=1\r\n", {"20|20 A=1\r\n"}},
        ReadCase {"LineZeroDropped", "0 print\r\n  x\r\n20 a\r\n", {"20|20 A\r\n"}},
        ReadCase {"BlankAfterDigitsEndsNumber", "1 0 a\r\n", {"1|1 0 A\r\n"}},
        ReadCase {"KanjiBeforeNumberPassedOver", "\x82\xa0 10 x\r\n", {"10|\x82\xa0 10 X\r\n"}},
        ReadCase {"HugeNumberHeld", "99999999999 a\r\n", {"999999999|99999999999 A\r\n"}},
        ReadCase {"CommentsAndDataKeepCase", "10 rem Hi:print x 'Note\r\n20 data ab,Cd:print \"q\"\r\n",
            {"10|10 REM Hi:PRINT X 'Note\r\n", "20|20 DATA ab,Cd:PRINT \"q\"\r\n"}},
        ReadCase {"StringsKeepCase", "10 print \"it's\";x\r\n", {"10|10 PRINT \"it's\";X\r\n"}},
        ReadCase {"TrailByteNeverChanged", "10 print \x83\x61:a\r\n", {"10|10 PRINT \x83\x61:A\r\n"}},
        ReadCase {"CrAfterLoneLeadByteEndsComment", "10 rem \x82\r\n20 print\r\n", {"10|10 REM \x82\r\n", "20|20 PRINT\r\n"}},
        ReadCase {"UnsortedAndTwinsStay", "20 B\r\n10 A\r\n10 C\r\n", {"20|20 B\r\n", "10|10 A\r\n", "10|10 C\r\n"}},
        ReadCase {"EmptyFile", "", {}}),
    [](const auto& info) { return std::string(info.param.name); });

class RecordReading : public ::testing::TestWithParam<ReadCase> {};

TEST_P(RecordReading, StoresTheLines)
{
    core::ProgramStore store;
    store.replaceAll({{5, "5 OLD\r\n"}});
    EXPECT_EQ(ProgramFile::Read(GetParam().file, store), ProgramFileFormat::LineRecords);
    EXPECT_EQ(lines(store), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(ProgramFile, RecordReading,
    ::testing::Values(ReadCase {"Records", "\xFE\x0C\x00\x64\x00 PRINT 1\x08\x00\x0A\x00 end"s,
                          {"100|100 PRINT 1\r\n", "10|10 end\r\n"}},
        ReadCase {"MarkAlone", "\xFE", {}},
        ReadCase {"EmptyText", "\xFE\x04\x00\x07\x00"s, {"7|7\r\n"}},
        ReadCase {"RecordPastTheEndKeepsItsText", "\xFE\x20\x00\x0A\x00 END"s, {"10|10 END\r\n"}},
        ReadCase {"ShortLengthEndsTheProgram", "\xFE\x05\x00\x01\x00 \x02\x00\x0A\x00\x05\x00\x02\x00 X"s, {"1|1 \r\n"}},
        ReadCase {"StrayBytesAtTheEnd", "\xFE\x05\x00\x01\x00 \x09\x00"s, {"1|1 \r\n"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ProgramFile, ReadsOnlyTheFirst65535Bytes)
{
    std::string first = "10 REM " + std::string(kMaxProgramFileBytes - 7, 'x');
    core::ProgramStore store;
    ProgramFile::Read(first + "\r\n20 END\r\n", store);
    EXPECT_EQ(lines(store), std::vector<std::string> {"10|" + first + "\r\n"});
    ProgramFile::Read(first + "yz", store);
    EXPECT_EQ(lines(store), std::vector<std::string> {"10|" + first + "\r\n"});
}

TEST(ProgramFile, LineRecordBytes)
{
    core::ProgramStore store;
    store.replaceAll({{100, "100 PRINT 1\r\n"}, {20, "  20PRINT"}, {3, "3"}});
    EXPECT_EQ(ProgramFile::Write(ProgramFileFormat::LineRecords, store),
        "\xFE\x0C\x00\x64\x00\x20\x50\x52\x49\x4E\x54\x20\x31"
        "\x09\x00\x14\x00PRINT\x04\x00\x03\x00"s);
}

TEST(ProgramFile, BothFormatsRoundTrip)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 PRINT \"a\" 'x\r\n"}, {20, "20PRINT 2\r\n"}, {30, "30 DATA \x82\xa0,b\r\n"}, {65535, "65535 END\r\n"}});
    for (auto format : {ProgramFileFormat::Text, ProgramFileFormat::LineRecords}) {
        auto image = ProgramFile::Write(format, store);
        ASSERT_TRUE(image.has_value());
        core::ProgramStore loaded;
        EXPECT_EQ(ProgramFile::Read(*image, loaded), format);
        EXPECT_EQ(lines(loaded), lines(store));
    }
}

TEST(ProgramFile, TextWriteGivesStoredLinesTheirLineEnd)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 A=1"}, {20, "20 END\r\n"}});
    EXPECT_EQ(ProgramFile::Write(ProgramFileFormat::Text, store), "10 A=1\r\n20 END\r\n");
    EXPECT_EQ(store.textAt(1), "10 A=1\r\n");
}

TEST(ProgramFile, RecordsThatCannotBeWrittenFailTheWholeWrite)
{
    const std::vector<std::string> unwritable = {
        "PRINT\r\n", "", "   \r\n", "0 A\r\n", "-5 A\r\n", "65536 END\r\n", "99999999999 A", "10 " + std::string(65531, 'x')};
    for (const auto& bad : unwritable) {
        core::ProgramStore store;
        store.replaceAll({{10, "10 A=1\r\n"}, {1, bad}});
        EXPECT_FALSE(ProgramFile::Write(ProgramFileFormat::LineRecords, store).has_value()) << bad.substr(0, 20);
    }
    core::ProgramStore longest;
    longest.replaceAll({{10, "10 " + std::string(65530, 'x')}});
    auto image = ProgramFile::Write(ProgramFileFormat::LineRecords, longest);
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->substr(0, 5), "\xFE\xFF\xFF\x0A\x00"s);
}

} // namespace
} // namespace tessaly::io
