// The global functions of the language: the methods of the class CONTEXT.
// Each row names a function in English and Russian (either may be empty) and
// its handler; the rows stand in their documented order, which listings and
// the highlighter depend on.
#ifndef LOCALGLOBALFUNCTIONS_H
#define LOCALGLOBALFUNCTIONS_H

#include "localContextUTF8.h"

// A handler gets the argument vector (never null) and a fresh result cell
// (number 0); it checks count, then kinds, then values (statuses 31, 33, 32).
typedef bool (*localGlobalFunctionHandler)(localErrorType &status, localContextUTF8 *context,
                                           localValueVector &arguments, localValueDescription *result);

struct localGlobalFunctionRow {
    const char16_t *english;
    const char16_t *russian;
    localGlobalFunctionHandler handler; // null: declared but not answered (status 27)
    // A constant of the context (TRUE, FALSE...): a member with an attribute
    // reader and no EXEC.
    bool attribute = false;
};

// The rows in declared order.
const localGlobalFunctionRow *localGlobalFunctionRows(size_t &count);
// The handler of a name (upper case), or null.
localGlobalFunctionHandler localGlobalFunctionFind(const std::u16string &nameUpper);

// Functions whose work is a window register their handlers here (the widget
// library does so at start-up). Until then they answer status 26.
void localGlobalFunctionGraphicalSet(const std::u16string &nameUpper, localGlobalFunctionHandler handler);

#endif
