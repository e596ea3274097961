// The headless runner: runs a program file or standard input without a window, writing the text
// screen's stream to standard output. No Qt here; the desktop shell is elsewhere in app/.
#pragma once

namespace tessaly::app {

// tessaly --headless [--screen] [FILE]; returns the process exit status.
int runHeadless(int argc, char** argv);

} // namespace tessaly::app
