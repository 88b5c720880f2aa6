// Process-wide strings set once at start: the program path, the directory
// separator and the log path fixed by the working directory of the start.
#ifndef LOCALSTD_H
#define LOCALSTD_H

#include <string>

namespace localStd {

extern const char separator;
extern const char16_t separatorWide;

// The program's path as given in argv[0]; a second non-empty setting is a fatal stop.
const std::string &argv0();
void argv0Set(const char *path);

// The working directory, empty on failure.
std::string cwdNarrow();
// Everything of argv0 before the last separator; empty when there is none.
std::string argv0Directory();
// "<working directory at start>/current.log".
const std::string &logPath();

} // namespace localStd

#endif
