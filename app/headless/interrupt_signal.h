// Ctrl+C for the headless runner. SIGINT only raises a flag, read between two statements, and
// wakes any wait for standard input through a pipe that such a wait watches.
#pragma once

namespace tessaly::app {

// Installs the SIGINT handler; called once at start.
void installInterruptHandler();
// A Ctrl+C has arrived and not yet been taken.
bool interruptPending();
// Takes the pending Ctrl+C (several arriving together count as one); false when none.
bool takeInterrupt();
// Readable after a Ctrl+C: a wait polls it beside standard input, then drains it.
int interruptWakeDescriptor();
void drainInterruptWake();

} // namespace tessaly::app
