// The tessaly binary: the desktop window (tessaly [FILE], tessaly --run FILE) or, with --headless,
// the runner without a window.
#include <cstring>

#include "app/desktop/tessaly_app.h"
#include "app/headless/headless_runner.h"

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--headless") == 0 || std::strcmp(argv[i], "--help") == 0)
            return tessaly::app::runHeadless(argc, argv);
    }
    return tessaly::desktop::runDesktop(argc, argv);
}
