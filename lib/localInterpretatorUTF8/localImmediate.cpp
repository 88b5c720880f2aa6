// Immediate statements: one statement run straight from its text, with no
// compiling. The console's typed line, a form's event text and every
// statement of a program that is not part of the compiled syntax come here.
//
//   statement := "?" expression
//              | name "=" expression
//              | DO file | HELP | CLEAR MEMORY | DIR | DIRECTORY
//              | DISPLAY (FUNCTION | MEMORY [mask] | CLASS | CONTEXT)
//              | (MODIFY | EDIT) COMMAND [code-page] file
//              | LOAD (CLASS name | CONTEXT) | QUIT | EXIT | RUN name
//              | expression
//   Command words of four letters or more may be cut to any prefix of at
//   least four letters (DISP MEMO); shorter ones are spelt whole.
#include "localInterpretatorUTF8.h"

#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

#include <sys/sysinfo.h>

#include <cstdio>
#include <fstream>
#include <iostream>

namespace {

typedef localInterpretatorUTF8 li;

bool commandMatches(const std::u16string &word, const char16_t *full)
{
    const std::u16string command(full);
    if (word == command)
        return true;
    return word.size() >= 4 && word.size() <= command.size() && command.compare(0, word.size(), word) == 0;
}

std::u16string readWordUpper(const std::u16string &text, size_t &position)
{
    std::u16string word = li::scanStringGetNameToken(text, position);
    li::nameToUpperInPlace(word);
    return word;
}

// A mask of name characters with "?" and "*", read piece by piece.
std::u16string readMask(const std::u16string &text, size_t &position)
{
    std::u16string mask;
    for (;;) {
        mask += li::scanStringGetNameToken(text, position);
        if (position < text.size() && (text[position] == u'?' || text[position] == u'*'))
            mask += text[position++];
        else
            break;
    }
    return mask;
}

void printLine(const std::u16string &text)
{
    std::string line = localNarrow(text);
    line += '\n';
    std::cout << line;
}

std::u16string maskHeader(const std::u16string &header, const std::u16string &mask)
{
    return mask.empty() ? header : header + u"с шаблоном имени [" + mask + u"]";
}

void printHelp()
{
    static const char16_t *const lines[] = {
        u"ВНИМАНИЕ!!! В графическом режиме возможна команда MANUAL, которая выводит интерактивную систему помощи. ",
        u"******** КОМАНДЫ ********************",
        u"? <выражение> - вычислить выражение и вывести его значение",
        u"**************************************",
        u"CLEAR MEMORY - удалить переменные текущего контекста",
        u"**************************************",
        u"DEBUG <файл> - выполнить программу в отладчике",
        u"**************************************",
        u"DIR - открыть рабочий каталог",
        u"**************************************",
        u"DISPLAY CLASS - список классов",
        u"**************************************",
        u"DISPLAY CONTEXT - список функций, классов и переменных",
        u"**************************************",
        u"DISPLAY FUNCTION - список функций",
        u"**************************************",
        u"DISPLAY MEMORY [шаблон] - список переменных",
        u"**************************************",
        u"DO <файл> - выполнить программу",
        u"**************************************",
        u"EDIT COMMAND [UTF8|CP1251|CP866] <файл> - редактировать программу во встроенном редакторе",
        u"**************************************",
        u"MOFIFY COMMAND <файл> - редактировать программу во внешнем редакторе",
        u"**************************************",
        u"RUN <имя> - запустить программу или открыть файл",
        u"**************************************",
        u"При компиляции и выполнении все имена функций приводятся к верхнему регистру: "
        u"MESSAGE и message, СООБЩИТЬ и сообщить, STRING и string, СТРОКА и строка - одно и то же.",
    };
    for (const char16_t *line : lines)
        printLine(line);
    std::cout << std::flush;
}

// An executable (on PATH or with the run bit) starts detached; anything else
// goes to the desktop's opener.
void shellStart(const std::u16string &name)
{
    const QString program = localToQString(name);
    if (!QStandardPaths::findExecutable(program).isEmpty()
        || (program.contains('/') && QFileInfo(program).isExecutable() && QFileInfo(program).isFile())) {
        QProcess::startDetached(program, QStringList());
        return;
    }
    QProcess::startDetached("xdg-open", QStringList() << program);
}

unsigned long long totalPhysicalMemory()
{
    struct sysinfo info;
    if (sysinfo(&info) != 0)
        return 0;
    return static_cast<unsigned long long>(info.totalram) * info.mem_unit;
}

bool statementDo(localErrorType &status, const std::u16string &text, size_t &position, localContextUTF8 *context,
                 bool onlyCheck)
{
    li::scanStringSkipSpace(text, position);
    std::u16string fileName;
    if (!li::scanStringGetFileName(status, text, position, fileName))
        return false;
    if (fileName.empty()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    if (onlyCheck)
        return true;
    std::u16string program;
    if (!localString::fileRead(status, fileName, program, localString::possibleCodePageUTF8)) {
        LOCAL_DIAG(u"Error! " + localErrorText(status));
        return false;
    }
    QElapsedTimer timer;
    timer.start();
    if (!textExec(status, program, context)) {
        LOCAL_DIAG(localErrorText(status));
        return false;
    }
    return true;
}

bool statementClear(localErrorType &status, const std::u16string &text, size_t &position, localContextUTF8 *context,
                    bool onlyCheck)
{
    if (!commandMatches(readWordUpper(text, position), u"MEMORY")) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    // The cells are not given back: they stay busy until the process ends.
    if (!onlyCheck)
        context->variablesForget();
    return true;
}

void displayContext(localContextUTF8 *context)
{
    li::dispFunc(context, u"");
    li::dispClass(u"");
    li::dispMemo(context, u"");
}

bool statementDisplay(localErrorType &status, const std::u16string &text, size_t &position,
                      localContextUTF8 *context, bool onlyCheck)
{
    const std::u16string second = readWordUpper(text, position);
    if (commandMatches(second, u"FUNCTION")) {
        if (!onlyCheck)
            li::dispFunc(context, u"");
    } else if (commandMatches(second, u"MEMORY")) {
        const std::u16string mask = readMask(text, position);
        if (!onlyCheck)
            li::dispMemo(context, mask);
    } else if (commandMatches(second, u"CLASS")) {
        if (!onlyCheck)
            li::dispClass(u"");
    } else if (commandMatches(second, u"CONTEXT")) {
        if (!onlyCheck)
            displayContext(context);
    } else {
        status = localErrorTypeSYNTAX;
        return false;
    }
    return true;
}

bool statementEdit(localErrorType &status, const std::u16string &text, size_t &position, bool builtIn,
                   bool onlyCheck)
{
    if (!commandMatches(readWordUpper(text, position), u"COMMAND")) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    li::scanStringSkipSpace(text, position);
    int32_t codePage = localString::possibleCodePageUTF8;
    if (builtIn) {
        const size_t beforeWord = position;
        const std::u16string word = readWordUpper(text, position);
        if (word == u"UTF8") {
            codePage = localString::possibleCodePageUTF8;
        } else if (word == u"CP1251") {
            codePage = localString::possibleCodePageCP1251;
        } else if (word == u"CP866") {
            codePage = localString::possibleCodePageCP866;
        } else {
            position = beforeWord;
        }
        li::scanStringSkipSpace(text, position);
    }
    std::u16string fileName;
    if (!li::scanStringGetFileName(status, text, position, fileName))
        return false;
    fileName = localString::trim(fileName);
    if (fileName.empty()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    if (onlyCheck)
        return true;
    const std::string narrow = localString::nameForFileSystem(fileName);
    if (!std::ifstream(narrow).is_open()) {
        std::ofstream made(narrow, std::ios::app);
        made << "\n";
    }
    localServices::instance().editFile(fileName, codePage, builtIn);
    return true;
}

bool statementLoad(localErrorType &status, const std::u16string &text, size_t &position, localContextUTF8 *context,
                   bool onlyCheck)
{
    const std::u16string second = readWordUpper(text, position);
    if (commandMatches(second, u"CONTEXT")) {
        if (!onlyCheck)
            displayContext(context);
        return true;
    }
    if (!commandMatches(second, u"CLASS")) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    const std::u16string name = readMask(text, position);
    printLine(u"Пытаемся загрузить класс  ");
    if (onlyCheck)
        return true;
    localValueDescription *argument = localValueNew();
    argument->setString(name);
    localValueVector arguments{argument};
    printLine(u"Пытаемся загрузить класс [" + name + u"]");
    localValueDescription *result = nullptr;
    const bool done = context->funcExec(status, u"CLASSLOAD", &arguments, &result);
    localValueReleaseAll(arguments);
    localValueRelease(result);
    if (!done)
        return false;
    printLine(u"Класс [" + name + u"] загружен!");
    li::dispClass(name);
    return true;
}

bool statementRun(localErrorType &status, const std::u16string &text, size_t &position, localContextUTF8 *context,
                  bool onlyCheck)
{
    li::scanStringSkipSpace(text, position);
    std::u16string name;
    if (position < text.size() && text[position] == u'"') {
        localValueDescription *value = nullptr;
        if (!li::scanStringGetExpressionAndEvaluete(status, text, position, &value, context, onlyCheck))
            return false;
        if (!onlyCheck)
            name = localString::trim(value->toString());
        localValueRelease(value);
    } else {
        name = li::scanStringGetNameToken(text, position);
    }
    if (!onlyCheck)
        shellStart(name);
    return true;
}

bool statementAssign(localErrorType &status, const std::u16string &text, size_t &position,
                     const std::u16string &name, localContextUTF8 *context)
{
    ++position; // the "="
    if (context->variableFind(name) == nullptr)
        context->variableCreate(context->variableNormalName(name));
    localValueDescription *value = nullptr;
    if (!li::scanStringGetExpressionAndEvaluete(status, text, position, &value, context, false))
        return false;
    context->variableSet(name, value);
    localValueRelease(value);
    return true;
}

} // namespace

bool localInterpretatorUTF8::scanStringGetFileName(localErrorType &status, const std::u16string &text,
                                                   size_t &position, std::u16string &fileName)
{
    fileName.clear();
    if (position >= text.size())
        return true;
    if (text[position] == u'"') {
        localValueDescription *quoted = nullptr;
        if (!scanStringGetStringTokenAndEvaluete(text, position, &quoted)) {
            status = localErrorTypeSYNTAX;
            return false;
        }
        fileName = quoted->localValueString;
        localValueRelease(quoted);
        return true;
    }
    const size_t start = position;
    while (position < text.size() && text[position] != u'\t' && text[position] != u' ' && text[position] != u'\n')
        ++position;
    fileName.assign(text, start, position - start);
    if (position < text.size() && text[position] != u'\n')
        ++position;
    return true;
}

bool localInterpretatorUTF8::scanStringGetOperatorAndExec(localErrorType &status, const std::u16string &text,
                                                          size_t &position, localContextUTF8 *context,
                                                          bool onlyCheck)
{
    if (context == nullptr && !onlyCheck)
        exit_FAILURE("localInterpretatorUTF8::scanStringGetOperatorAndExec() context may be NULL only in onlyCheck!");
    const size_t entry = position;
    scanStringSkipSpace(text, position);
    if (!onlyCheck && position < text.size() && text[position] == u'?') {
        ++position;
        scanStringSkipSpace(text, position);
        localValueDescription *value = nullptr;
        if (!scanStringGetExpressionAndEvaluete(status, text, position, &value, context, false)) {
            LOCAL_DIAG_ERROR(localErrorText(status));
            return false;
        }
        printLine(value->toString());
        std::cout << std::flush;
        localValueRelease(value);
        return true;
    }
    const size_t wordStart = position;
    const std::u16string word = readWordUpper(text, position);
    if (word.empty())
        return true;
    if (!onlyCheck) {
        size_t afterWord = position;
        scanStringSkipSpace(text, afterWord);
        if (afterWord < text.size() && text[afterWord] == u'=') {
            position = afterWord;
            return statementAssign(status, text, position, text.substr(wordStart, word.size()), context);
        }
    }
    if (word == u"DO")
        return statementDo(status, text, position, context, onlyCheck);
    if (commandMatches(word, u"HELP")) {
        if (!onlyCheck)
            printHelp();
        return true;
    }
    if (commandMatches(word, u"CLEAR"))
        return statementClear(status, text, position, context, onlyCheck);
    if (word == u"DIR" || commandMatches(word, u"DIRECTORY")) {
        if (!onlyCheck)
            QProcess::startDetached("xdg-open", QStringList() << localToQString(localString::cwdGet()));
        return true;
    }
    if (commandMatches(word, u"DISPLAY"))
        return statementDisplay(status, text, position, context, onlyCheck);
    if (commandMatches(word, u"MODIFY") || commandMatches(word, u"EDIT"))
        return statementEdit(status, text, position, commandMatches(word, u"EDIT"), onlyCheck);
    if (commandMatches(word, u"LOAD"))
        return statementLoad(status, text, position, context, onlyCheck);
    if (commandMatches(word, u"QUIT") || commandMatches(word, u"EXIT")) {
        status = localErrorTypeQUIT;
        return true;
    }
    if (word == u"RUN")
        return statementRun(status, text, position, context, onlyCheck);
    if (onlyCheck) {
        position = entry;
        return true;
    }
    position = wordStart;
    localValueDescription *value = nullptr;
    const bool done = scanStringGetExpressionAndEvaluete(status, text, position, &value, context, false);
    localValueRelease(value);
    return done;
}

// --- listings ----------------------------------------------------------------

bool localInterpretatorUTF8::maskMatches(const std::u16string &mask, const std::u16string &name)
{
    const std::u16string pattern = nameToUpper(mask);
    const std::u16string subject = nameToUpper(name);
    size_t p = 0;
    size_t s = 0;
    size_t starPattern = std::u16string::npos;
    size_t starSubject = 0;
    while (s < subject.size()) {
        if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == subject[s])) {
            ++p;
            ++s;
        } else if (p < pattern.size() && pattern[p] == u'*') {
            starPattern = p++;
            starSubject = s;
        } else if (starPattern != std::u16string::npos) {
            p = starPattern + 1;
            s = ++starSubject;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

void localInterpretatorUTF8::dispFunc(localContextUTF8 *context, const std::u16string &mask)
{
    printLine(maskHeader(u"СПИСОК ФУНКЦИЙ ", mask));
    for (localContextUTF8 *scope = context; scope != nullptr; scope = scope->parent)
        for (const localFunctionEntry &entry : scope->functions)
            if (mask.empty() || maskMatches(mask, entry.name))
                printLine(u" func [" + entry.name + (entry.block ? u"] : программа" : u"] : встроенная"));
    std::cout << std::flush;
}

void localInterpretatorUTF8::dispClass(const std::u16string &mask)
{
    printLine(maskHeader(u"СПИСОК КЛАССОВ ", mask));
    if (localContextUTF8::globalContext == nullptr)
        return;
    for (const localClassDeclaration *declaration : localContextUTF8::globalContext->classes) {
        if (!mask.empty() && !maskMatches(mask, declaration->className) && !maskMatches(mask, declaration->className2))
            continue;
        printLine(declaration->className + u" (" + declaration->className2 + u") " + declaration->description);
        for (const localClassMember *member : declaration->members) {
            std::u16string line = u"    " + member->name;
            if (member->EXEC != nullptr)
                line += u"() : метод ";
            else
                line += u" : аттрибут ";
            if (member->GET != nullptr)
                line += u" [readable] ";
            if (member->SET != nullptr)
                line += u" [writeable] ";
            printLine(line);
        }
    }
    std::cout << std::flush;
}

std::u16string localInterpretatorUTF8::variableLine(const localVariable &variable)
{
    return u" var [" + variable.name + u"] : " + localValueTypeWord(variable.value->type) + u" ["
           + variable.value->toString() + u"]";
}

void localInterpretatorUTF8::dispMemo(localContextUTF8 *context, const std::u16string &mask)
{
    printLine(maskHeader(u"СПИСОК ПЕРЕМЕННЫХ *************** ", mask));
    for (localContextUTF8 *scope = context; scope != nullptr; scope = scope->parent) {
        std::u16string head = u"в том числе список переменных для ";
        if (scope->caseSensitive)
            head += u" регистрозависимого ";
        if (scope == localContextUTF8::globalContext)
            head += u" ГЛОБАЛЬНОГО ";
        head += u" контекста [" + localAddressText(scope) + u"]";
        if (scope->parent != nullptr)
            head += u" потомка контекста [" + localAddressText(scope->parent) + u"]";
        printLine(head);
        for (const localVariable &variable : scope->variables) {
            if (!mask.empty() && !maskMatches(mask, variable.name))
                continue;
            printLine(variableLine(variable));
        }
    }
    printLine(u"Accessible RAM:" + localString::formatNumber(double(totalPhysicalMemory()), u"Ч25.0.,"));
    std::cout << std::flush;
}
