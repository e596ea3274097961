// The user memory, the variables' bytes through VARPTR, BSAVE and BLOAD, the ports, and the
// refused machine-code calls.
#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "support/test_host.h"

namespace tessaly::io {
namespace {

using test::Session;

TEST(UserMemory, PokeStoresTheLowByteAndPeekReadsItBack)
{
    Session s;
    EXPECT_EQ(s.messageOf("POKE 100, 300"), "");
    EXPECT_EQ(s.valueOf("PEEK(100)"), " 44 ");
    EXPECT_EQ(s.messageOf("POKE 2, -1"), "");
    EXPECT_EQ(s.valueOf("PEEK(2.9)"), " 255 ");
    EXPECT_EQ(s.valueOf("PEEK(1048575)"), " 0 ");
    EXPECT_EQ(s.valueOf("DEFUSER"), " 1048576 ");
    EXPECT_EQ(s.valueOf("SEGPTR"), " 1048576 ");
}

TEST(UserMemory, DefSegMovesTheBase)
{
    Session s;
    EXPECT_EQ(s.messageOf("DEF SEG = DEFUSER + 16"), "");
    EXPECT_EQ(s.valueOf("SEGPTR"), " 1048592 ");
    EXPECT_EQ(s.messageOf("POKE 0, 7"), "");
    EXPECT_EQ(s.messageOf("DEF SEG = DEFUSER"), "");
    EXPECT_EQ(s.valueOf("PEEK(16)"), " 7 ");
    EXPECT_EQ(s.messageOf("DEF SEG 5"), "Syntax error in ");
    EXPECT_EQ(s.messageOf("POKE 5"), "Syntax error in ");
}

TEST(UserMemory, AddressesOutsideWhatTheProgramOwnsAreRefused)
{
    Session s;
    for (const char* command : {"POKE -1, 0", "POKE 1048576, 0", "X = PEEK(1048576)", "X = PEEK(-1)",
             "DEF SEG = 0 : X = PEEK(0)", "DEF SEG = 0 : POKE 4194304, 1", "DEF SEG = 0 : X = PEEK(2097152)"}) {
        EXPECT_EQ(s.messageOf(command), "Illegal function call in ") << command;
        s.type("DEF SEG = DEFUSER");
    }
}

TEST(VarPtr, PeekAndPokeReachTheScalarsOwnBytes)
{
    Session s;
    s.type("A% = 258 : X! = 1.5 : D# = -2 : S$ = \"HI\" : DEF SEG = 0");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(A%))"), " 2 ");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(A%) + 1)"), " 1 ");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(X!) + 2)"), " 192 ");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(X!) + 3)"), " 63 ");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(D#) + 7)"), " 192 ");
    EXPECT_EQ(s.valueOf("VARPTR(A%)"), " 2097152 ");
    EXPECT_EQ(s.valueOf("VARPTR(X!)"), " 2097154 ");
    EXPECT_EQ(s.messageOf("POKE VARPTR(A%), 3"), "");
    EXPECT_EQ(s.valueOf("A%"), " 259 ");
    EXPECT_EQ(s.messageOf("POKE VARPTR(X!) + 3, 64"), "");
    EXPECT_EQ(s.valueOf("X!"), " 6 ");
    // A string's cell holds its pool number: readable, not writable.
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(S$))"), " 1 ");
    EXPECT_EQ(s.messageOf("POKE VARPTR(S$), 9"), "Illegal function call in ");
    EXPECT_EQ(s.valueOf("S$"), "HI");
    // A variable named first by VARPTR is made, as reading it would.
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(NEW%))"), " 0 ");
    EXPECT_EQ(s.messageOf("X = VARPTR(3)"), "Syntax error in ");
}

TEST(VarPtr, ReachesArrayElementsInTheirOrder)
{
    Session s;
    s.type("DIM B%(3), C(1, 1) : B%(2) = -2 : C(1, 0) = 1 : DEF SEG = 0");
    EXPECT_EQ(s.valueOf("PEEK(VARPTR(B%(2)))"), " 254 ");
    EXPECT_EQ(s.valueOf("VARPTR(B%(2)) - VARPTR(B%(0))"), " 4 ");
    EXPECT_EQ(s.valueOf("VARPTR(B%())"), " 3145728 ");
    EXPECT_EQ(s.valueOf("VARPTR(C(1, 0)) - VARPTR(C(0, 0))"), " 4 ");
    EXPECT_EQ(s.valueOf("VARPTR(C(0, 0)) - VARPTR(B%(3))"), " 2 ");
    EXPECT_EQ(s.messageOf("POKE VARPTR(B%(1)), 5"), "");
    EXPECT_EQ(s.valueOf("B%(1)"), " 5 ");
    EXPECT_EQ(s.messageOf("X = VARPTR(B%(4))"), "Subscript out of range in ");
    // Past the last array's cells nothing is owned.
    EXPECT_EQ(s.messageOf("X = PEEK(VARPTR(C(1, 1)) + 4)"), "Illegal function call in ");
}

class MemoryFiles : public test::InFolder {};

TEST_F(MemoryFiles, BsaveWritesExactlyTheBytesAndBloadPutsThemBack)
{
    Session s;
    s.type("POKE 0, 65 : POKE 1, 0 : POKE 2, 255 : POKE 3, 10");
    EXPECT_EQ(s.messageOf("BSAVE \"A.BIN\", 0, 4"), "");
    EXPECT_EQ(fileBytes("A.BIN"), std::string("A\0\xFF\n", 4));
    EXPECT_EQ(s.messageOf("BLOAD \"A.BIN\", 8"), "");
    EXPECT_EQ(s.valueOf("PEEK(8) + PEEK(9) * 256"), " 65 ");
    EXPECT_EQ(s.valueOf("PEEK(10)"), " 255 ");
    EXPECT_EQ(s.valueOf("PEEK(11)"), " 10 ");
    EXPECT_EQ(s.messageOf("BSAVE \"E.BIN\", 0, 0"), "");
    EXPECT_EQ(fileBytes("E.BIN"), "");
}

TEST_F(MemoryFiles, BloadFillsAnArrayThroughVarPtr)
{
    Session s;
    writeFile("N.BIN", std::string("\x02\x01\xFE\xFF", 4));
    s.type("DIM A%(1) : DEF SEG = 0 : BLOAD \"N.BIN\", VARPTR(A%(0))");
    EXPECT_EQ(s.valueOf("A%(0)"), " 258 ");
    EXPECT_EQ(s.valueOf("A%(1)"), "-2 ");
    EXPECT_EQ(s.messageOf("BSAVE \"C.BIN\", VARPTR(A%(0)), 4"), "");
    EXPECT_EQ(fileBytes("C.BIN"), std::string("\x02\x01\xFE\xFF", 4));
    // One byte more than the array holds is refused, and nothing is written.
    writeFile("L.BIN", std::string(5, '\x7F'));
    EXPECT_EQ(s.messageOf("BLOAD \"L.BIN\", VARPTR(A%(0))"), "Illegal function call in ");
    EXPECT_EQ(s.valueOf("A%(0)"), " 258 ");
}

TEST_F(MemoryFiles, BadNamesRangesAndFilesGetTheirErrors)
{
    Session s;
    EXPECT_EQ(s.messageOf("BLOAD \"MISSING.BIN\", 0"), "File not open in ");
    EXPECT_EQ(s.messageOf("BLOAD \"A.BIN\""), "Syntax error in ");
    EXPECT_EQ(s.messageOf("BSAVE \"A.BIN\", 0"), "Syntax error in ");
    EXPECT_EQ(s.messageOf("BSAVE \"A.BIN\""), "Syntax error in ");
    EXPECT_EQ(s.messageOf("BSAVE 5, 0, 1"), "Type mismatch in ");
    // A range past the block's end: no file is made.
    EXPECT_EQ(s.messageOf("BSAVE \"B.BIN\", 1048570, 7"), "Illegal function call in ");
    EXPECT_EQ(fileBytes("B.BIN"), "<missing>");
    EXPECT_EQ(s.messageOf("BSAVE \"B.BIN\", 0, -1"), "Illegal function call in ");
    // A file longer than the rest of the block is refused and the block keeps its bytes.
    writeFile("T.BIN", "ABC");
    s.type("POKE 1048574, 1");
    EXPECT_EQ(s.messageOf("BLOAD \"T.BIN\", 1048574"), "Illegal function call in ");
    EXPECT_EQ(s.valueOf("PEEK(1048574)"), " 1 ");
    EXPECT_EQ(s.messageOf("BLOAD \"T.BIN\", 1048573"), "");
    EXPECT_EQ(s.valueOf("PEEK(1048575)"), " 67 ");
    EXPECT_EQ(s.messageOf("BSAVE \"/no/such/folder/X.BIN\", 0, 1"), "File not open in ");
}

TEST(Ports, OutAndInpReachTheHostsPortSpace)
{
    Session s;
    EXPECT_EQ(s.messageOf("OUT 100, 300"), "");
    EXPECT_EQ(s.valueOf("INP(100)"), " 44 ");
    EXPECT_EQ(s.valueOf("INP(101)"), " 255 ");
    EXPECT_EQ(s.messageOf("OUT 40000, 1"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("OUT -1, 1"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("OUT 100"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("OUT \"A\", 1"), "Type mismatch in ");
    s.host().portsGranted = false;
    EXPECT_EQ(s.messageOf("OUT 100, 1"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("X = INP(100)"), "Illegal function call in ");
    EXPECT_EQ(s.host().ports.in(100), 44);
}

TEST(MachineCode, CallAndUsrAreRefused)
{
    Session s;
    EXPECT_EQ(s.messageOf("CALL 0"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("X = USR(1)"), "Undefined user function in ");
    EXPECT_EQ(s.messageOf("DEF USR3 = 4096"), "");
    EXPECT_EQ(s.messageOf("X = USR3(1)"), "Illegal function call in ");
    EXPECT_EQ(s.messageOf("X = USR2(1)"), "Undefined user function in ");
    EXPECT_EQ(s.interpreter().usrAddresses()[3], 4096);
}

TEST(Pen, TellsWhereTheLastClickWas)
{
    Session s;
    EXPECT_EQ(s.valueOf("PEN(0)"), " 0 ");
    s.interpreter().onLeftButtonDown(100, 50);
    EXPECT_EQ(s.valueOf("PEN(0)"), "-1 ");
    EXPECT_EQ(s.valueOf("PEN(0)"), " 0 ");
    EXPECT_EQ(s.valueOf("PEN(1)"), " 100 ");
    EXPECT_EQ(s.valueOf("PEN(2)"), " 50 ");
    EXPECT_EQ(s.valueOf("PEN(3)"), " 12 ");
    EXPECT_EQ(s.valueOf("PEN(4)"), " 3 ");
    EXPECT_EQ(s.messageOf("X = PEN(5)"), "Illegal function call in ");
}

} // namespace
} // namespace tessaly::io
