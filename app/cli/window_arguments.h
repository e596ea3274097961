// The arguments of the window (tessaly [--run] [--com N=PATH]... [FILE]), checked by tessaly before
// it starts tessaly-window and by tessaly-window before it makes anything of Qt.
#pragma once

#include <optional>
#include <string>

namespace tessaly::app {

// What is wrong with the arguments after argv[0], for UsageErrorLine; nullopt when nothing is.
// The value of --com is read by the window itself.
std::optional<std::string> WindowArgumentFault(int argc, char** argv);

// Whether the window can start: nullopt, or exit status 2 after one line on standard error for
// arguments that are wrong or for want of a display.
std::optional<int> WindowStartRefused(int argc, char** argv);

} // namespace tessaly::app
