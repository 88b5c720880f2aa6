#include "localDate.h"

#include <cstdio>

int64_t localDateTime::counterStaticTotal = 0;

localDateTime::localDateTime(time_t moment) : now(moment)
{
    ++counterStaticTotal;
}

localDateTime::~localDateTime()
{
    --counterStaticTotal;
}

localClassDeclaration *localDateTime::classDeclaration()
{
    static localClassDeclaration *declaration = nullptr;
    if (declaration != nullptr)
        return declaration;
    declaration = new localClassDeclaration;
    declaration->className = u"DATE";
    declaration->className2 = u"ДАТА";
    // The one declaration with a short name.
    declaration->reserved1 = u"Дата";
    declaration->description = u"класс ДАТА";
    declaration->localObjectLinkFunction = objectLinkFunction;
    declaration->memberAdd(u"", classImplementationMethodFunction);
    declaration->memberAdd(u"~", classImplementationMethodFunction);
    declaration->memberAdd2(u"TOSTRING", u"СТРОКА", classImplementationMethodFunction);
    return declaration;
}

bool localDateTime::classImplementationMethodFunction(localErrorType &status, localContextUTF8 *, void **object,
                                                      const std::u16string &name, localValueVector *arguments,
                                                      localValueDescription **result)
{
    localDateTime *date = static_cast<localDateTime *>(
        localDispatchBegin(status, object, result, "localDateTime::classImplementationMethodFunction()"));
    if (date == nullptr) {
        if (!name.empty()) {
            status = localErrorTypeMETHODnotDeclared;
            return false;
        }
        // The moment of creation is kept: TOSTRING shows it, not the time of the call.
        (*result)->setObject(new localDateTime(std::time(nullptr)), classDeclaration());
        return true;
    }
    if (name == u"~") {
        delete date;
        return true;
    }
    if (arguments == nullptr) {
        status = localErrorTypeINTERNAL;
        return false;
    }
    if (name == u"TOSTRING" || name == u"СТРОКА") {
        if (!localArgCount(status, arguments, 0))
            return false;
        (*result)->setString(dateTimeToString(date->now));
        return true;
    }
    status = localErrorTypeMETHODunknown;
    return false;
}

int64_t localDateTime::objectLinkFunction(void **object, int delta)
{
    localDateTime *date = static_cast<localDateTime *>(*object);
    date->objectLinks += delta;
    return date->objectLinks;
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
