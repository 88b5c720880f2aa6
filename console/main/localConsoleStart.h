// The start of the graphical console: the window assembly and the process
// entry.
#ifndef LOCALCONSOLESTART_H
#define LOCALCONSOLESTART_H

class localConsole;
class localCoutBuffer;

// Makes the console, sends std::cout into it through `buffer`, prints the
// banners, moves into "prgTest" when started from the program's own folder,
// and shows the console as the application's window.
localConsole *localConsoleAssemble(localCoutBuffer *buffer);

// The process entry; the exit code.
int qMain(int argc, char **argv);

#endif
