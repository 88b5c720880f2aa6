#include "localClassForTest.h"

#include "localGlobalFunctions.h"
#include "localString.h"

int64_t localClassForTest::counterStaticTotal = 0;

localClassForTest::localClassForTest()
{
    ++counterStaticTotal;
}

localClassForTest::~localClassForTest()
{
    --counterStaticTotal;
}

localClassDeclaration *localClassForTest::classDeclaration()
{
    static localClassDeclaration *declaration = nullptr;
    if (declaration != nullptr)
        return declaration;
    declaration = new localClassDeclaration;
    declaration->className = u"TEST";
    declaration->className2 = u"ТЕСТ";
    declaration->description = u"тестовый класс для отладки объектно-ориентированного программирования";
    declaration->localObjectLinkFunction = objectLinkFunction;
    declaration->memberAdd(u"", classImplementationMethodFunction);
    declaration->memberAdd(u"~", classImplementationMethodFunction);
    declaration->memberAdd(u"SELF", nullptr, nullptr, attributeGet);
    declaration->memberAdd(u"ATTRIBINT", nullptr, attributeSet, attributeGet);
    declaration->memberAdd(u"GETINT", classImplementationMethodFunction);
    declaration->memberAdd(u"GETINTPLUS", classImplementationMethodFunction);
    declaration->memberAdd(u"GETINTPLUSONE", classImplementationMethodFunction);
    declaration->memberAdd(u"TOSTRING", classImplementationMethodFunction);
    return declaration;
}

bool localClassForTest::classImplementationMethodFunction(localErrorType &status, localContextUTF8 *, void **object,
                                                          const std::u16string &name, localValueVector *arguments,
                                                          localValueDescription **result)
{
    localClassForTest *test = static_cast<localClassForTest *>(
        localDispatchBegin(status, object, result, "localClassForTest::classImplementationMethodFunction()"));
    if (test == nullptr) {
        if (!name.empty()) {
            status = localErrorTypeMETHODnotDeclared;
            return false;
        }
        (*result)->setObject(new localClassForTest, classDeclaration());
        return true;
    }
    if (name == u"~") {
        delete test;
        return true;
    }
    if (arguments == nullptr) {
        status = localErrorTypeINTERNAL;
        return false;
    }
    if (name == u"GETINTPLUS") {
        if (!localArgCount(status, arguments, 1) || !localArgType(status, arguments, 0, localValueTypeNUM))
            return false;
        (*result)->setVal(test->attribInt + (*arguments)[0]->localValueNumber);
        return true;
    }
    if (!localArgCount(status, arguments, 0))
        return false;
    if (name == u"GETINT") {
        (*result)->setVal(test->attribInt);
    } else if (name == u"GETINTPLUSONE") {
        (*result)->setVal(test->attribInt + 1.0);
    } else if (name == u"TOSTRING") {
        (*result)->setString(u"TEST ATTRIBINT=" + localNumberToWide(test->attribInt));
    } else {
        status = localErrorTypeMETHODunknown;
        return false;
    }
    return true;
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

int64_t localClassForTest::objectLinkFunction(void **object, int delta)
{
    localClassForTest *test = static_cast<localClassForTest *>(*object);
    test->objectLinks += delta;
    return test->objectLinks;
}
