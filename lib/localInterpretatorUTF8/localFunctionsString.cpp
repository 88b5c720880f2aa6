// Global functions on strings: CHR, STRING, STRINGLEN, UPPER, the trims, the
// parts (left, right, find, replace), FIND and FORMAT.
#include "localFunctionHandlers.h"

#include "localJson.h"
#include "localString.h"

#include <algorithm>

namespace localFunctions {

namespace {

bool oneString(localErrorType &status, const localValueVector &arguments)
{
    return argsCheck(status, arguments, 1, 1, {localValueTypeSTR});
}

// A count of characters: a negative number, read as an unsigned 32-bit one,
// is larger than any string.
size_t characterCount(double number)
{
    return size_t(uint32_t(localTruncate32(number)));
}

typedef std::u16string (*stringMap)(const std::u16string &);

bool mapString(localErrorType &status, const localValueVector &arguments, localValueDescription *result,
               stringMap map)
{
    if (!oneString(status, arguments))
        return false;
    result->setString(map(arguments[0]->localValueString));
    return true;
}

void setPosition(localValueDescription *result, size_t found)
{
    result->setVal(found == std::u16string::npos ? 0.0 : double(found + 1));
}

} // namespace

bool stringChr(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeNUM}))
        return false;
    // Only the low 16 bits of the code count: 65601 is "A" too.
    result->setString(std::u16string(1, char16_t(uint32_t(localTruncate32(arguments[0]->localValueNumber)))));
    return true;
}

bool stringOf(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {argAny}))
        return false;
    result->setString(arguments[0]->toString());
    return true;
}

bool stringLen(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!oneString(status, arguments))
        return false;
    result->setVal(double(arguments[0]->localValueString.size()));
    return true;
}

bool stringUpper(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    return mapString(status, arguments, result, localString::toUpper);
}

bool stringTrimLeft(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    return mapString(status, arguments, result, localString::trimLeft);
}

bool stringTrimRight(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                     localValueDescription *result)
{
    return mapString(status, arguments, result, localString::trimRight);
}

bool stringTrimAll(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                   localValueDescription *result)
{
    return mapString(status, arguments, result, localString::trim);
}

bool stringPartLeft(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 2, {localValueTypeSTR, localValueTypeNUM}))
        return false;
    const localText &text = arguments[0]->localValueString;
    result->setString(text.part(0, std::min(characterCount(arguments[1]->localValueNumber), text.size())));
    return true;
}

bool stringPartRight(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 2, {localValueTypeSTR, localValueTypeNUM}))
        return false;
    const localText &text = arguments[0]->localValueString;
    const size_t count = std::min(characterCount(arguments[1]->localValueNumber), text.size());
    result->setString(text.part(text.size() - count, count));
    return true;
}

// The start counts from 1 (0 means the beginning too); a start past the
// place just behind the last character is out of range.
bool stringPartFind(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 3, {localValueTypeSTR, localValueTypeSTR, localValueTypeNUM}))
        return false;
    const std::u16string_view text = arguments[0]->localValueString.view();
    size_t from = 0;
    if (arguments.size() == 3) {
        const int32_t start = localTruncate32(arguments[2]->localValueNumber);
        if (start < 0) {
            status = localErrorTypePARAMvalue;
            return false;
        }
        from = start > 1 ? size_t(start) - 1 : 0;
        if (from > text.size()) {
            status = localErrorTypeRANGE;
            return false;
        }
    }
    setPosition(result, text.find(arguments[1]->localValueString.view(), from));
    return true;
}

// At most `n` replacements from the left (0 or none: all); the search goes on
// behind each inserted text, so a replacement is never replaced again.
bool stringPartReplace(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!argsCheck(status, arguments, 3, 4,
                   {localValueTypeSTR, localValueTypeSTR, localValueTypeSTR, localValueTypeNUM}))
        return false;
    const std::u16string_view text = arguments[0]->localValueString.view();
    const std::u16string_view what = arguments[1]->localValueString.view();
    const std::u16string_view with = arguments[2]->localValueString.view();
    if (what.empty()) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    int32_t limit = 0;
    if (arguments.size() == 4) {
        limit = localTruncate32(arguments[3]->localValueNumber);
        if (limit < 0) {
            status = localErrorTypePARAMtype;
            return false;
        }
    }
    std::u16string replaced;
    replaced.reserve(text.size());
    size_t from = 0;
    int32_t done = 0;
    for (size_t found = text.find(what); found != std::u16string::npos && (limit == 0 || done < limit);
         found = text.find(what, from)) {
        replaced.append(text, from, found - from);
        replaced += with;
        from = found + what.size();
        ++done;
    }
    replaced.append(text, from, std::u16string::npos);
    result->setString(std::move(replaced));
    return true;
}

// The start counts from 0 here; a negative one is ignored, and one at or past
// the end finds nothing.
bool stringFind(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 3, {localValueTypeSTR, localValueTypeSTR, localValueTypeNUM}))
        return false;
    const std::u16string_view text = arguments[0]->localValueString.view();
    size_t from = 0;
    if (arguments.size() == 3)
        from = size_t(std::max(localTruncate32(arguments[2]->localValueNumber), int32_t(0)));
    if (from >= text.size()) {
        result->setVal(0.0);
        return true;
    }
    setPosition(result, text.find(arguments[1]->localValueString.view(), from));
    return true;
}

bool stringFormat(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 2, {argAny, localValueTypeSTR}))
        return false;
    const localValueDescription *value = arguments[0];
    const std::u16string &format = arguments[1]->localValueString;
    if (value->getType() == localValueTypeNUM)
        result->setString(localString::formatNumber(value->localValueNumber, format));
    else if (value->getType() == localValueTypeSTR && format == u"JSON")
        result->setString(localJson::jsonEscape(value->localValueString));
    else
        result->setString(value->toString());
    return true;
}

} // namespace localFunctions
