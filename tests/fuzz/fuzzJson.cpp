// The general JSON reader (PARSEJSON), the step that restores a value from
// what it read (VALUEFROMJSON), and the writer on the restored value: the
// writer's text must read and restore again, to a value of the same kind
// (a boolean comes back as a number) and, for numbers and strings, the same
// value, brackets and braces of strings gaining their backslash.
#include "localFuzzSupport.h"

#include "localJson.h"
#include "localValueList.h"

#include <cmath>

namespace {

std::u16string bracketsEscaped(const std::u16string &text)
{
    std::u16string out;
    for (const char16_t c : text) {
        if (c == u'[' || c == u']' || c == u'{' || c == u'}')
            out += u'\\';
        out += c;
    }
    return out;
}

void requireWrittenReadsBack(const localValueDescription &restored)
{
    const std::u16string written = localJson::valueToJson(restored);
    localErrorType status = localErrorTypeOK;
    localValueDescription *again = nullptr;
    localFuzz::require(localJson::valueFromJson(status, localContextUTF8::globalContext, written, &again),
                       "the writer's text does not read back");
    switch (restored.getType()) {
    case localValueTypeNUM: {
        const double a = restored.localValueNumber;
        const double b = again->localValueNumber;
        localFuzz::require(again->getType() == localValueTypeNUM && (a == b || (std::isnan(a) && std::isnan(b))),
                           "a number does not come back");
        break;
    }
    case localValueTypeSTR:
        localFuzz::require(again->getType() == localValueTypeSTR
                               && again->localValueString == bracketsEscaped(restored.localValueString),
                           "a string does not come back");
        break;
    case localValueTypeBOO:
        localFuzz::require(again->getType() == localValueTypeNUM, "a boolean does not come back as a number");
        break;
    default:
        localFuzz::require(again->getType() == restored.getType(), "an object does not come back");
        break;
    }
    localValueRelease(again);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    localFuzz::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::u16string text = localFuzz::textOf(data, size);
    const localFuzz::cellsReturn cells;

    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *parsed = nullptr;
    if (!localJson::scanStringParseJson(status, text, position, &parsed)) {
        localFuzz::require(parsed == nullptr, "a failed read left a value");
        localFuzz::require(status == localErrorTypeJSONparse || status == localErrorTypePRECISION
                               || status == localErrorTypeINTERNAL,
                           "a failed read gave an unexpected status");
        return 0;
    }
    localFuzz::require(position <= text.size(), "the reader ended past the text");
    const localValueList *list = localValueList::fromValue(parsed);
    localFuzz::require(list != nullptr, "the reader gave no list");

    localValueDescription *restored = nullptr;
    if (localJson::fromJsonValueList(status, localContextUTF8::globalContext, *list, &restored))
        requireWrittenReadsBack(*restored);
    localValueRelease(restored);
    localValueRelease(parsed);
    return 0;
}
