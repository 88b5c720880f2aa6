#include "localGlobalFunctions.h"

#include "localInterpretatorUTF8.h"

#include <iostream>
#include <unordered_map>

namespace {

bool contextToString(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(context->toString());
    return true;
}

bool message(localErrorType &status, localContextUTF8 *, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1))
        return false;
    std::string line = localNarrow(arguments[0]->toString());
    line += '\n';
    std::cout << line << std::flush;
    result->setVal(1.0);
    return true;
}

const localGlobalFunctionRow rows[] = {
    {u"TRUE", u"ИСТИНА", nullptr, true},
    {u"FALSE", u"ЛОЖЬ", nullptr, true},
    {u"MESSAGE", u"СООБЩИТЬ", message},
    {u"TOSTRING", nullptr, contextToString},
};

struct rowIndex {
    std::unordered_map<std::u16string, localGlobalFunctionHandler> byName;
    rowIndex()
    {
        for (const localGlobalFunctionRow &row : rows) {
            if (row.handler == nullptr)
                continue;
            for (const char16_t *name : {row.english, row.russian})
                if (name != nullptr && *name != 0)
                    byName.emplace(name, row.handler);
        }
    }
};

rowIndex &index()
{
    static rowIndex built;
    return built;
}

} // namespace

const localGlobalFunctionRow *localGlobalFunctionRows(size_t &count)
{
    count = sizeof rows / sizeof rows[0];
    return rows;
}

localGlobalFunctionHandler localGlobalFunctionFind(const std::u16string &nameUpper)
{
    const auto found = index().byName.find(nameUpper);
    return found == index().byName.end() ? nullptr : found->second;
}

void localGlobalFunctionGraphicalSet(const std::u16string &nameUpper, localGlobalFunctionHandler handler)
{
    index().byName[nameUpper] = handler;
}
