#include "localClassDeclaration.h"

#include "localInterpretatorUTF8.h"
#include "localScratch.h"

int64_t localClassDeclaration::counterStaticTotal = 0;

localClassDeclaration::localClassDeclaration()
{
    ++counterStaticTotal;
}

localClassDeclaration::~localClassDeclaration()
{
    for (localClassMember *member : members)
        delete member;
    --counterStaticTotal;
}

void localClassDeclaration::memberAdd(const std::u16string &name, localMethodFunction exec,
                                      localAttribSetFunction set, localAttribGetFunction get)
{
    localClassMember *member = new localClassMember{name, exec, set, get};
    members.push_back(member);
    memberIndex.emplace(name, member); // keeps the first of equal names
    const size_t sign = memberSign(name);
    memberSigns[sign / 64] |= uint64_t(1) << (sign % 64);
}

void localClassDeclaration::memberAdd2(const std::u16string &name, const std::u16string &name2,
                                       localMethodFunction exec, localAttribSetFunction set,
                                       localAttribGetFunction get)
{
    memberAdd(name, exec, set, get);
    memberAdd(name2, exec, set, get);
}

const localClassMember *localClassDeclaration::memberFind(const std::u16string &name) const
{
    const size_t sign = memberSign(name);
    if ((memberSigns[sign / 64] & (uint64_t(1) << (sign % 64))) == 0)
        return nullptr;
    const auto found = memberIndex.find(name);
    return found == memberIndex.end() ? nullptr : found->second;
}

bool localClassDeclaration::attrGet(localErrorType &status, localContextUTF8 *context, void *object,
                                    const std::u16string &name, const std::u16string *nameUpper,
                                    localValueDescription **result)
{
    localResultMustBeNull(result, "localClassDeclaration::attrGet()");
    const localClassMember *member = memberFind(name);
    localAttribGetFunction function = nullptr;
    if (member != nullptr) {
        if (member->GET == nullptr) {
            status = localErrorTypeATTRIBUTEnoGET;
            return false;
        }
        function = member->GET;
    } else if (object == nullptr) {
        status = localErrorTypeSTATICATTRIBUTEunknown;
        return false;
    } else if (nameUpper != nullptr && localClassAttribFallbackUpper != nullptr) {
        void *slot = object;
        return localClassAttribFallbackUpper(status, context, &slot, name, *nameUpper, result);
    } else {
        function = localClassAttribFallback;
    }
    if (function == nullptr) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    void *slot = object;
    return function(status, context, &slot, name, result);
}

bool localClassDeclaration::attrSet(localErrorType &status, localContextUTF8 *context, void *object,
                                    const std::u16string &name, localValueDescription *value)
{
    const localClassMember *member = memberFind(name);
    if (member == nullptr) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    if (member->SET == nullptr) {
        status = localErrorTypeATTRIBUTEnoSET;
        return false;
    }
    void *slot = object;
    return member->SET(status, context, &slot, name, value);
}

bool localClassDeclaration::methodExec(localErrorType &status, localContextUTF8 *context, void *object,
                                       const std::u16string &name, localValueVector *arguments,
                                       localValueDescription **result)
{
    localResultMustBeNull(result, "localClassDeclaration::methodExec()");
    const localScratch<std::u16string> upperStorage;
    return methodExecUpper(status, context, object, localInterpretatorUTF8::nameToUpperInto(name, *upperStorage),
                           arguments, result);
}

bool localClassDeclaration::methodExecUpper(localErrorType &status, localContextUTF8 *context, void *object,
                                            const std::u16string &nameUpper, localValueVector *arguments,
                                            localValueDescription **result)
{
    return methodExecMember(status, context, object, memberFind(nameUpper), nameUpper, arguments, result);
}

bool localClassDeclaration::methodExecMember(localErrorType &status, localContextUTF8 *context, void *object,
                                             const localClassMember *member, const std::u16string &nameUpper,
                                             localValueVector *arguments, localValueDescription **result)
{
    localResultMustBeNull(result, "localClassDeclaration::methodExec()");
    if (member != nullptr && member->CALL != nullptr) {
        void *slot = object;
        return member->CALL(status, context, &slot, *member, arguments, result);
    }
    localMethodFunction function = member != nullptr ? member->EXEC : nullptr;
    if (object == nullptr) {
        if (function == nullptr) {
            status = nameUpper.empty() ? localErrorTypeCONSTRUCTORunknown : localErrorTypeSTATICMETHODunknown;
            return false;
        }
    } else {
        if (function == nullptr)
            function = localClassMethodFallback;
        if (function == nullptr) {
            status = localErrorTypeMETHODunknown;
            return false;
        }
    }
    void *slot = object;
    return function(status, context, &slot, nameUpper, arguments, result);
}

void *localDispatchBegin(localErrorType &status, void **object, localValueDescription **result, const char *routine)
{
    localResultMustBeNull(result, routine);
    *result = localValueNew();
    status = localErrorTypeOK;
    return *object;
}

bool localArgCount(localErrorType &status, const localValueVector *arguments, size_t count)
{
    if (arguments->size() == count)
        return true;
    status = localErrorTypePARAMcount;
    return false;
}

bool localArgCountRange(localErrorType &status, const localValueVector *arguments, size_t low, size_t high)
{
    if (arguments->size() >= low && arguments->size() <= high)
        return true;
    status = localErrorTypePARAMcount;
    return false;
}

bool localArgType(localErrorType &status, const localValueVector *arguments, size_t index, int32_t type)
{
    if ((*arguments)[index]->getType() == type)
        return true;
    status = localErrorTypePARAMtype;
    return false;
}

bool localArgOptionalString(localErrorType &status, const localValueVector &arguments, size_t index,
                            std::u16string &text)
{
    if (arguments.size() <= index)
        return true;
    if (!localArgType(status, &arguments, index, localValueTypeSTR))
        return false;
    text = arguments[index]->localValueString;
    return true;
}
