#include "app/cli/window_arguments.h"

#include <cstdio>
#include <string_view>

#include "app/cli/display_check.h"
#include "app/cli/help_text.h"

namespace tessaly::app {

std::optional<std::string> WindowArgumentFault(int argc, char** argv)
{
    const char* file = nullptr;
    bool run = false;
    for (int i = 1; i < argc; ++i) {
        std::string_view argument = argv[i];
        if (argument == "--run") {
            run = true;
            continue;
        }
        if (argument == "--com") {
            if (++i == argc)
                return "--com wants N=PATH";
            continue;
        }
        if (argument.starts_with("-") && argument != "-")
            return "unknown option " + std::string(argument);
        if (file != nullptr)
            return "one FILE only, not " + std::string(file) + " and " + std::string(argument);
        file = argv[i];
    }
    if (run && file == nullptr)
        return "--run wants a FILE";
    return std::nullopt;
}

std::optional<int> WindowStartRefused(int argc, char** argv)
{
    if (auto fault = WindowArgumentFault(argc, argv)) {
        std::fputs(UsageErrorLine(*fault).c_str(), stderr);
        return 2;
    }
    if (!HasDisplay()) {
        std::fputs(kNoDisplayMessage, stderr);
        return 2;
    }
    return std::nullopt;
}

} // namespace tessaly::app
