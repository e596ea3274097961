// IF and WHILE conditions: whole sides compared exactly, logical words combining -1 and 0.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "support/test_host.h"

namespace tessaly::expr {
namespace {

struct ConditionCase {
    const char* condition;
    int truth; // 1 true, 0 false, -1 an error
    const char* error;
};

class Conditions : public ::testing::TestWithParam<ConditionCase> {};

TEST_P(Conditions, DecideTheBranch)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"A=5", "B=2", "P$=\"X\"", "Q$=\"X\""});
    ASSERT_TRUE(in.buffer().assign(GetParam().condition));
    bool truth = false;
    int outcome = evaluateCondition(in, 0, in.buffer().length(), truth);
    if (GetParam().truth < 0) {
        EXPECT_EQ(outcome, -1) << GetParam().condition;
        EXPECT_EQ(in.run().outputText, GetParam().error);
        return;
    }
    ASSERT_EQ(outcome, 0) << GetParam().condition << ": " << in.run().outputText;
    EXPECT_EQ(truth, GetParam().truth == 1) << GetParam().condition;
}

INSTANTIATE_TEST_SUITE_P(Condition, Conditions,
    ::testing::Values(ConditionCase {"3+1>2", 1, ""}, ConditionCase {"1.5<1.7", 1, ""}, ConditionCase {"A", 1, ""},
        ConditionCase {"0", 0, ""}, ConditionCase {"0.5", 0, ""}, ConditionCase {"-1.5", 1, ""}, ConditionCase {"A+1 > B*2 AND P$ = Q$", 1, ""},
        ConditionCase {"A=5 AND B=3", 0, ""}, ConditionCase {"A=4 OR B=2", 1, ""}, ConditionCase {" NOT A=5", 0, ""},
        ConditionCase {"(A>B)", 1, ""}, ConditionCase {"P$<>Q$", 0, ""}, ConditionCase {"P$=\"X\"", 1, ""},
        ConditionCase {"A$ = 1", -1, "Type mismatch in "}, ConditionCase {"P$", -1, "Type mismatch in "},
        ConditionCase {"A>=5 AND A<=5", 1, ""}, ConditionCase {"A=<4", 0, ""}, ConditionCase {"A><5", 0, ""},
        ConditionCase {"1/0=1", -1, "Division by Zero (/0) in "}));

} // namespace
} // namespace tessaly::expr
