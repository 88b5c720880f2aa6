// Global functions that look at values and their JSON form: IIF, the
// emptiness test, the class tests, the type word, VALUETOJSON, VALUEFROMJSON
// and PARSEJSON.
#include "localFunctionHandlers.h"

#include "localJson.h"
#include "localValueList.h"
#include "localValueTable.h"

namespace localFunctions {

namespace {

bool oneValue(localErrorType &status, const localValueVector &arguments)
{
    return argsCheck(status, arguments, 1, 1, {argAny});
}

// Hands a value made by a routine of the result convention over to the row's
// result cell.
void resultTake(localValueDescription *result, localValueDescription *&made)
{
    localValueDescription::localValueCopy(result, made);
    localValueRelease(made);
}

} // namespace

// Both branches have been evaluated by the time the call is made.
bool valueIif(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
              localValueDescription *result)
{
    if (!argsCheck(status, arguments, 3, 3, {localValueTypeBOO, argAny, argAny}))
        return false;
    localValueDescription::localValueCopy(result, arguments[0]->isTrue() ? arguments[1] : arguments[2]);
    return true;
}

bool valueIsEmpty(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!oneValue(status, arguments))
        return false;
    result->setBool(arguments[0]->isEmpty());
    return true;
}

bool valueIsValueList(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!oneValue(status, arguments))
        return false;
    result->setBool(localValueList::fromValue(arguments[0]) != nullptr);
    return true;
}

bool valueIsValueTable(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!oneValue(status, arguments))
        return false;
    result->setBool(localValueTable::fromValue(arguments[0]) != nullptr);
    return true;
}

bool valueTypeAsString(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!oneValue(status, arguments))
        return false;
    const localValueDescription *value = arguments[0];
    if (value->getType() == localValueTypeOBJ && value->localValueClass != nullptr)
        result->setString(value->localValueClass->className2);
    else
        result->setString(localValueTypeWord(value->getType()));
    return true;
}

bool valueToJson(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!oneValue(status, arguments))
        return false;
    std::u16string text;
    if (!localJson::valueToJsonAppend(status, text, *arguments[0]))
        return false;
    result->setString(std::move(text));
    return true;
}

bool valueFromJson(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                   localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    localValueDescription *made = nullptr;
    if (!localJson::valueFromJson(status, context, arguments[0]->localValueString, &made)) {
        localValueRelease(made);
        return false;
    }
    resultTake(result, made);
    return true;
}

// A text that does not parse is no fault here: the answer is the number 0.
bool jsonParse(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    localValueDescription *made = nullptr;
    size_t position = 0;
    if (!localJson::scanStringParseJson(status, arguments[0]->localValueString, position, &made)) {
        localValueRelease(made);
        status = localErrorTypeOK;
        return true;
    }
    resultTake(result, made);
    return true;
}

} // namespace localFunctions
