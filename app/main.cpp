// The tessaly binary: the headless runner for now; the desktop shell takes the other paths.
#include <cstdio>
#include <cstring>

#include "app/headless/headless_runner.h"

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--headless") == 0 || std::strcmp(argv[i], "--help") == 0)
            return tessaly::app::runHeadless(argc, argv);
    }
    std::fputs("tessaly: the desktop window is not available in this build; use --headless (see --help)\n", stderr);
    return 2;
}
