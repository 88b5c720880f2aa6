#include "localRandom.h"

#include <cstdlib>
#include <ctime>

namespace {

// Touched only by the thread that runs the interpreter, one at a time.
bool seeded = false;
bool drawnSinceSeed = false;
std::time_t lastSeed = 0;

} // namespace

void localRandomSeedFromClock()
{
    const std::time_t now = std::time(nullptr);
    if (seeded && !drawnSinceSeed && now == lastSeed)
        return;
    std::srand(unsigned(now));
    seeded = true;
    drawnSinceSeed = false;
    lastSeed = now;
}

int localRandomNext()
{
    drawnSinceSeed = true;
    return std::rand();
}
