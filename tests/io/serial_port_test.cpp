// Serial ports against linked pseudo-terminals made by socat: the test is the partner at the other
// end, sending and reading bytes while the program runs.
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "io/device_transfer.h"
#include "io/file_table.h"
#include "support/pty_pair.h"
#include "support/test_host.h"

namespace tessaly::test {
namespace {

constexpr const char* kOpen = "10 OPEN \"COM1:9600,N,8,1,N\" AS #1";

class SerialPort : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(pair.ready()) << "socat could not link two pseudo-terminals";
        ports().setDevicePath(1, pair.devicePath());
    }
    io::ComPorts& ports() { return session.interpreter().files().comPorts(); }

    // Waits until the port of slot 1 has count bytes waiting (socat passes them on in its time).
    bool arrived(size_t count)
    {
        for (int tries = 0; tries < 2000; ++tries) {
            auto& device = ports().slot(1).device;
            if (device) {
                device->pump();
                if (device->received().size() >= count)
                    return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }
    // Runs the started program on until it ends, a step at a time, letting bytes travel between.
    std::string runOn()
    {
        for (int steps = 0; steps < 5000 && session.interpreter().isRunning(); ++steps) {
            session.step(1);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return session.collected();
    }

    PtyPair pair;
    Session session;
};

TEST_F(SerialPort, PrintAndWriteSendTheirTextWithOneCarriageReturn)
{
    session.type({kOpen, "20 PRINT #1,\"AB\";12", "30 WRITE #1,\"A,B\",3", "40 PRINT #1,\"X\";"});
    EXPECT_EQ(session.type("RUN"), "RUN\nOK\n");
    EXPECT_EQ(pair.receive(16), "AB 12 \r\"A,B\",3\rX");
}

TEST_F(SerialPort, InputAndLineInputTakeItemsAndLinesAsTheyStandOnTheLine)
{
    session.type({kOpen, "20 INPUT #1,A$,B", "30 LINE INPUT #1,L$", "40 PRINT A$;B;L$"});
    session.start("RUN");
    session.step(3); // opened
    pair.send("HELLO, 42\r\n\r\nLINE \"Q,R\" END\r\n");
    EXPECT_EQ(runOn(), "RUN\nHELLO 42 LINE Q,R END\nOK\n");
}

TEST_F(SerialPort, CountsFollowTheBytesWaiting)
{
    session.type({kOpen, "15 IF LOC(1)<5 THEN 15", "20 PRINT LOC(1);LOF(1);EOF(1)", "30 A$=INPUT$(3,#1)",
        "40 PRINT A$;LOC(1)", "50 B$=INPUT$(2,#1):PRINT B$;EOF(1)"});
    session.start("RUN");
    session.step(3);
    pair.send("ABCDE");
    EXPECT_EQ(runOn(), "RUN\n 5  8187  0 \nABC 2 \nDE-1 \nOK\n");
}

TEST_F(SerialPort, AReceiveWaitsWithoutBlockingUntilItsLineArrives)
{
    session.type({kOpen, "20 LINE INPUT #1,A$", "30 PRINT \"[\";A$;\"]\""});
    session.start("RUN");
    session.step(50);
    EXPECT_TRUE(session.interpreter().isRunning());
    EXPECT_TRUE(session.interpreter().isWaitingForDevice());
    pair.send("LA");
    session.step(50);
    EXPECT_TRUE(session.interpreter().isRunning());
    pair.send("TE\r");
    EXPECT_EQ(runOn(), "RUN\n[LATE]\nOK\n");
}

TEST_F(SerialPort, AReceiveWithoutDataAsksWhetherToWaitAndCancelIsADiskError)
{
    ports().inputWait = std::chrono::milliseconds(0);
    session.host().answers = {core::MessageAnswer::Retry, core::MessageAnswer::Retry};
    session.type({kOpen, "20 INPUT #1,A$"});
    EXPECT_EQ(session.type("RUN"), "RUN\nDisk I/O error in 20\n");
    EXPECT_EQ(session.host().questions,
        std::vector<std::string>(3, "Input data none , Wait ?"));
}

TEST_F(SerialPort, OnComFiresWhenBytesArrive)
{
    session.type({kOpen, "20 ON COM(1) GOSUB 100", "30 COM(1) ON", "40 GOTO 40",
        "100 A$=INPUT$(4,#1):PRINT A$:END"});
    session.start("RUN");
    session.step(20);
    EXPECT_TRUE(session.interpreter().isRunning());
    pair.send("PING");
    EXPECT_EQ(runOn(), "RUN\nPING\nOK\n");
}

TEST_F(SerialPort, BadOpensAndTrapsGetTheirErrors)
{
    for (int port = 2; port <= 6; ++port)
        ports().setDevicePath(port, pair.devicePath());
    ports().setDevicePath(7, "/nonexistent/tty");
    ports().setDevicePath(8, "/dev/null");
    const std::pair<const char*, const char*> cases[] = {
        {"20 OPEN \"COM2:9600,N,7,1,N\" AS #2", "Syntax error in 20"},
        {"20 OPEN \"COM1:9600,N,8,1,N\" AS #2", "Port already open in 20"},
        {"20 OPEN \"COM7:9600,N,8,1,N\" AS #2", "File can not open in 20"},
        {"20 OPEN \"COM8:9600,N,8,1,N\" AS #2", "File can not open in 20"},   // no terminal
        {"20 OPEN \"COM2:14400,N,8,1,N\" AS #2", "File can not open in 20"},  // no such line speed
        {"20 OPEN \"COM-1:9600,N,8,1,N\" AS #2", "Illegal function call in 20"},
        {"20 COM(2) ON", "Illegal function call in 20"},
        {"20 ON COM(3) GOSUB 10", "Illegal function call in 20"},
        {"20 COM(1)", "Syntax error in 20"},
        {"20 COM ON", "Syntax error in 20"},
        {"20 COM(1) ON", "Illegal function call in 20"}, // no ON COM GOSUB yet
        {"20 OPEN \"COM2:300,N,8,1,N\" AS #2:OPEN \"COM3:300,N,8,1,N\" AS #3:OPEN \"COM4:300,N,8,1,N\" AS #4:"
         "OPEN \"COM5:300,N,8,1,N\" AS #5:OPEN \"COM6:300,N,8,1,N\" AS #6",
            "Out of memory in 20"},
    };
    for (const auto& [line, message] : cases) {
        session.type({"NEW", kOpen, line});
        EXPECT_EQ(session.type("RUN"), std::string("RUN\n") + message + "\n") << line;
        session.type("CLOSE");
    }
}

TEST_F(SerialPort, ADeviceThatGoesAwayClosesThePort)
{
    session.type({kOpen, "20 IF INKEY$=\"\" THEN 20", "30 PRINT #1,\"X\""});
    session.start("RUN");
    session.step(5);
    pair.cut();
    session.interpreter().onChar('G');
    EXPECT_EQ(runOn(), "RUN\nFile not open in30\n");
    EXPECT_EQ(session.type("CLOSE"), "CLOSE\nOK\n");
}


TEST_F(SerialPort, SaveSendsTheListingAndLoadTakesWhatArrivesUntilBreak)
{
    session.type({"10 PRINT \"HI\"", "20 END"});
    EXPECT_EQ(session.type("SAVE \"COM1:9600,N,8,1,N\""), "SAVE \"COM1:9600,N,8,1,N\"\nOK\n");
    EXPECT_EQ(pair.receive(23), "10 PRINT \"HI\"\r\n20 END\r\n");
    EXPECT_FALSE(session.interpreter().files().entry(1).isOpen()); // the transfer's channel is closed

    session.type("NEW");
    session.start("LOAD \"COM1:9600,N,8,1,N\"");
    session.step(5);
    pair.send("10 print 1\r\n20 pr");
    session.step(20);
    pair.send("int 2\r\n");
    const auto& received = session.interpreter().files().transfer().received;
    for (int steps = 0; steps < 2000 && received.size() < 24; ++steps) {
        session.step(1);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(session.interpreter().isRunning()); // only BREAK ends a load
    session.host().modified = false;
    session.breakAndCollect();
    EXPECT_EQ(session.type("LIST"), "LIST\n10 PRINT 1\n20 PRINT 2\nOK\n");
    EXPECT_TRUE(session.host().modified); // received, not saved anywhere yet
    EXPECT_FALSE(session.interpreter().files().entry(1).isOpen());
}

TEST_F(SerialPort, ALongListingGoesInBlocksOfWholeLines)
{
    std::string expected;
    for (int line = 10; line <= 1000; line += 10) {
        std::string text = std::to_string(line) + " REM " + std::string(20, 'A');
        session.type(text);
        expected += text + "\r\n";
    }
    ASSERT_GT(expected.size(), 2 * io::kTransferBlockBytes);
    session.start("SAVE \"COM1:9600,N,8,1,N\"");
    std::string got;
    for (int steps = 0; steps < 2000 && got.size() < expected.size(); ++steps) {
        session.step(1);
        got += pair.receive(0);
    }
    got += pair.receive(expected.size() - got.size());
    EXPECT_EQ(got, expected);
}

TEST_F(SerialPort, SaveToAPrinterPortPrintsTheListing)
{
    session.type({"10 PRINT 1", "20 END"});
    EXPECT_EQ(session.type("SAVE \"LPT1:\""), "SAVE \"LPT1:\"\nOK\n");
    EXPECT_EQ(session.host().printed, "10 PRINT 1\r\n20 END\r\n");
    EXPECT_EQ(session.type("LOAD \"LPT1:\""), "LOAD \"LPT1:\"\nFile not open in \n");
}


TEST_F(SerialPort, AFloodWithoutLineEndsEndsTheLineWhereTheQueueIsFull)
{
    session.type({kOpen, "20 LINE INPUT #1,A$", "30 PRINT LEN(A$)"});
    session.start("RUN");
    session.step(3);
    pair.send(std::string(9000, 'A') + "\r");
    // The queue's 8,192 bytes make one line, longer than a string can be.
    EXPECT_EQ(runOn(), "RUN\nOut of memory in 20\n");
    EXPECT_TRUE(arrived(809));
    EXPECT_EQ(session.type("LINE INPUT #1,A$:PRINT LEN(A$)"), "LINE INPUT #1,A$:PRINT LEN(A$)\n 808 \nOK\n");
}

TEST_F(SerialPort, CloseIsRefusedWhileAReceiveWaitsOnThePort)
{
    PtyPair second;
    ASSERT_TRUE(second.ready());
    ports().setDevicePath(2, second.devicePath());
    session.type({kOpen, "20 OPEN \"COM2:9600,N,8,1,N\" AS #2", "30 ON COM(2) GOSUB 100:COM(2) ON",
        "40 LINE INPUT #1,A$", "50 END", "100 CLOSE #1"});
    session.start("RUN");
    session.step(10);
    EXPECT_TRUE(session.interpreter().isWaitingForDevice());
    second.send("X");
    EXPECT_EQ(runOn(), "RUN\nIllegal operation in 100\n");
    // Once the run has ended, nothing waits and the port closes.
    EXPECT_EQ(session.type("CLOSE #1"), "CLOSE #1\nOK\n");
}

// The line as the device took it, read back through another descriptor of the same terminal.
termios lineOf(const std::string& path)
{
    termios line {};
    int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd >= 0) {
        ::tcgetattr(fd, &line);
        ::close(fd);
    }
    return line;
}

struct LineCase {
    const char* name;
    speed_t speed;
    tcflag_t size;
    bool parity, odd, twoStops, xonXoff;
};

const LineCase kLineCases[] = {
    {"COM1:9600,N,8,1,N", B9600, CS8, false, false, false, false},
    {"COM1:1200,E,7,2,X", B1200, CS7, true, false, true, true},
    {"COM1:115200,O,7,1.5,N", B115200, CS7, true, true, true, false},
};

TEST(SerialLine, TheSettingsMakeTheFrameSpeedAndFlowControl)
{
    for (const auto& c : kLineCases) {
        io::ComSettings settings;
        ASSERT_FALSE(io::parseComName(c.name, settings).has_value());
        termios line {};
        line.c_iflag = IXON; // what was there before does not stay
        ASSERT_TRUE(io::configureLine(settings, line)) << c.name;
        EXPECT_EQ(::cfgetospeed(&line), c.speed) << c.name;
        EXPECT_EQ(line.c_cflag & CSIZE, c.size) << c.name;
        EXPECT_EQ((line.c_cflag & PARENB) != 0, c.parity) << c.name;
        EXPECT_EQ((line.c_cflag & PARODD) != 0, c.odd) << c.name;
        EXPECT_EQ((line.c_cflag & CSTOPB) != 0, c.twoStops) << c.name;
        EXPECT_EQ((line.c_iflag & IXON) != 0, c.xonXoff) << c.name;
        EXPECT_NE(line.c_cflag & CRTSCTS, 0u) << c.name;
        EXPECT_EQ(line.c_lflag & (ICANON | ECHO), 0u) << c.name; // raw bytes
    }
    io::ComSettings odd;
    odd.speed = 14400;
    termios line {};
    EXPECT_FALSE(io::configureLine(odd, line));
}

// A pseudo-terminal keeps the speed, the stop bits and the flow control it is given (its frame's
// size and parity stay those of the other end).
TEST_F(SerialPort, TheDeviceTakesItsLine)
{
    for (const auto& c : kLineCases) {
        io::ComSettings settings;
        ASSERT_FALSE(io::parseComName(c.name, settings).has_value());
        auto device = io::SerialDevice::open(pair.devicePath(), settings);
        ASSERT_NE(device, nullptr) << c.name;
        termios line = lineOf(pair.devicePath());
        EXPECT_EQ(::cfgetospeed(&line), c.speed) << c.name;
        EXPECT_EQ((line.c_cflag & CSTOPB) != 0, c.twoStops) << c.name;
        EXPECT_EQ((line.c_iflag & IXON) != 0, c.xonXoff) << c.name;
        EXPECT_EQ(line.c_lflag & (ICANON | ECHO), 0u) << c.name;
    }
}

} // namespace
} // namespace tessaly::test
