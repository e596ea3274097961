// The tessaly command: with --headless (or --help) the runner without a window, which needs no
// desktop library; otherwise the window program, tessaly-window, takes over the process.
#include <cstring>

#include "app/headless/headless_runner.h"
#include "app/headless/window_launcher.h"

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--headless") == 0 || std::strcmp(argv[i], "--help") == 0)
            return tessaly::app::runHeadless(argc, argv);
    }
    return tessaly::app::startWindow(argc, argv);
}
