// The tessaly command: --help and --version answer at once; --headless runs the runner, --list and
// --convert the program file commands, none of which needs a desktop library; otherwise the window
// program, tessaly-window, takes over the process once the arguments and the display are known to
// be fit for it.
#include <cstdio>
#include <cstring>

#include "app/cli/display_check.h"
#include "app/cli/help_text.h"
#include "app/cli/window_arguments.h"
#include "app/headless/headless_runner.h"
#include "app/headless/program_conversion.h"
#include "app/headless/window_launcher.h"

namespace {

bool hasArgument(int argc, char** argv, const char* wanted)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], wanted) == 0)
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    using namespace tessaly::app;
    if (AnswerHelpOrVersion(argc, argv))
        return 0;
    if (hasArgument(argc, argv, "--headless"))
        return runHeadless(argc, argv);
    if (hasArgument(argc, argv, "--list") || hasArgument(argc, argv, "--convert"))
        return RunProgramFileCommand(argc, argv);
    if (auto refused = WindowStartRefused(argc, argv))
        return *refused;
    return startWindow(argc, argv);
}
