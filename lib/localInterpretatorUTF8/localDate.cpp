#include "localDate.h"

#include <cstdio>
#include <iterator>

namespace {

bool methodToString(localErrorType &status, localDateTime &date, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(dateTimeToString(date.now));
    return true;
}

const localDateTime::member members[] = {
    {u"TOSTRING", u"СТРОКА", methodToString},
};

} // namespace

const localNativeClassShape<localDateTime> &localDateTime::classShape()
{
    // The one declaration with a short name.
    static const localNativeClassShape<localDateTime> shape = {
        u"DATE", u"ДАТА", u"Дата", u"класс ДАТА", "localDateTime::classImplementationMethodFunction()",
        members, std::size(members)};
    return shape;
}

bool localDateTime::construct(localErrorType &, localContextUTF8 *, localValueVector *,
                              localValueDescription *result)
{
    putInCell(new localDateTime(std::time(nullptr)), result);
    return true;
}

std::u16string dateTimeToString(time_t moment)
{
    struct tm local = {};
    localtime_r(&moment, &local);
    char buffer[48];
    const int length = std::snprintf(buffer, sizeof buffer, "%04d%02d%02d:%02d:%02d:%02d", local.tm_year + 1900,
                                     local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return std::u16string(buffer, buffer + length);
}
