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

// True when the calling thread has less stack left than a safe reserve.
// Every evaluation asks, so the question stays inline.
inline bool localStackExhausted()
{
    static thread_local const uintptr_t floor = localStackFloorOfThread();
    char here = 0;
    // The address of a local escapes through the integer conversion only.
    return uintptr_t(&here) < floor;
}

// Sets status 16 and prints one line naming `where`; answers false.
bool localStackReport(localErrorType &status, const char *where);

// Checks the stack; when it is exhausted, prints one line naming `where`,
// sets status 16 and answers false.
inline bool localStackCheck(localErrorType &status, const char *where)
{
    return !localStackExhausted() || localStackReport(status, where);
}

#endif
