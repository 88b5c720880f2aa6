// The dump of the table of cells and of the counters of live objects: what
// makes a leak or a stray link visible.
#ifndef LOCALMEMORYDUMP_H
#define LOCALMEMORYDUMP_H

#include "localValueDescription.h"

#include <cstdint>
#include <iosfwd>
#include <string>

// One line of pieces, each closed by "] ": address, type, class, number,
// object pointer, string and string form (the last two shortened).
std::u16string localValueDump(const localValueDescription &value);

// The header, one line per cell (all of a table below 257 cells, else the
// linked ones), the counts, the counters of live objects and the closing
// note. `withCells` false leaves out the header and the cells.
std::u16string memoryDisplayDataText(bool withCells);

// memoryDisplayDataText(true) in the narrow form; a null stream is std::cout.
void memoryDisplayData(std::ostream *stream);

// The counters of classes that live in libraries above the core: the
// database library hands in its "localDataBase", "localDataBaseTable" and
// "localDataBaseRecord" counters; until then they read 0.
void memoryDisplayCounterSet(const std::string &className, const int64_t *counter);

#endif
