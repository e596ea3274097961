// tessaly-window: the desktop window (tessaly-window [FILE], tessaly-window --run FILE), started by
// the tessaly command. --help and --version, wrong arguments and a missing display are dealt with
// before anything of Qt is made (Qt would abort without a display).
#include <cstdio>

#include "app/cli/display_check.h"
#include "app/cli/help_text.h"
#include "app/cli/window_arguments.h"
#include "app/desktop/tessaly_app.h"

int main(int argc, char** argv)
{
    using namespace tessaly::app;
    if (AnswerHelpOrVersion(argc, argv))
        return 0;
    if (auto refused = WindowStartRefused(argc, argv))
        return *refused;
    return tessaly::desktop::runDesktop(argc, argv);
}
