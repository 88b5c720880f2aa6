#include "localClassForTest.h"

#include "localGlobalFunctions.h"
#include "localString.h"

#include <iterator>

namespace {

bool noArguments(localErrorType &status, const localValueVector &arguments)
{
    return localArgCount(status, &arguments, 0);
}

bool methodGetInt(localErrorType &status, localClassForTest &test, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setVal(test.attribInt);
    return true;
}

bool methodGetIntPlus(localErrorType &status, localClassForTest &test, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    result->setVal(test.attribInt + arguments[0]->localValueNumber);
    return true;
}

bool methodGetIntPlusOne(localErrorType &status, localClassForTest &test, localValueVector &arguments,
                         localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setVal(test.attribInt + 1.0);
    return true;
}

bool methodToString(localErrorType &status, localClassForTest &test, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setString(u"TEST ATTRIBINT=" + localNumberToWide(test.attribInt));
    return true;
}

const localClassForTest::member members[] = {
    {u"SELF", nullptr, nullptr, localClassForTest::attributeGet, nullptr},
    {u"ATTRIBINT", nullptr, nullptr, localClassForTest::attributeGet, localClassForTest::attributeSet},
    {u"GETINT", nullptr, methodGetInt},
    {u"GETINTPLUS", nullptr, methodGetIntPlus},
    {u"GETINTPLUSONE", nullptr, methodGetIntPlusOne},
    {u"TOSTRING", nullptr, methodToString},
};

} // namespace

const localNativeClassShape<localClassForTest> &localClassForTest::classShape()
{
    static const localNativeClassShape<localClassForTest> shape = {
        u"TEST", u"ТЕСТ", nullptr, u"тестовый класс для отладки объектно-ориентированного программирования",
        "localClassForTest::classImplementationMethodFunction()", members, std::size(members)};
    return shape;
}

bool localClassForTest::attributeGet(localErrorType &status, localContextUTF8 *, void **object,
                                     const std::u16string &name, localValueDescription **result)
{
    localResultMustBeNull(result, "localClassForTest::attributeGet()");
    localClassForTest *test = static_cast<localClassForTest *>(*object);
    if (test == nullptr) {
        status = localErrorTypeSTATICATTRIBUTEunknown;
        return false;
    }
    *result = localValueNew();
    if (name == u"SELF")
        (*result)->setObject(test, classDeclaration());
    else
        (*result)->setVal(test->attribInt);
    return true;
}

bool localClassForTest::attributeSet(localErrorType &status, localContextUTF8 *, void **object,
                                     const std::u16string &, localValueDescription *value)
{
    localClassForTest *test = static_cast<localClassForTest *>(*object);
    if (test == nullptr) {
        status = localErrorTypeSTATICATTRIBUTEunknown;
        return false;
    }
    if (value->getType() != localValueTypeNUM) {
        status = localErrorTypePARAMtype;
        return false;
    }
    test->attribInt = localTruncate32(value->localValueNumber);
    return true;
}
