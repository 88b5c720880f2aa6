#include "localConsoleLine.h"

#include "localInterpretatorUTF8.h"
#include "localString.h"

#include <QRegExp>
#include <QStringList>

#include <fstream>
#include <iostream>

namespace {

void printLine(const std::u16string &text)
{
    std::string line = localNarrow(text);
    line += '\n';
    std::cout << line << std::flush;
}

bool maskHits(const std::u16string &mask, const std::u16string &name)
{
    if (mask.empty())
        return true;
    return QRegExp(localToQString(mask), Qt::CaseSensitive).indexIn(localToQString(name)) >= 0;
}

} // namespace

localConsoleLine::localConsoleLine(localContextUTF8 *lineContext) : context(lineContext) {}

localConsoleLine::~localConsoleLine() = default;

void localConsoleLine::answerPrint(const std::u16string &text)
{
    printLine(text);
}

void localConsoleLine::graphicalOnly(const char *what)
{
    std::cout << what << " needs the graphical console.\n" << std::flush;
}

void localConsoleLine::commandHelpAsPrg()
{
    graphicalOnly("MANUAL");
}

void localConsoleLine::commandDebug(const std::u16string &)
{
    graphicalOnly("DEBUG");
}

void localConsoleLine::commandStep(const std::u16string &)
{
    graphicalOnly("STEP");
}

void localConsoleLine::commandTrace(const std::u16string &)
{
    graphicalOnly("TRACE");
}

void localConsoleLine::commandEdit(const std::u16string &, int32_t)
{
    graphicalOnly("EDIT COMMAND");
}

void localConsoleLine::commandCleaMemo(const std::u16string &mask)
{
    LOCAL_DIAG(u"");
    const std::u16string trimmed = localString::trim(mask);
    for (size_t i = context->variables.size(); i-- > 0;)
        if (maskHits(trimmed, context->variables[i].name))
            context->variableForget(i); // the cell keeps its link
}

void localConsoleLine::displayMemory(const std::u16string &mask)
{
    printLine(u"regExprString = [" + mask + u"]");
    QStringList names;
    for (const localVariable &variable : context->variables)
        if (maskHits(mask, variable.name))
            names << localToQString(variable.name);
    names.sort();
    for (int i = 0; i < names.size(); ++i)
        printLine(localNumberToWide(i) + u" " + context->variableToString(localFromQString(names[i])));
    printLine(u"");
}

void localConsoleLine::displayClass()
{
    QStringList lines;
    if (localContextUTF8::globalContext != nullptr)
        for (const localClassDeclaration *declaration : localContextUTF8::globalContext->classes)
            lines << localToQString(declaration->className2 + u" (" + declaration->className + u")  - "
                                    + declaration->description + u" ");
    lines.sort();
    for (int i = 0; i < lines.size(); ++i)
        printLine(localNumberToWide(i + 1) + u" " + localFromQString(lines[i]));
}

void localConsoleLine::tryExample()
{
    LOCAL_DIAG(u"");
}

void localConsoleLine::syntaxMessage(const std::u16string &word)
{
    answerPrint(u"команда: " + word + u" Syntax ERROR");
}

// "# expr": evaluated and printed at once; on success the line still goes on
// to the interpreter, which reports on it in its own way.
bool localConsoleLine::hashLine(const std::u16string &line)
{
    LOCAL_DIAG(u"cmdWStr:  [" + line + u"]");
    busyLineRemove();
    const std::u16string text = line.substr(2);
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *value = nullptr;
    const bool done =
        localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, text, position, &value, context, false);
    localInterpretatorUTF8::scanStringSkipSpace(text, position);
    if (!done) {
        answerPrint(localErrorText(status));
        return false;
    }
    if (position < text.size()) {
        localValueRelease(value);
        answerPrint(u"Syntax ERROR: " + line);
        return false;
    }
    printLine(value->toString());
    localValueRelease(value);
    return true;
}

bool localConsoleLine::retiredEdit(const std::u16string &line, size_t position)
{
    std::u16string word = localInterpretatorUTF8::scanStringGetNameToken(line, position);
    localInterpretatorUTF8::nameToUpperInPlace(word);
    if (word != u"COMMAND") {
        syntaxMessage(u"E1111111111111111111111111111111111111111DIT");
        return false;
    }
    localInterpretatorUTF8::scanStringSkipSpace(line, position);
    const size_t beforeWord = position;
    std::u16string page = localInterpretatorUTF8::scanStringGetNameToken(line, position);
    localInterpretatorUTF8::nameToUpperInPlace(page);
    int32_t codePage = localString::possibleCodePageUTF8;
    if (page == u"CP1251")
        codePage = localString::possibleCodePageCP1251;
    else if (page == u"CP866")
        codePage = localString::possibleCodePageCP866;
    else if (page != u"UTF8")
        position = beforeWord;
    localInterpretatorUTF8::scanStringSkipSpace(line, position);
    localErrorType status = localErrorTypeOK;
    std::u16string fileName;
    if (!localInterpretatorUTF8::scanStringGetFileName(status, line, position, fileName) || fileName.empty()) {
        syntaxMessage(u"E1111111111111111111111111111111111111111DIT");
        return false;
    }
    const std::string narrow = localString::nameForFileSystem(fileName);
    if (!std::ifstream(narrow).is_open()) {
        std::ofstream made(narrow, std::ios::app);
        made << "\n";
    }
    commandEdit(fileName, codePage);
    return true;
}

localErrorType localConsoleLine::cmdExec(const std::u16string &line, bool *succeeded)
{
    if (succeeded != nullptr)
        *succeeded = true;
    if (line.empty()) {
        answerPrint(u"");
        return localErrorTypeOK;
    }
    if (line.size() == 1) {
        answerPrint(u"Syntax ERROR: " + line);
        return localErrorTypeOK;
    }
    if (line.size() >= 2 && line[0] == u'#' && line[1] == u' ' && !hashLine(line))
        return localErrorTypeOK;

    size_t position = 0;
    std::u16string word = localInterpretatorUTF8::scanStringGetNameToken(line, position);
    localInterpretatorUTF8::nameToUpperInPlace(word);
    ++position;
    const std::u16string rest = position < line.size() ? line.substr(position) : std::u16string();
    if (word == u"MANUAL") {
        commandHelpAsPrg();
    } else if (word == u"C1LEAR") {
        size_t at = position;
        std::u16string second = localInterpretatorUTF8::scanStringGetNameToken(line, at);
        localInterpretatorUTF8::nameToUpperInPlace(second);
        if (second == u"MEMORY")
            commandCleaMemo(at < line.size() ? line.substr(at) : std::u16string());
        else
            syntaxMessage(word);
    } else if (word == u"DEBUG") {
        commandDebug(line.size() > 6 ? line.substr(6) : std::u16string());
    } else if (word == u"D1ISPLAY") {
        size_t at = position;
        std::u16string second = localInterpretatorUTF8::scanStringGetNameToken(line, at);
        localInterpretatorUTF8::nameToUpperInPlace(second);
        if (second == u"MEMORY")
            displayMemory(localString::trim(at < line.size() ? line.substr(at) : std::u16string()));
        if (second == u"CLASS")
            displayClass();
        else
            syntaxMessage(word); // the retired command always ends with it after MEMORY
    } else if (word == u"E1111111111111111111111111111111111111111DIT") {
        retiredEdit(line, position);
    } else if (word == u"STEP") {
        commandStep(line);
    } else if (word == u"TRACE") {
        commandTrace(rest);
    } else if (word == u"TRYING") {
        tryExample();
    } else {
        localErrorType status = localErrorTypeOK;
        size_t at = 0;
        const bool done = localInterpretatorUTF8::scanStringGetOperatorAndExec(status, line, at, context, false);
        if (!done)
            LOCAL_DIAG(u"ERROR!!! localConsole::cmdExec(): " + localErrorText(status));
        if (succeeded != nullptr)
            *succeeded = done;
        if (status == localErrorTypeQUIT) {
            printLine(u"Good bye!");
            leave();
        }
        return status;
    }
    return localErrorTypeOK;
}
