// Global functions on numbers: ABS, INT, ROUND, SQRT, MAX, MIN, PI, RAND, NUMBER.
#include "localFunctionHandlers.h"

#include "localJson.h"
#include "localRandom.h"

#include <cmath>
#include <cstdlib>

namespace localFunctions {

namespace {

bool oneNumber(localErrorType &status, const localValueVector &arguments)
{
    return argsCheck(status, arguments, 1, 1, {localValueTypeNUM});
}

// round(x * 10^n) / 10^n in extended precision. A scale past the range of
// the type leaves nothing to round at that place.
double roundTo(double value, int32_t decimals)
{
    const long double scale = std::pow(10.0L, static_cast<long double>(decimals));
    if (scale == 0.0L)
        return 0.0;
    const long double scaled = value * scale;
    if (!std::isfinite(scaled))
        return value;
    return double(std::round(scaled) / scale);
}

// True when `candidate` beats `best` (strictly, so a tie keeps the earliest).
bool beats(const localValueDescription *candidate, const localValueDescription *best, bool greatest)
{
    if (candidate->getType() == localValueTypeSTR)
        return greatest ? candidate->localValueString > best->localValueString
                        : candidate->localValueString < best->localValueString;
    return greatest ? candidate->localValueNumber > best->localValueNumber
                    : candidate->localValueNumber < best->localValueNumber;
}

// MAX and MIN: all arguments of the first one's kind, no objects.
bool extreme(localErrorType &status, const localValueVector &arguments, localValueDescription *result,
             bool greatest)
{
    if (arguments.empty()) {
        status = localErrorTypePARAMcount;
        return false;
    }
    const int32_t kind = arguments[0]->getType();
    for (const localValueDescription *argument : arguments) {
        if (argument->getType() != kind
            || (kind != localValueTypeNUM && kind != localValueTypeSTR && kind != localValueTypeBOO)) {
            status = localErrorTypePARAMtype;
            return false;
        }
    }
    const localValueDescription *best = arguments[0];
    for (const localValueDescription *argument : arguments)
        if (beats(argument, best, greatest))
            best = argument;
    localValueDescription::localValueCopy(result, best);
    return true;
}

} // namespace

bool numberAbs(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!oneNumber(status, arguments))
        return false;
    result->setVal(std::fabs(arguments[0]->localValueNumber));
    return true;
}

bool numberInt(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!oneNumber(status, arguments))
        return false;
    result->setVal(localTruncate32(arguments[0]->localValueNumber));
    return true;
}

// The third argument is accepted and ignored; a second one that is not a
// number means no decimals.
bool numberRound(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 3, {localValueTypeNUM, argAny, argAny}))
        return false;
    int32_t decimals = 0;
    if (arguments.size() > 1 && arguments[1]->getType() == localValueTypeNUM)
        decimals = localTruncate32(arguments[1]->localValueNumber);
    result->setVal(roundTo(arguments[0]->localValueNumber, decimals));
    return true;
}

bool numberSqrt(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!oneNumber(status, arguments))
        return false;
    const double value = arguments[0]->localValueNumber;
    if (value < 0.0) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    // Both zeros give 0, never "-0".
    result->setVal(value == 0.0 ? 0.0 : std::sqrt(value));
    return true;
}

bool valueMax(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    return extreme(status, arguments, result, true);
}

bool valueMin(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    return extreme(status, arguments, result, false);
}

bool numberPi(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 0, {}))
        return false;
    result->setVal(3.141592653589793);
    return true;
}

// rand() reduced to the 0..32767 of the platform the language was made on,
// divided in single precision, so the result stays within [0, 1].
bool numberRand(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 0, {}))
        return false;
    result->setVal(float(localRandomNext() % 32768) / 32767.0f);
    return true;
}

bool numberOf(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {argAny}))
        return false;
    const localValueDescription *value = arguments[0];
    switch (value->getType()) {
    case localValueTypeNUM:
        result->setVal(value->localValueNumber);
        return true;
    case localValueTypeBOO:
        result->setVal(value->isTrue() ? 1.0 : 0.0);
        return true;
    case localValueTypeSTR:
        result->setVal(localJson::numberFromText(value->localValueString));
        return true;
    default:
        status = localErrorTypePARAMtype;
        return false;
    }
}

} // namespace localFunctions
