#include "localGlobalFunctions.h"

#include "localFunctionHandlers.h"

#include <unordered_map>
#include <vector>

using namespace localFunctions;

namespace {

// The members of CONTEXT in their declared order: listings and the
// highlighter show them so. A null handler declares a name that is not
// answered (status 27).
const localGlobalFunctionRow rows[] = {
    {u"___TEST", nullptr, nullptr},
    {u"___TEST__TEXTBROWSER", nullptr, graphicalOnly},
    {u"TRUE", u"ИСТИНА", nullptr, true},
    {u"FALSE", u"ЛОЖЬ", nullptr, true},
    // numbers
    {u"ABS", nullptr, numberAbs},
    {u"INT", u"ЦЕЛ", numberInt},
    {u"ROUND", u"ОКР", numberRound},
    {u"SQRT", u"КОРЕНЬКВАДРАТНЫЙ", numberSqrt},
    {u"MAX", u"МАКС", valueMax},
    {u"MIN", u"МИН", valueMin},
    {u"PI", nullptr, numberPi},
    {u"RAND", u"СЛУЧАЙНОЕЧИСЛО", numberRand},
    {u"NUMBER", u"ЧИСЛО", numberOf},
    // strings
    {u"CHR", u"СИМВОЛ", stringChr},
    {u"STRING", u"СТРОКА", stringOf},
    {u"STRINGLEN", u"СТРОКАДЛИНА", stringLen},
    {u"UPPER", u"ВРЕГ", stringUpper},
    {u"STRINGTOUPPER", u"СТРОКАВВЕРХНИЙРЕГИСТР", stringUpper},
    {u"STRINGTRIML", u"СТРОКАСОКРЛ", stringTrimLeft},
    {u"STRINGTRIMR", u"СТРОКАСОКРП", stringTrimRight},
    {u"STRINGTRIMALL", u"СТРОКАСОКРЛП", stringTrimAll},
    {u"STRINGPARTLEFT", u"СТРОКАЧАСТЬЛЕВАЯ", stringPartLeft},
    {u"STRINGPARTRIGHT", u"СТРОКАЧАСТЬПРАВАЯ", stringPartRight},
    {u"STRINGPARTFIND", u"СТРОКАЧАСТЬНАЙТИ", stringPartFind},
    {u"STRINGPARTREPLACE", u"СТРОКАЧАСТЬЗАМЕНИТЬ", stringPartReplace},
    {u"FIND", u"НАЙТИ", stringFind},
    {u"FORMAT", u"ФОРМАТ", stringFormat},
    {u"STRINGSHOW", u"СТРОКАПОКАЗАТЬ", graphicalOnly},
    // value inspection and JSON
    {u"IIF", nullptr, valueIif},
    {u"ISEMPTYVALUE", u"ЭТОПУСТОЕЗНАЧЕНИЕ", valueIsEmpty},
    {u"VALUEISEMPTY", u"ЗНАЧЕНИЕПУСТОЕ", valueIsEmpty},
    {u"ISVALUELIST", u"ЭТОСПИСОКЗНАЧЕНИЙ", valueIsValueList},
    {u"ISVALUETABLE", u"ЭТОТАБЛИЦАЗНАЧЕНИЙ", valueIsValueTable},
    {u"VALUETYPEASSTRING", u"ЗНАЧЕНИЕТИППОЛУЧИТЬКАКСТРОКА", valueTypeAsString},
    // Retired: still declared, no longer answered.
    {u"VALUETOSTRING", u"ЗНАЧЕНИЕВСТРОКУ", nullptr},
    {u"VALUETOJSON", u"ЗНАЧЕНИЕВJSON", valueToJson},
    {u"VALUEFROMJSON", u"ЗНАЧЕНИЕИЗJSON", valueFromJson},
    {u"PARSEJSON", u"РАЗОБРАТЬJSON", jsonParse},
    // files and paths
    {u"FILEEXIST", u"ФАЙЛСУЩЕСТВУЕТ", fileExists},
    {u"FILEDELETE", u"ФАЙЛУДАЛИТЬ", fileRemove},
    {u"PATHEXIST", u"ПУТЬСУЩЕСТВУЕТ", pathExists},
    {u"FILES", u"ФАЙЛЫ", directoryFiles},
    {u"FILECHOOSE", u"ФАЙЛВЫБРАТЬ", graphicalOnly},
    {u"STRINGFROMFILE", u"СТРОКАИЗФАЙЛА", stringFromFile},
    {u"STRINGAPPENDTOFILE", u"СТРОКАДОБАВИТЬВФАЙЛ", stringAppendToFile},
    {u"BASE64APPENDTOFILE", nullptr, base64AppendToFile},
    {u"BASE64FROMFILE", nullptr, base64FromFile},
    {u"BINARYPATH", u"ПРОГРАММАПУТЬ", programPath},
    // Retired: still declared, no longer answered.
    {u"USERDIR", u"ПОЛЬЗОВАТЕЛЬКАТАЛОГ", nullptr},
    {u"CWD", u"КАТАЛОГРАБОЧИЙ", workingDirectory},
    // classes and modules
    {u"CLASSLOAD", u"КЛАССЗАГРУЗИТЬ", classLoad},
    {u"CLASSLOADED", u"КЛАССЗАГРУЖЕН", classLoaded},
    {u"CLASSDISPLAY", u"КЛАССПОКАЗАТЬ", classDisplay},
    {u"CLASSESDISPLAY", u"КЛАССЫПОКАЗАТЬ", classesDisplay},
    {u"FUNCTIONSDISPLAY", u"ФУНКЦИИПОКАЗАТЬ", functionsDisplay},
    {u"MEMORYDISPLAY", u"ПАМЯТЬПОКАЗАТЬ", memoryDisplay},
    {u"MEMORYDISPLAYVARS", u"ПАМЯТЬПОКАЗАТЬПЕРЕМЕННЫЕ", memoryDisplayVars},
    {u"MEMORYDISPLAYDATA", u"ПАМЯТЬПОКАЗАТЬДАННЫЕ", memoryDisplayCells},
    {u"CONTEXTGET", u"КОНТЕКСТПОЛУЧИТЬ", contextGet},
    {u"CREATEOBJECT", u"СОЗДАТЬОБЪЕКТ", createObject},
    {u"MODULELOAD", u"МОДУЛЬЗАГРУЗИТЬ", moduleLoad},
    // system, time and interface
    {u"ISWINDOWS", nullptr, isWindows},
    {u"LOGWRITE", nullptr, logWriteValue},
    {u"MESSAGE", u"СООБЩИТЬ", message},
    {u"MESSAGEBOX", u"ПРЕДУПРЕЖДЕНИЕ", messageBoxHeadless},
    // An attribute member, answered all the same when called.
    {u"WAIT", u"ЖДАТЬ", waitEvents, true},
    {u"SECONDS20000101", nullptr, seconds20000101},
    {u"SECONDSTHISPROCESS", nullptr, secondsThisProcess},
    {u"DATETIMESYSTEMGETASSTRING", u"ДАТАВРЕМЯСИСТЕМНАЯПОЛУЧИТЬКАКСТРОКА", dateTimeSystem},
    {u"DATECHOOSEASSTRING", u"ДАТАВЫБРАТЬКАКСТРОКА", graphicalOnly},
    {u"COLOR", u"ЦВЕТ", colorNumber},
    {u"SYS", nullptr, sys},
    {u"NETWORKREQUESTEXECSYNC", u"СЕТЬЗАПРОСВЫПОЛНИТЬСИНХРОННО", graphicalOnly},
    {u"FORMOPEN", u"ФОРМАОТКРЫТЬ", graphicalOnly},
    {u"FORMEDIT", u"ФОРМАРЕДАКТИРОВАТЬ", graphicalOnly},
    // The picture rows need QtGui's image classes, which the core does not
    // link: the widget library registers all five.
    {u"PIXMAPASBASE64FROMFILEGET", nullptr, graphicalOnly},
    {u"PIXMAPASBASE64WIDTH", nullptr, graphicalOnly},
    {u"PIXMAPASBASE64HEIGHT", nullptr, graphicalOnly},
    {u"PIXMAPASBASE64PARTGET", nullptr, graphicalOnly},
    {u"PIXMAPASBASE64SHOW", nullptr, graphicalOnly},
    // The context's own string form.
    {u"TOSTRING", nullptr, contextToString},
};

constexpr size_t rowCount = sizeof rows / sizeof rows[0];

// Name to row, and the row's present handler: the table itself stays
// constant, while a widget library may replace the handler of a row.
struct rowIndex {
    std::unordered_map<std::u16string, size_t> rowByName;
    std::vector<localGlobalFunctionHandler> handlers;
    rowIndex()
    {
        handlers.reserve(rowCount);
        for (size_t row = 0; row < rowCount; ++row) {
            handlers.push_back(rows[row].handler);
            for (const char16_t *name : {rows[row].english, rows[row].russian})
                if (name != nullptr && *name != 0)
                    rowByName.emplace(name, row);
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
    count = rowCount;
    return rows;
}

localGlobalFunctionHandler localGlobalFunctionFind(const std::u16string &nameUpper)
{
    const localGlobalFunctionHandler *place = localGlobalFunctionPlace(nameUpper);
    return place != nullptr ? *place : nullptr;
}

const localGlobalFunctionHandler *localGlobalFunctionPlace(const std::u16string &nameUpper)
{
    const auto found = index().rowByName.find(nameUpper);
    return found == index().rowByName.end() ? nullptr : &index().handlers[found->second];
}

void localGlobalFunctionGraphicalSet(const std::u16string &nameUpper, localGlobalFunctionHandler handler)
{
    const auto found = index().rowByName.find(nameUpper);
    if (found == index().rowByName.end())
        exit_FAILURE(u"localGlobalFunctionGraphicalSet() no global function [" + nameUpper + u"]");
    index().handlers[found->second] = handler;
}

int32_t localTruncate32(double value)
{
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return INT32_MIN;
    return int32_t(value);
}

namespace localFunctions {

bool argsCheck(localErrorType &status, const localValueVector &arguments, size_t low, size_t high,
               std::initializer_list<int32_t> kinds)
{
    if (arguments.size() < low || arguments.size() > high) {
        status = localErrorTypePARAMcount;
        return false;
    }
    // Places past the end of `kinds` take every kind.
    const int32_t *kind = kinds.begin();
    for (const localValueDescription *argument : arguments) {
        if (kind == kinds.end())
            break;
        if (*kind != argAny && argument->getType() != *kind) {
            status = localErrorTypePARAMtype;
            return false;
        }
        ++kind;
    }
    return true;
}

bool graphicalOnly(localErrorType &status, localContextUTF8 *, localValueVector &, localValueDescription *)
{
    status = localErrorTypeMETHODgraphicOnly;
    return false;
}

} // namespace localFunctions
