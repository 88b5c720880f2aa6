// Global functions on files and paths, all through the text layer: the
// tests, FILES, reading and appending text and Base64, the program's path
// and the working directory.
#include "localFunctionHandlers.h"

#include "localString.h"
#include "localValueList.h"

#include <QDir>
#include <QStringList>

namespace localFunctions {

namespace {

typedef bool (*nameTest)(const std::u16string &);

bool testName(localErrorType &status, const localValueVector &arguments, localValueDescription *result,
              nameTest test)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    result->setBool(test(arguments[0]->localValueString));
    return true;
}

bool pathExistsNonEmpty(const std::u16string &name)
{
    return !name.empty() && localString::pathExist(name);
}

bool readFile(localErrorType &status, const localValueVector &arguments, localValueDescription *result,
              localString::possibleCodePage page)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    std::u16string text;
    if (!localString::fileRead(status, arguments[0]->localValueString, text, page))
        return false;
    result->setString(std::move(text));
    return true;
}

} // namespace

bool fileExists(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    return testName(status, arguments, result, localString::fileExist);
}

bool fileRemove(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    return testName(status, arguments, result, localString::fileDelete);
}

bool pathExists(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    return testName(status, arguments, result, pathExistsNonEmpty);
}

// One item per entry of the directory (files and directories, by name), the
// entry's name as value and as presentation. A directory that is not there
// has no entries.
bool directoryFiles(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 2, {localValueTypeSTR, localValueTypeSTR}))
        return false;
    const QString mask = arguments.size() == 2 ? localToQString(arguments[1]->localValueString) : QString("*");
    const QStringList names = QDir(localToQString(arguments[0]->localValueString))
                                  .entryList(QStringList(mask), QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    localValueList *list = localValueList::newInCell(result);
    list->items.reserve(size_t(names.size()));
    localValueDescription entry;
    for (const QString &name : names) {
        entry.setString(localFromQString(name));
        list->valueAdd(&entry, entry.localValueString);
    }
    return true;
}

bool stringFromFile(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    return readFile(status, arguments, result, localString::possibleCodePageUTF8);
}

// The code-page word picks CP1251 or CP866; any other word, or none, UTF-8.
bool stringAppendToFile(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 3, {localValueTypeSTR, localValueTypeSTR, localValueTypeSTR}))
        return false;
    const localString::possibleCodePage page = arguments.size() == 3
                                                   ? localString::codePageFromWord(arguments[2]->localValueString)
                                                   : localString::possibleCodePageUTF8;
    result->setBool(localString::fileWrite(true, page, arguments[0]->localValueString, arguments[1]->localValueString));
    return true;
}

bool base64AppendToFile(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 2, {localValueTypeSTR, localValueTypeSTR}))
        return false;
    result->setBool(localString::fileWrite(true, localString::possibleCodePageBASE64, arguments[0]->localValueString,
                                           arguments[1]->localValueString));
    return true;
}

bool base64FromFile(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    return readFile(status, arguments, result, localString::possibleCodePageBASE64);
}

bool programPath(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 0, {}))
        return false;
    result->setString(localString::binaryPath());
    return true;
}

// No argument asks for the working directory; a path changes to it.
bool workingDirectory(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!argsCheck(status, arguments, 0, 1, {localValueTypeSTR}))
        return false;
    if (arguments.empty())
        result->setString(localString::cwdGet());
    else
        result->setBool(localString::cwdSet(arguments[0]->localValueString));
    return true;
}

} // namespace localFunctions
