// Compiling and running a program text, the log file, and saving text files.
//
// A compiled tree lives for one call of textExec or textLoad. Function
// bodies are shared with the contexts that registered them, so a function of
// a text stays callable after the call that ran the text has returned.
#include "localOperatorCompiled.h"

#include "localInterpretatorUTF8.h"
#include "localServices.h"
#include "localStd.h"
#include "localString.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <fstream>
#include <iostream>

namespace {

// Where a compile stopped: the faulty line, the status's text, the line and
// the position in it, and the code of the character there.
void compileReport(const std::u16string &text, size_t position, localErrorType status, const char *routine)
{
    size_t lineStart = 0;
    const int line = localLineResolve(text, position, lineStart);
    std::string out = localNarrow(localString::trimLeft(localRestOfLine(text, lineStart)));
    out += '\n';
    localNarrowAppend(out, localErrorText(status));
    out += '\n';
    // On a line feed the position reads as one before the next line's start.
    out += "line: " + std::to_string(line) + " pos: " + std::to_string(int64_t(position) - int64_t(lineStart));
    out += localDiagTail(routine, __FILE__, __LINE__);
    out += "char: " + std::to_string(position < text.size() ? int(text[position]) : 0);
    out += localDiagTail(routine, __FILE__, __LINE__);
    std::cout << out << std::flush;
}

enum compileOutcome { compileRun, compileFailed, compileLeave };

// Compiles `text` into `program`; reports a fault on the way.
compileOutcome compileProgram(localErrorType &status, const std::u16string &text, localOperatorCompiled &program,
                              const char *routine)
{
    localWaitCursor cursor;
    status = localErrorTypeOK;
    size_t position = 0;
    localOperatorCompiled *pointer = &program;
    const bool compiled = textCompile(status, text, position, &pointer);
    if (status == localErrorTypeQUIT)
        return compileLeave;
    if (status != localErrorTypeOK) {
        compileReport(text, position, status, routine);
        return compileFailed;
    }
    return compiled ? compileRun : compileFailed;
}

// Runs the compiled program; `properEnd` tells whether it returned the number 1.
bool runProgram(localErrorType &status, localOperatorCompiled &program, localContextUTF8 *context, bool &properEnd)
{
    localWaitCursor cursor;
    localValueVector noArguments;
    localValueDescription *result = nullptr;
    const bool ran = program.execute(status, context, &program, &noArguments, &result);
    properEnd = ran && result != nullptr && result->type == localValueTypeNUM && result->localValueNumber == 1.0;
    localValueRelease(result);
    return ran;
}

void logOpenError()
{
    std::cout << "Logfile [" << localStd::logPath() << "] open ERROR!" << localDiagTail("logWrite", __FILE__, __LINE__)
              << std::flush;
}

bool logOpen(std::ofstream &log)
{
    log.open(localStd::logPath(), std::ios::out | std::ios::app | std::ios::binary);
    if (log.is_open())
        return true;
    logOpenError();
    return false;
}

// std::cout writes into another buffer until the guard goes.
class coutRedirect {
public:
    explicit coutRedirect(std::streambuf *buffer) : previous(std::cout.rdbuf(buffer)) {}
    ~coutRedirect() { std::cout.rdbuf(previous); }
    coutRedirect(const coutRedirect &) = delete;
    coutRedirect &operator=(const coutRedirect &) = delete;

private:
    std::streambuf *previous;
};

} // namespace

bool textExec(localErrorType &status, const std::u16string &text, localContextUTF8 *context)
{
    localOperatorCompiled program;
    switch (compileProgram(status, text, program, __func__)) {
    case compileLeave:
        // QUIT or EXIT in the text: nothing runs, and the caller reads the 5
        // as the request to leave.
        return true;
    case compileFailed:
        return false;
    case compileRun:
        break;
    }
    bool properEnd = false;
    const bool ran = runProgram(status, program, context, properEnd);
    // Lets a paint that the run left pending come through.
    localServices::instance().processEvents();
    if (!ran) {
        // An empty loop body or branch stops the run with status 54: no fault to tell.
        if (status != localErrorTypeOK)
            LOCAL_DIAG(localErrorText(status));
        return false;
    }
    // A DO inside a block goes on after the program it ran, so a proper end is 54, not 58.
    status = properEnd ? localErrorTypeOK : localErrorTypeRESULTnotOne;
    return true;
}

bool textLoad(localErrorType &status, const std::u16string &text, localContextUTF8 *context)
{
    localOperatorCompiled program;
    if (compileProgram(status, text, program, __func__) != compileRun)
        return false;
    bool properEnd = false;
    if (!runProgram(status, program, context, properEnd) || !properEnd)
        return false;
    status = localErrorTypeOK;
    return true;
}

// --- the log -------------------------------------------------------------------

void logWrite(const std::u16string &text)
{
    std::ofstream log;
    if (!logOpen(log))
        return;
    std::string line = localNarrow(text);
    line += '\n';
    log << line;
}

void logWriteStamped(const std::u16string &text)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    logWrite(localFromQString(stamp) + u" " + text);
}

void dispMemoToLog(localContextUTF8 *context)
{
    std::ofstream log;
    if (!logOpen(log))
        return;
    coutRedirect intoLog(log.rdbuf());
    localInterpretatorUTF8::dispMemo(context, std::u16string());
}

// --- saving text files -----------------------------------------------------------

bool save(bool append, int32_t mode, const std::u16string &text, const std::u16string &fileName)
{
    if (mode < localString::possibleCodePageNONE || mode > localString::possibleCodePageUTF8 || fileName.empty())
        return false;
    std::string bytes;
    switch (mode) {
    case localString::possibleCodePageBASE64:
        bytes = QByteArray::fromBase64(localToQString(text).toLatin1()).toStdString();
        break;
    case localString::possibleCodePageCP1251:
        bytes = localString::cp1251FromWide(text);
        break;
    case localString::possibleCodePageCP866:
        bytes = localString::cp866FromWide(text);
        break;
    default:
        bytes = localString::utf8FromWide(text);
        break;
    }
    std::ofstream file(localString::nameForFileSystem(fileName),
                       std::ios::out | std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    if (file.is_open()) {
        file.write(bytes.data(), std::streamsize(bytes.size()));
        file.close();
    }
    if (!file) {
        std::string out = localNarrow(u"Ошибка записи файла [" + fileName + u"]");
        out += "\n line: " + std::to_string(__LINE__) + "\n file: " + __FILE__ + " func: " + __func__ + "\n";
        std::cout << out << std::flush;
        return false;
    }
    std::cout << localNarrow(u"Успешно записан файл " + fileName) << "\n" << std::flush;
    return true;
}
