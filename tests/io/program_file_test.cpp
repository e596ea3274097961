// Reading and writing program files in both formats.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "io/program_file.h"

namespace tessaly::io {
namespace {

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
    EXPECT_EQ(ProgramFile::Read(GetParam().file, store), ProgramFileFormat::Text);
    EXPECT_EQ(lines(store), GetParam().stored) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(ProgramFile, TextReading,
    ::testing::Values(ReadCase {"crlf", "10 PRINT 1\r\n20 END\r\n", {"10|10 PRINT 1\r\n", "20|20 END\r\n"}},
        ReadCase {"cr only and blank lines", "10 A=1\r\r\n\r20 END", {"10|10 A=1\r\n", "20|20 END\r\n"}},
        ReadCase {"glued number", "10print\r\n", {"10|10PRINT\r\n"}},
        ReadCase {"leading blanks kept", "  20 a=1\r\n", {"20|  20 A=1\r\n"}},
        ReadCase {"line of blanks joins the next", "  \r\n20 A=1\r\n", {"20|  20 A=1\r\n"}},
        ReadCase {"unnumbered line left out", "hello\r\n20 A=1\r\n", {"20|20 A=1\r\n"}},
        ReadCase {"comments and data keep case", "10 rem Hi:print x 'Note\r\n20 data ab,Cd:print \"q\"\r\n",
            {"10|10 REM Hi:PRINT X 'Note\r\n", "20|20 DATA ab,Cd:PRINT \"q\"\r\n"}},
        ReadCase {"lf only carries the comment state", "10 rem a\n20 print b\r\n30 print c\r\n",
            {"10|10 REM a\r\n", "20|20 print b\r\n", "30|30 PRINT C\r\n"}},
        ReadCase {"unsorted and twins stay", "20 B\r\n10 A\r\n10 C\r\n", {"20|20 B\r\n", "10|10 A\r\n", "10|10 C\r\n"}},
        ReadCase {"trail byte never changed", "10 PRINT \x83\x61\x82\x61:a\r\n", {"10|10 PRINT \x83\x61\x82\x61:A\r\n"}},
        ReadCase {"empty file", "", {}}));

TEST(ProgramFile, ReadsOnlyTheFirst65535Bytes)
{
    std::string file = "10 REM " + std::string(70000, 'x') + "\r\n";
    core::ProgramStore store;
    ProgramFile::Read(file, store);
    ASSERT_EQ(store.count(), 1);
    EXPECT_EQ(store.textAt(1).size(), 65535U + 2);
}

TEST(ProgramFile, LineRecordBytes)
{
    core::ProgramStore store;
    store.replaceAll({{100, "100 PRINT 1\r\n"}});
    auto image = ProgramFile::Write(ProgramFileFormat::LineRecords, store);
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(*image, std::string("\xFE\x0C\x00\x64\x00 PRINT 1", 13));
}

TEST(ProgramFile, BothFormatsRoundTrip)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 PRINT \"a\"\r\n"}, {20, "20PRINT 2\r\n"}, {65535, "65535 END\r\n"}});
    for (auto format : {ProgramFileFormat::Text, ProgramFileFormat::LineRecords}) {
        auto image = ProgramFile::Write(format, store);
        ASSERT_TRUE(image.has_value());
        core::ProgramStore loaded;
        EXPECT_EQ(ProgramFile::Read(*image, loaded), format);
        EXPECT_EQ(lines(loaded), lines(store));
    }
}

TEST(ProgramFile, TextWriteGivesEveryLineItsLineEnd)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 A=1"}, {20, "20 END\r\n"}});
    EXPECT_EQ(ProgramFile::Write(ProgramFileFormat::Text, store), "10 A=1\r\n20 END\r\n");
    EXPECT_EQ(store.textAt(1), "10 A=1\r\n");
}

TEST(ProgramFile, RecordsThatCannotBeWrittenFailTheWholeWrite)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 A=1\r\n"}, {0, "PRINT\r\n"}});
    EXPECT_FALSE(ProgramFile::Write(ProgramFileFormat::LineRecords, store).has_value());
    store.replaceAll({{65536, "65536 END\r\n"}});
    EXPECT_FALSE(ProgramFile::Write(ProgramFileFormat::LineRecords, store).has_value());
}

TEST(ProgramFile, DamagedRecordsNeverOverrun)
{
    core::ProgramStore store;
    ProgramFile::Read(std::string("\xFE\x20\x00\x0A\x00 END", 9), store);
    EXPECT_EQ(lines(store), std::vector<std::string> {"10|10 END\r\n"});
    ProgramFile::Read(std::string("\xFE\x02\x00\x0A\x00\x05\x00", 7), store);
    EXPECT_EQ(store.count(), 0);
    ProgramFile::Read(std::string("\xFE\x05", 2), store);
    EXPECT_EQ(store.count(), 0);
}

} // namespace
} // namespace tessaly::io
