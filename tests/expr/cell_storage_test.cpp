// Variables keep their values as machine bytes: integers in 2 bytes, singles in 4, doubles in 8,
// least significant byte first; array cells with the first subscript varying fastest, array after
// array in the order they were made.
#include <gtest/gtest.h>

#include <string>

#include "expr/arrays.h"
#include "expr/variables.h"

namespace tessaly::expr {
namespace {

Value number(double x) { return Value::makeNumber(x, NumberForm::Computed16); }

std::string hexBytes(const uint8_t* bytes, size_t count)
{
    static const char* digits = "0123456789ABCDEF";
    std::string out;
    for (size_t k = 0; k < count; ++k) {
        if (k > 0)
            out += ' ';
        out += digits[bytes[k] >> 4];
        out += digits[bytes[k] & 15];
    }
    return out;
}

TEST(ArrayCells, HoldEachTypeInItsMachineFormInElementOrder)
{
    ArrayStore arrays;
    ASSERT_EQ(arrays.create("A%", ValueType::Integer, {1, 1}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.create("S", ValueType::Single, {1}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.create("D#", ValueType::Double, {0}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("A%", ValueType::Integer, {1, 0}, number(258)), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("A%", ValueType::Integer, {0, 1}, number(-2)), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("S", ValueType::Single, {1}, number(1.5)), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("D#", ValueType::Double, {0}, number(-2)), ArrayStatus::Ok);
    ASSERT_EQ(arrays.dataSize(), 8U + 8U + 8U);
    EXPECT_EQ(hexBytes(arrays.data(), 8), "00 00 02 01 FE FF 00 00");
    EXPECT_EQ(hexBytes(arrays.data() + 8, 8), "00 00 00 00 00 00 C0 3F");
    EXPECT_EQ(hexBytes(arrays.data() + 16, 8), "00 00 00 00 00 00 00 C0");
    ArrayStore::CellRange range;
    ASSERT_EQ(arrays.cellsFrom("S", ValueType::Single, {1}, range), ArrayStatus::Ok);
    EXPECT_EQ(range.offset, 12U);
    EXPECT_EQ(range.size, 4U);
    EXPECT_EQ(range.type, ValueType::Single);
}

TEST(ArrayCells, ChangedBytesChangeTheElement)
{
    ArrayStore arrays;
    ASSERT_EQ(arrays.create("A%", ValueType::Integer, {3}), ArrayStatus::Ok);
    arrays.data()[4] = 0x34;
    arrays.data()[5] = 0x12;
    Value v;
    ASSERT_EQ(arrays.read("A%", ValueType::Integer, {2}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.number, 0x1234);
}

TEST(ArrayCells, BytesOfNoFiniteNumberReadAsZero)
{
    ArrayStore arrays;
    ASSERT_EQ(arrays.create("S", ValueType::Single, {0}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.create("D#", ValueType::Double, {0}), ArrayStatus::Ok);
    arrays.data()[2] = 0x80; // +infinity
    arrays.data()[3] = 0x7F;
    arrays.data()[10] = 0xF8; // NaN
    arrays.data()[11] = 0xFF;
    Value v;
    ASSERT_EQ(arrays.read("S", ValueType::Single, {0}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.number, 0);
    ASSERT_EQ(arrays.read("D#", ValueType::Double, {0}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.number, 0);
}

TEST(ArrayCells, EraseMovesTheLaterArraysDownWithTheirValues)
{
    ArrayStore arrays;
    ASSERT_EQ(arrays.create("A%", ValueType::Integer, {9}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.create("T$", ValueType::String, {1}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.create("B", ValueType::Single, {2}), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("B", ValueType::Single, {2}, number(7)), ArrayStatus::Ok);
    ASSERT_EQ(arrays.store("T$", ValueType::String, {1}, Value::makeString("HI")), ArrayStatus::Ok);
    // A string array's cells hold the pool numbers of its elements.
    EXPECT_EQ(hexBytes(arrays.data() + 20, 4), "01 00 02 00");
    EXPECT_FALSE(arrays.onlyNumbers(18, 4));
    EXPECT_TRUE(arrays.onlyNumbers(24, 12));
    ASSERT_TRUE(arrays.erase("A%"));
    EXPECT_EQ(arrays.dataSize(), 4U + 12U);
    Value v;
    ASSERT_EQ(arrays.read("B", ValueType::Single, {2}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.number, 7);
    ASSERT_EQ(arrays.read("T$", ValueType::String, {1}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.text, "HI");
    EXPECT_EQ(hexBytes(arrays.data() + 12, 4), "00 00 E0 40");
    arrays.resetKeeping({"B"});
    EXPECT_EQ(arrays.dataSize(), 12U);
    ASSERT_EQ(arrays.read("B", ValueType::Single, {2}, v), ArrayStatus::Ok);
    EXPECT_EQ(v.number, 7);
}

TEST(ScalarCells, FollowEachOtherInCreationOrder)
{
    VariableStore variables;
    ASSERT_EQ(variables.store("A%", ValueType::Integer, number(-32768)), StoreStatus::Ok);
    ASSERT_EQ(variables.store("S$", ValueType::String, Value::makeString("X")), StoreStatus::Ok);
    ASSERT_EQ(variables.store("X", ValueType::Single, number(-1)), StoreStatus::Ok);
    ASSERT_EQ(variables.store("D#", ValueType::Double, number(0.5)), StoreStatus::Ok);
    ASSERT_EQ(variables.dataSize(), 2U + 2U + 4U + 8U);
    EXPECT_EQ(hexBytes(variables.data(), 8), "00 80 01 00 00 00 80 BF");
    EXPECT_EQ(hexBytes(variables.data() + 8, 8), "00 00 00 00 00 00 E0 3F");
    EXPECT_FALSE(variables.onlyNumbers(3, 1));
    EXPECT_TRUE(variables.onlyNumbers(4, 12));
    variables.data()[1] = 0x7F;
    variables.data()[0] = 0xFF;
    Value v;
    ASSERT_TRUE(variables.read("A%", ValueType::Integer, v));
    EXPECT_EQ(v.number, 32767);
}

} // namespace
} // namespace tessaly::expr
