// Thousands of random lines, typed and run: nothing may crash, overrun or leave the program unsorted.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/keyword_table.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

std::string randomLine(std::mt19937& random)
{
    static constexpr std::string_view kPieces[] = {" ", ":", "\"", "'", "=", ",", "#", "*", "?", "(", ")", "-",
        "0", "10", "65536", "99999", "A", "X$", "IF ", " THEN ", " ELSE ", "GOTO ", "REM", "DATA ", "NEXT ", "*L",
        "RUN", "CONT", "\x82\xa0", "\x81", "\t", "\r"};
    std::uniform_int_distribution<int> pieceCount(0, 24);
    std::uniform_int_distribution<size_t> pick(0, std::size(kPieces) - 1);
    std::uniform_int_distribution<int> keyword(1, KeywordTable::statementCount());
    std::uniform_int_distribution<int> coin(0, 3);
    std::string line;
    if (coin(random) != 0)
        line = std::to_string(std::uniform_int_distribution<int>(0, 70000)(random)) + " ";
    int count = pieceCount(random);
    for (int i = 0; i < count; ++i) {
        if (coin(random) == 0)
            line += keywordTable().statement(keyword(random));
        else
            line += kPieces[pick(random)];
    }
    if (coin(random) == 0)
        line += std::string(std::uniform_int_distribution<int>(0, 1100)(random), 'Z');
    return line;
}

TEST(RandomLines, NeverCrashAndKeepTheProgramSorted)
{
    std::mt19937 random(20261123);
    test::Session session(2000);
    auto& in = session.interpreter();
    for (int i = 0; i < 4000; ++i) {
        auto line = randomLine(random);
        session.type(line);
        if (i % 40 == 39)
            session.type("RUN");
        if (i % 500 == 499)
            in.program().clear();
        ASSERT_FALSE(in.isRunning());
        for (int e = 2; e < in.program().count(); ++e)
            ASSERT_LT(in.program().numberAt(e - 1), in.program().numberAt(e)) << "after " << line;
    }
}

} // namespace
} // namespace tessaly::core
