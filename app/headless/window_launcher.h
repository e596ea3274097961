// The window is a program of its own (tessaly-window, with the desktop libraries), so that the
// runner starts without them: tessaly without --headless hands its arguments over to it.
#pragma once

namespace tessaly::app {

// Replaces this process with the window program found beside this one (or in
// ../libexec/tessaly); returns only when it cannot be started, with the exit status 2 after a
// message on standard error.
int startWindow(int argc, char** argv);

} // namespace tessaly::app
