#include "app/cli/display_check.h"

#include <cstdlib>

namespace tessaly::app {

namespace {

bool isSet(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

} // namespace

bool HasDisplay() { return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM"); }

} // namespace tessaly::app
