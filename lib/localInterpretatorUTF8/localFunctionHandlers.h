// The handlers behind the rows of the global function table, grouped by the
// file that holds them, and the argument checks they share. Only the table
// (localGlobalFunctions.cpp) and the handler files include this header.
#ifndef LOCALFUNCTIONHANDLERS_H
#define LOCALFUNCTIONHANDLERS_H

#include "localGlobalFunctions.h"

#include <cstdint>
#include <initializer_list>

namespace localFunctions {

// A place of the argument list that takes every kind.
constexpr int32_t argAny = -1;

// The count within [low, high] (else 31), then the kind of every given
// argument from the left against `kinds` (else 33); places past the end of
// `kinds` take every kind.
bool argsCheck(localErrorType &status, const localValueVector &arguments, size_t low, size_t high,
               std::initializer_list<int32_t> kinds);

// Fails with status 26: the work of the row needs a screen, and no widget
// library has registered its handler.
bool graphicalOnly(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                   localValueDescription *result);

#define LOCAL_FUNCTION_HANDLER(name)                                                                                 \
    bool name(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,                       \
              localValueDescription *result)

// localFunctionsNumber.cpp
LOCAL_FUNCTION_HANDLER(numberAbs);
LOCAL_FUNCTION_HANDLER(numberInt);
LOCAL_FUNCTION_HANDLER(numberRound);
LOCAL_FUNCTION_HANDLER(numberSqrt);
LOCAL_FUNCTION_HANDLER(valueMax);
LOCAL_FUNCTION_HANDLER(valueMin);
LOCAL_FUNCTION_HANDLER(numberPi);
LOCAL_FUNCTION_HANDLER(numberRand);
LOCAL_FUNCTION_HANDLER(numberOf);

// localFunctionsString.cpp
LOCAL_FUNCTION_HANDLER(stringChr);
LOCAL_FUNCTION_HANDLER(stringOf);
LOCAL_FUNCTION_HANDLER(stringLen);
LOCAL_FUNCTION_HANDLER(stringUpper);
LOCAL_FUNCTION_HANDLER(stringTrimLeft);
LOCAL_FUNCTION_HANDLER(stringTrimRight);
LOCAL_FUNCTION_HANDLER(stringTrimAll);
LOCAL_FUNCTION_HANDLER(stringPartLeft);
LOCAL_FUNCTION_HANDLER(stringPartRight);
LOCAL_FUNCTION_HANDLER(stringPartFind);
LOCAL_FUNCTION_HANDLER(stringPartReplace);
LOCAL_FUNCTION_HANDLER(stringFind);
LOCAL_FUNCTION_HANDLER(stringFormat);

// localFunctionsValue.cpp
LOCAL_FUNCTION_HANDLER(valueIif);
LOCAL_FUNCTION_HANDLER(valueIsEmpty);
LOCAL_FUNCTION_HANDLER(valueIsValueList);
LOCAL_FUNCTION_HANDLER(valueIsValueTable);
LOCAL_FUNCTION_HANDLER(valueTypeAsString);
LOCAL_FUNCTION_HANDLER(valueToJson);
LOCAL_FUNCTION_HANDLER(valueFromJson);
LOCAL_FUNCTION_HANDLER(jsonParse);

// localFunctionsFile.cpp
LOCAL_FUNCTION_HANDLER(fileExists);
LOCAL_FUNCTION_HANDLER(fileRemove);
LOCAL_FUNCTION_HANDLER(pathExists);
LOCAL_FUNCTION_HANDLER(directoryFiles);
LOCAL_FUNCTION_HANDLER(stringFromFile);
LOCAL_FUNCTION_HANDLER(stringAppendToFile);
LOCAL_FUNCTION_HANDLER(base64AppendToFile);
LOCAL_FUNCTION_HANDLER(base64FromFile);
LOCAL_FUNCTION_HANDLER(programPath);
LOCAL_FUNCTION_HANDLER(workingDirectory);

// localFunctionsClass.cpp
LOCAL_FUNCTION_HANDLER(classLoad);
LOCAL_FUNCTION_HANDLER(classLoaded);
LOCAL_FUNCTION_HANDLER(classDisplay);
LOCAL_FUNCTION_HANDLER(classesDisplay);
LOCAL_FUNCTION_HANDLER(functionsDisplay);
LOCAL_FUNCTION_HANDLER(memoryDisplay);
LOCAL_FUNCTION_HANDLER(memoryDisplayVars);
LOCAL_FUNCTION_HANDLER(memoryDisplayCells);
LOCAL_FUNCTION_HANDLER(contextGet);
LOCAL_FUNCTION_HANDLER(createObject);
LOCAL_FUNCTION_HANDLER(moduleLoad);

// localFunctionsSystem.cpp
LOCAL_FUNCTION_HANDLER(isWindows);
LOCAL_FUNCTION_HANDLER(logWriteValue);
LOCAL_FUNCTION_HANDLER(message);
LOCAL_FUNCTION_HANDLER(messageBoxHeadless);
LOCAL_FUNCTION_HANDLER(waitEvents);
LOCAL_FUNCTION_HANDLER(seconds20000101);
LOCAL_FUNCTION_HANDLER(secondsThisProcess);
LOCAL_FUNCTION_HANDLER(dateTimeSystem);
LOCAL_FUNCTION_HANDLER(colorNumber);
LOCAL_FUNCTION_HANDLER(sys);
LOCAL_FUNCTION_HANDLER(contextToString);

#undef LOCAL_FUNCTION_HANDLER

} // namespace localFunctions

#endif
