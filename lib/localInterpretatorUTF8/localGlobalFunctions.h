// The global functions of the language: the methods of the class CONTEXT.
// Each row names a function in English and Russian (either may be empty) and
// its handler; the rows stand in their documented order, which listings and
// the highlighter depend on.
#ifndef LOCALGLOBALFUNCTIONS_H
#define LOCALGLOBALFUNCTIONS_H

#include "localContextUTF8.h"

#include <vector>

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
// Where the handler of a name stands, or null for a name of no row: the
// place stays, its handler may be replaced.
const localGlobalFunctionHandler *localGlobalFunctionPlace(const std::u16string &nameUpper);

// The language's conversion of a number to an integer: truncation toward zero
// to 32 bits. NaN and numbers out of range give INT32_MIN, as the processor's
// own conversion does.
int32_t localTruncate32(double value);

// Functions whose work lives in a library above the core register their
// handlers here at start-up: the widget library those whose work is a window,
// the network library HTTP. Until then they answer status 26. Either name
// of a row sets the handler of both; a name that no row declares is a fault
// of the program.
void localGlobalFunctionGraphicalSet(const std::u16string &nameUpper, localGlobalFunctionHandler handler);

// CLASSLOAD knows the names of classes whose code lives in libraries above the
// core (the database classes, the table document, the 1C client). Each such
// library hands in the function that registers its declarations; until then
// CLASSLOAD answers status 14 for the name. Either name of the class will do.
typedef bool (*localClassLoader)();
void localClassLoaderSet(const std::u16string &nameUpper, localClassLoader loader);
// The English names of the classes CLASSLOAD knows, in its order.
std::vector<std::u16string> localClassLoadableNames();

#endif
