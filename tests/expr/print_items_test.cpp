// Splitting PRINT's item list, with SPC( and TAB( written as the string functions SPC$( and TAB$(.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "expr/print_items.h"

namespace tessaly::expr {
namespace {

struct SpacingCase {
    const char* arguments;
    std::vector<std::string> items;
};

class PrintItemSpacing : public testing::TestWithParam<SpacingCase> {};

TEST_P(PrintItemSpacing, RewritesOnlyTheSpacingFunctions)
{
    std::vector<PrintItem> items;
    ASSERT_TRUE(splitPrintItems(GetParam().arguments, items));
    std::vector<std::string> texts;
    for (const auto& item : items)
        texts.push_back(item.text);
    EXPECT_EQ(texts, GetParam().items) << GetParam().arguments;
}

INSTANTIATE_TEST_SUITE_P(Items, PrintItemSpacing,
    testing::Values(SpacingCase {"TAB(5);SPC  (2)", {"TAB$(5)", "SPC$(2)"}},
        SpacingCase {"\"TAB(5)\"+TAB(1)", {"\"TAB(5)\"+TAB$(1)"}},
        // Part of a longer name after a letter, digit, "." or "$"; not after "%", "!", "#" or "_".
        SpacingCase {"XTAB(1)", {"XTAB(1)"}}, SpacingCase {"A$TAB(1)", {"A$TAB(1)"}},
        SpacingCase {"A%TAB(1)", {"A%TAB$(1)"}}, SpacingCase {"A_SPC(1)", {"A_SPC$(1)"}},
        SpacingCase {"TABLE", {"TABLE"}}, SpacingCase {"SPC 3", {"SPC 3"}},
        // After a Shift-JIS character whose second byte is "a" (0x61) the word is a name's end.
        SpacingCase {"\"\x83\x61\"TAB(1)", {"\"\x83\x61\"TAB$(1)"}}, SpacingCase {"\x83\x61TAB(1)", {"\x83\x61TAB(1)"}}));

} // namespace
} // namespace tessaly::expr
