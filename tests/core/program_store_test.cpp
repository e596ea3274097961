// Storing, replacing, deleting and ordering program lines.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/program_store.h"

namespace tessaly::core {
namespace {

std::vector<std::string> texts(const ProgramStore& store)
{
    std::vector<std::string> result;
    for (int i = 1; i <= store.count(); ++i)
        result.push_back(store.textAt(i));
    return result;
}

StoreOutcome enter(ProgramStore& store, const std::string& text)
{
    auto digits = text.substr(0, text.find_first_not_of("0123456789"));
    return store.enterLine(text, digits);
}

TEST(ProgramStore, KeepsLinesInNumberOrder)
{
    ProgramStore store;
    enter(store, "20 B");
    enter(store, "10 A");
    enter(store, "30 C");
    EXPECT_EQ(texts(store), (std::vector<std::string> {"10 A\r\n", "20 B\r\n", "30 C\r\n"}));
    EXPECT_EQ(store.numberAt(1), 10);
    EXPECT_EQ(store.numberAt(3), 30);
}

TEST(ProgramStore, ReplacesAndDeletesLines)
{
    ProgramStore store;
    enter(store, "10 PRINT \"a\"");
    enter(store, "20 END");
    enter(store, "10 PRINT \"b\"");
    EXPECT_EQ(texts(store), (std::vector<std::string> {"10 PRINT \"b\"\r\n", "20 END\r\n"}));
    enter(store, "10");
    EXPECT_EQ(texts(store), (std::vector<std::string> {"20 END\r\n"}));
    enter(store, "15");
    EXPECT_EQ(texts(store), (std::vector<std::string> {"20 END\r\n"}));
}

TEST(ProgramStore, RewritesQuestionMarksOutsideQuotes)
{
    ProgramStore store;
    enter(store, "10 ?\"x\";Y:?\"?\"");
    EXPECT_EQ(store.textAt(1), "10 PRINT \"x\";Y:PRINT \"?\"\r\n");
}

TEST(ProgramStore, KeepsLeadingZerosOfTheNumber)
{
    ProgramStore store;
    enter(store, "0010 END");
    EXPECT_EQ(store.textAt(1), "0010 END\r\n");
    EXPECT_EQ(store.numberAt(1), 10);
}

TEST(ProgramStore, RefusesNumbersOutOfRangeAndKeepsTheEntryLast)
{
    ProgramStore store;
    enter(store, "10 A");
    EXPECT_EQ(enter(store, "70000 B"), StoreOutcome::NumberOutOfRange);
    EXPECT_EQ(store.count(), 2);
    EXPECT_EQ(store.numberAt(2), 70000);
    // The next entry's repair pass keeps the order; the out-of-range entry is the older last.
    enter(store, "5 C");
    EXPECT_EQ(store.numberAt(1), 5);
    EXPECT_EQ(store.numberAt(2), 10);
    EXPECT_EQ(enter(store, "65536 D"), StoreOutcome::Stored);
}

TEST(ProgramStore, CutsLinesLongerThan257Characters)
{
    ProgramStore store;
    std::string line = "10 REM " + std::string(300 - 7, 'X');
    EXPECT_EQ(enter(store, line), StoreOutcome::LineTooLong);
    EXPECT_EQ(store.textAt(1), line.substr(0, 255));
    std::string fits = "20 REM " + std::string(255 - 7, 'Y');
    EXPECT_EQ(enter(store, fits), StoreOutcome::Stored);
    EXPECT_EQ(store.textAt(2), fits + "\r\n");
}

TEST(ProgramStore, RepairPassSortsALoadedProgramAndKeepsTheLastTwin)
{
    ProgramStore store;
    store.replaceAll({{30, "30 C\r\n"}, {10, "10 A\r\n"}, {20, "20 B\r\n"}, {10, "10 A2\r\n"}});
    enter(store, "40 D");
    EXPECT_EQ(texts(store), (std::vector<std::string> {"10 A2\r\n", "20 B\r\n", "30 C\r\n", "40 D\r\n"}));
}

TEST(ProgramStore, AFullProgramRefusesNewLinesButStillReplacesAndDeletes)
{
    ProgramStore store;
    std::vector<ProgramStore::Line> lines;
    for (int n = 1; n <= kMaxProgramLines + 5; ++n)
        lines.push_back({n, std::to_string(n) + " A\r\n"});
    store.replaceAll(lines);
    ASSERT_EQ(store.count(), kMaxProgramLines);
    // Lines that would stay behind the last one are refused and leave nothing behind.
    EXPECT_EQ(enter(store, "65530 NEW"), StoreOutcome::StoreFull);
    EXPECT_EQ(enter(store, "70000 B"), StoreOutcome::StoreFull);
    EXPECT_EQ(enter(store, "65531 REM " + std::string(300, 'X')), StoreOutcome::StoreFull);
    EXPECT_EQ(store.count(), kMaxProgramLines);
    EXPECT_EQ(store.numberAt(kMaxProgramLines), kMaxProgramLines);
    EXPECT_EQ(enter(store, "65533"), StoreOutcome::Stored);
    EXPECT_EQ(store.count(), kMaxProgramLines);
    // An existing line can be replaced or deleted; then there is room for one more.
    EXPECT_EQ(enter(store, "5 B"), StoreOutcome::Stored);
    EXPECT_EQ(store.textAt(5), "5 B\r\n");
    EXPECT_EQ(enter(store, "7"), StoreOutcome::Stored);
    EXPECT_EQ(store.count(), kMaxProgramLines - 1);
    EXPECT_EQ(store.numberAt(7), 8);
    EXPECT_EQ(enter(store, "65530 C"), StoreOutcome::Stored);
    EXPECT_EQ(store.numberAt(kMaxProgramLines), 65530);
}

TEST(ProgramStore, LinesLeftBehindByARefusalAreSortedByTheNextEntry)
{
    ProgramStore store;
    enter(store, "20 B");
    EXPECT_EQ(enter(store, "10 REM " + std::string(300, 'X')), StoreOutcome::LineTooLong);
    EXPECT_EQ(store.numberAt(2), 10);
    enter(store, "30 C");
    EXPECT_EQ(store.numberAt(1), 10);
    EXPECT_EQ(store.numberAt(2), 20);
    EXPECT_EQ(store.numberAt(3), 30);
}

TEST(ProgramStore, LeadingNumberReadsDigitsAfterBlanks)
{
    EXPECT_EQ(leadingNumber("  120 PRINT"), 120);
    EXPECT_EQ(leadingNumber("PRINT"), 0);
    EXPECT_EQ(leadingNumber("99999999999999999999"), 999999999);
}

struct QuestionCase {
    const char* text;
    QuestionMarks which;
    const char* rewritten;
    int count;
};

class QuestionMarkRewrite : public testing::TestWithParam<QuestionCase> {};

TEST_P(QuestionMarkRewrite, WritesPrintForTheChosenMarks)
{
    std::string text = GetParam().text;
    EXPECT_EQ(rewriteQuestionMarks(text, GetParam().which), GetParam().count) << GetParam().text;
    EXPECT_EQ(text, GetParam().rewritten);
}

constexpr auto kAll = QuestionMarks::OutsideQuotes;
constexpr auto kFirst = QuestionMarks::FirstOnly;

INSTANTIATE_TEST_SUITE_P(Texts, QuestionMarkRewrite,
    testing::Values(QuestionCase {"10 ?\"?\":?A", kAll, "10 PRINT \"?\":PRINT A", 2},
        QuestionCase {"??", kAll, "PRINT PRINT ", 2}, QuestionCase {"\"?", kAll, "\"?", 0},
        // A comment is no literal: its "?" is rewritten too.
        QuestionCase {"? 1 'why?", kAll, "PRINT  1 'whyPRINT ", 2},
        QuestionCase {"10 \"?\"?", kFirst, "10 \"PRINT \"?", 1}, QuestionCase {"? ?", kFirst, "PRINT  ?", 1},
        QuestionCase {"PRINT", kFirst, "PRINT", 0},
        // A Shift-JIS character before the mark; 0x3F is never a second byte.
        QuestionCase {"\x83\x61?", kAll, "\x83\x61PRINT ", 1}));

} // namespace
} // namespace tessaly::core
