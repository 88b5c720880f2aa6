// The one source of RAND's numbers: the C library's rand(), seeded from the
// clock by every context's init.
#ifndef LOCALRANDOM_H
#define LOCALRANDOM_H

// srand with the current time in seconds. Seeding again with the second of
// the last seed, when no number was drawn since, would only set the same
// state again, so it is skipped: a function call makes a context, and glibc's
// srand costs more than the rest of the call.
void localRandomSeedFromClock();

// The next rand().
int localRandomNext();

#endif
