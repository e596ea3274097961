// The example serial terminal, run by the headless runner against a pseudo-terminal: what is typed
// goes out, what arrives is shown, while the program reads the keyboard.
#include <csignal>
#include <gtest/gtest.h>
#include <string>

#include "support/binary_process.h"
#include "support/pty_pair.h"

namespace tessaly::test {
namespace {

TEST(SerialTerminalExample, SendsWhatIsTypedAndShowsWhatArrives)
{
    PtyPair pair;
    ASSERT_TRUE(pair.ready());
    // Standard input stays open and silent after the keys: the program waits in INKEY$ for the
    // next one, and the bytes that arrive must still be shown.
    BinaryProcess process({"--headless", "--com", "1=" + pair.devicePath(), TESSALY_EXAMPLES "/serial_terminal.bas"});
    process.write("hi");
    ASSERT_TRUE(process.waitForOutput("ESC ends\n")) << process.output() << process.errors();
    EXPECT_EQ(pair.receive(2), "hi");
    pair.send("HELLO");
    EXPECT_TRUE(process.waitForOutput("HELLO")) << process.output();
    process.sendSignal(SIGINT);
    EXPECT_EQ(process.wait(), 0);
}

} // namespace
} // namespace tessaly::test
