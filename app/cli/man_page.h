// The manual page tessaly.1, written in roff from the help text that --help prints.
#pragma once

#include <string>

namespace tessaly::app {

std::string ManPage();

} // namespace tessaly::app
