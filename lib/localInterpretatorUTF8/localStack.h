// The machine stack is the only limit of recursion in the language: a
// function calling itself, brackets nested in an expression, blocks nested
// in a program. The recursive routines ask here before going one level
// deeper, so that running out of stack becomes a status instead of a crash.
#ifndef LOCALSTACK_H
#define LOCALSTACK_H

#include "localErrorType.h"

// True when the calling thread has less stack left than a safe reserve.
bool localStackExhausted();

// Checks the stack; when it is exhausted, prints one line naming `where`,
// sets status 16 and answers false.
bool localStackCheck(localErrorType &status, const char *where);

#endif
