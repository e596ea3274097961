// tessaly_man_page PATH: writes the manual page made from the help text to PATH (the build runs it).
#include <cstdio>
#include <fstream>

#include "app/cli/man_page.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: tessaly_man_page PATH\n", stderr);
        return 2;
    }
    std::ofstream out(argv[1], std::ios::binary | std::ios::trunc);
    out << tessaly::app::ManPage();
    out.close();
    if (!out) {
        std::fprintf(stderr, "tessaly_man_page: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
