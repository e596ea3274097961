#include "app/headless/window_launcher.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

namespace tessaly::app {

namespace {

// The folder of this program's own file.
std::string ownFolder()
{
    std::vector<char> path(4096);
    ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
    if (length <= 0)
        return ".";
    std::string self(path.data(), static_cast<size_t>(length));
    auto slash = self.rfind('/');
    return slash == std::string::npos ? "." : self.substr(0, slash);
}

} // namespace

int startWindow(int argc, char** argv)
{
    std::string folder = ownFolder();
    std::vector<char*> arguments(argv, argv + argc);
    arguments.push_back(nullptr);
    int error = ENOENT;
    for (const std::string& candidate : {folder + "/tessaly-window", folder + "/../libexec/tessaly/tessaly-window"}) {
        if (access(candidate.c_str(), X_OK) != 0)
            continue;
        arguments[0] = const_cast<char*>(candidate.c_str());
        execv(candidate.c_str(), arguments.data());
        error = errno;
    }
    std::fprintf(stderr, "tessaly: cannot start the window (tessaly-window: %s); tessaly --headless runs programs without one\n",
        std::strerror(error));
    return 2;
}

} // namespace tessaly::app
