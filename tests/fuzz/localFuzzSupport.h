// What the fuzz targets share: a sandbox in which an input cannot act on the
// machine, and the invariants checked after every input.
//
// The sandbox: the services open no window, editor or program; the global
// functions that reach files, the shell, the log or the clock are replaced
// in the global context by a harmless function answering 0; and std::cout
// is muted (KORVEL_FUZZ_VERBOSE=1 keeps it, for reading what a saved input
// prints). scripts/fuzz starts every target in a throw-away working
// directory besides, where the relative names of any input would land.
//
// The invariants: after an input the count of used cells is what it was
// before it (nothing leaked in the table), no fatal stop has fired (any
// exit_FAILURE aborts with its message, so libFuzzer keeps the input), and
// the process is alive.
#ifndef LOCALFUZZSUPPORT_H
#define LOCALFUZZSUPPORT_H

#include "localContextUTF8.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace localFuzz {

// Once per process, from LLVMFuzzerInitialize: makes the sandbox and the
// global context.
void setUp();

// A file name in a scratch directory of this process, removed at its end.
std::string scratchPath(const char *name);

// The text of an input as the console reads a typed line: UTF-8.
std::u16string textOf(const uint8_t *data, size_t size);

// Aborts with `what` when an invariant does not hold.
void require(bool holds, const char *what);

// A context for one input, child of the global one, holding a number, a
// string, a boolean, a value list with a nested list, a value table and an
// object of the class TEST: N, S, B, L, T, O.
localContextUTF8 *contextWithValues();

// Whether a program being run has used its share: more cells or heap than an
// input may take. The executor's step hook asks it.
bool overBudget();

// Notes the used cells at its start and requires them back at its end.
class cellsReturn {
public:
    cellsReturn();
    ~cellsReturn();
    cellsReturn(const cellsReturn &) = delete;
    cellsReturn &operator=(const cellsReturn &) = delete;

private:
    size_t before;
};

} // namespace localFuzz

#endif
