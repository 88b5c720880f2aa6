// The machine stack is the only limit of recursion in the language: a
// function calling itself, brackets nested in an expression, blocks nested
// in a program. The recursive routines ask here before going one level
// deeper, so that running out of stack becomes a status instead of a crash.
#ifndef LOCALSTACK_H
#define LOCALSTACK_H

#include "localErrorType.h"

#include <cstdint>

// The lowest address the calling thread may reach and keep a safe reserve
// below; worked out from the thread's attributes.
uintptr_t localStackFloorOfThread();

// The calling thread's floor once worked out (1 when it cannot be, which
// nothing reaches), 0 before. Initialised with a constant, so that reading
// it is a plain load of thread storage.
inline thread_local uintptr_t localStackFloor = 0;

// True when the calling thread has less stack left than a safe reserve.
// Every evaluation asks, so the question stays inline.
[[gnu::always_inline]] inline bool localStackExhausted()
{
    if (localStackFloor == 0) {
        const uintptr_t worked = localStackFloorOfThread();
        localStackFloor = worked != 0 ? worked : 1;
    }
    const uintptr_t floor = localStackFloor;
    char here = 0;
    // The address of a local escapes through the integer conversion only.
    return uintptr_t(&here) < floor;
}

// Sets status 16 and prints one line naming `where`; answers false.
bool localStackReport(localErrorType &status, const char *where);

// Checks the stack; when it is exhausted, prints one line naming `where`,
// sets status 16 and answers false.
[[gnu::always_inline]] inline bool localStackCheck(localErrorType &status, const char *where)
{
    return !localStackExhausted() || localStackReport(status, where);
}

#endif
