// tessaly-window: the desktop window (tessaly-window [FILE], tessaly-window --run FILE), started by
// the tessaly command.
#include "app/desktop/tessaly_app.h"

int main(int argc, char** argv) { return tessaly::desktop::runDesktop(argc, argv); }
