// Global functions on classes, modules and the interpreter's memory:
// CLASSLOAD and its listings, FUNCTIONSDISPLAY, the MEMORYDISPLAY family,
// CONTEXTGET, CREATEOBJECT and MODULELOAD.
#include "localFunctionHandlers.h"

#include "localClassForTest.h"
#include "localDate.h"
#include "localInterpretatorUTF8.h"
#include "localMemoryDump.h"
#include "localOperatorCompiled.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <iostream>

namespace localFunctions {

namespace {

template <localClassDeclaration *(*declaration)()>
bool registerClass()
{
    return localContextUTF8::classRegister(declaration());
}

struct loadableClass {
    const char16_t *english;
    const char16_t *russian;
    localClassLoader loader;
};

// The classes CLASSLOAD knows by name. Those whose code lives above the core
// (the database classes, which bring DATABASETABLE and DATABASERECORD along,
// the table document and the 1C client) get their loader from their library
// through localClassLoaderSet.
loadableClass loadableClasses[] = {
    {u"TEST", u"ТЕСТ", registerClass<localClassForTest::classDeclaration>},
    {u"DATABASE", u"БАЗАДАННЫХ", nullptr},
    {u"VALUELIST", u"СПИСОКЗНАЧЕНИЙ", registerClass<localValueList::classDeclaration>},
    {u"VALUETABLE", u"ТАБЛИЦАЗНАЧЕНИЙ", registerClass<localValueTable::classDeclaration>},
    {u"TABLEDOCUMENT", u"ТАБЛИЧНЫЙДОКУМЕНТ", nullptr},
    {u"V77", nullptr, nullptr},
    {u"DATE", u"ДАТА", registerClass<localDateTime::classDeclaration>},
};

loadableClass *loadableFind(const std::u16string &nameUpper)
{
    for (loadableClass &loadable : loadableClasses)
        if (nameUpper == loadable.english || (loadable.russian != nullptr && nameUpper == loadable.russian))
            return &loadable;
    return nullptr;
}

bool oneName(localErrorType &status, const localValueVector &arguments, std::u16string &name)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    name = localString::trim(arguments[0]->localValueString);
    return true;
}

// An optional mask: the first argument if there is one.
std::u16string maskArgument(const localValueVector &arguments)
{
    return arguments.empty() ? std::u16string() : arguments[0]->localValueString.str();
}

// The log options of the memory listings: 1 and 2 write the listing to the log too.
bool toLog(const localValueDescription *option)
{
    return option->localValueNumber == 1.0 || option->localValueNumber == 2.0;
}

} // namespace

bool classLoad(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    std::u16string name;
    if (!oneName(status, arguments, name))
        return false;
    if (localContextUTF8::classRegistered(name)) {
        result->setBool(true);
        return true;
    }
    const loadableClass *loadable = loadableFind(localInterpretatorUTF8::nameToUpper(name));
    const bool loaded = loadable != nullptr && loadable->loader != nullptr && loadable->loader();
    result->setBool(loaded);
    if (!loaded)
        status = localErrorTypeCLASSunknown;
    return loaded;
}

bool classLoaded(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    std::u16string name;
    if (!oneName(status, arguments, name))
        return false;
    result->setBool(localContextUTF8::classRegistered(name));
    return true;
}

// The class's listing (names, description, members); the answer is an empty string.
bool classDisplay(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                  localValueDescription *result)
{
    std::u16string name;
    if (!oneName(status, arguments, name))
        return false;
    const localClassDeclaration *declaration = localContextUTF8::classFind(name);
    if (declaration == nullptr) {
        status = localErrorTypeCLASSunknown;
        return false;
    }
    localInterpretatorUTF8::dispClass(declaration->className);
    result->setString(std::u16string());
    return true;
}

bool classesDisplay(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 1, {localValueTypeSTR}))
        return false;
    localInterpretatorUTF8::dispClass(maskArgument(arguments));
    result->setVal(1.0);
    return true;
}

bool functionsDisplay(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 1, {localValueTypeSTR}))
        return false;
    localInterpretatorUTF8::dispFunc(context, maskArgument(arguments));
    result->setVal(1.0);
    return true;
}

// The counts and the counters of live objects, without the cells.
bool memoryDisplay(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                   localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 0, {}))
        return false;
    std::cout << localNarrow(memoryDisplayDataText(false)) << std::flush;
    result->setVal(1.0);
    return true;
}

bool memoryDisplayVars(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 2, {localValueTypeSTR, localValueTypeNUM}))
        return false;
    localInterpretatorUTF8::dispMemo(context, maskArgument(arguments));
    if (arguments.size() == 2 && toLog(arguments[1]))
        dispMemoToLog(context);
    result->setVal(1.0);
    return true;
}

bool memoryDisplayCells(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 1, {localValueTypeNUM}))
        return false;
    const std::u16string dump = memoryDisplayDataText(true);
    std::cout << localNarrow(dump) << std::flush;
    if (arguments.size() == 1 && toLog(arguments[0]))
        logWrite(dump.substr(0, dump.size() - 1)); // the log puts the last line end itself
    result->setVal(1.0);
    return true;
}

// The calling context as a value of the class CONTEXT.
bool contextGet(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 0, {}))
        return false;
    result->setObject(context, localContextUTF8::classDeclaration());
    return true;
}

bool createObject(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    localValueVector noArguments;
    localValueDescription *made = nullptr;
    if (!context->createObj(status, arguments[0]->localValueString, &noArguments, &made))
        return false;
    localValueDescription::localValueCopy(result, made);
    localValueRelease(made);
    return true;
}

// Runs a library text in the calling context, so its functions stay callable
// there. A text that runs to its end without returning 1 answers false; a
// fault fails the call.
bool moduleLoad(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                localValueDescription *result)
{
    std::u16string name;
    if (!oneName(status, arguments, name))
        return false;
    if (name.empty()) {
        status = localErrorTypeFILEnotFound;
        return false;
    }
    std::u16string text;
    if (!localString::fileRead(status, name, text, localString::possibleCodePageUTF8)) {
        LOCAL_DIAG(u"Error! " + localErrorText(status));
        return false;
    }
    if (textLoad(status, text, context)) {
        result->setBool(true);
        return true;
    }
    if (status == localErrorTypeOK || status == localErrorTypeRETURN || status == localErrorTypeRESULTnotOne) {
        status = localErrorTypeOK;
        result->setBool(false);
        return true;
    }
    LOCAL_DIAG(localErrorText(status));
    return false;
}

} // namespace localFunctions

void localClassLoaderSet(const std::u16string &nameUpper, localClassLoader loader)
{
    localFunctions::loadableClass *loadable = localFunctions::loadableFind(nameUpper);
    if (loadable == nullptr)
        exit_FAILURE(u"localClassLoaderSet() CLASSLOAD does not know the class [" + nameUpper + u"]");
    loadable->loader = loader;
}

std::vector<std::u16string> localClassLoadableNames()
{
    std::vector<std::u16string> names;
    for (const localFunctions::loadableClass &loadable : localFunctions::loadableClasses)
        names.emplace_back(loadable.english);
    return names;
}
