// Global functions of the system, time and interface: ISWINDOWS, LOGWRITE,
// MESSAGE, MESSAGEBOX (its headless answer), WAIT, the clocks, COLOR, SYS,
// and the context's own TOSTRING.
#include "localFunctionHandlers.h"

#include "localColorTable.h"
#include "localDate.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"

#include <QElapsedTimer>
#include <QThread>
#include <QtGlobal>

#include <algorithm>
#include <ctime>
#include <iostream>

namespace localFunctions {

namespace {

bool noArguments(localErrorType &status, const localValueVector &arguments)
{
    return argsCheck(status, arguments, 0, 0, {});
}

void printLine(const std::u16string &text)
{
    std::string line = localNarrow(text);
    line += '\n';
    std::cout << line << std::flush;
}

// Longest sleep between two rounds of event processing while waiting.
constexpr qint64 waitSliceMilliseconds = 5;

} // namespace

bool isWindows(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
               localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
#ifdef Q_OS_WIN
    result->setBool(true);
#else
    result->setBool(false);
#endif
    return true;
}

bool logWriteValue(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                   localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {argAny}))
        return false;
    logWriteStamped(arguments[0]->toString());
    result->setVal(1.0);
    return true;
}

bool message(localErrorType &status, localContextUTF8 *, localValueVector &arguments, localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {argAny}))
        return false;
    printLine(arguments[0]->toString());
    result->setVal(1.0);
    return true;
}

// Without a screen the box's text becomes a line of output; the widget
// library registers the real box.
bool messageBoxHeadless(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 2, {localValueTypeSTR, localValueTypeNUM}))
        return false;
    printLine(arguments[0]->localValueString);
    result->setVal(1.0);
    return true;
}

// Events keep being dispatched while the time runs, so windows stay alive;
// short sleeps between the rounds keep the wait from spinning the processor.
bool waitEvents(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeNUM}))
        return false;
    const double milliseconds = arguments[0]->localValueNumber;
    if (milliseconds < 0.0) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        localServices::instance().processEvents();
        const double remaining = milliseconds - double(timer.elapsed());
        if (!(remaining > 0.0))
            break;
        QThread::msleep(unsigned(std::min(remaining, double(waitSliceMilliseconds))));
    }
    result->setVal(1.0);
    return true;
}

bool seconds20000101(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    struct tm start = {};
    start.tm_year = 100;
    start.tm_mday = 1;
    start.tm_isdst = -1; // local time, summer or not as the date says
    result->setVal(std::difftime(std::time(nullptr), std::mktime(&start)));
    return true;
}

bool secondsThisProcess(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setVal(double(std::clock()) / CLOCKS_PER_SEC);
    return true;
}

bool dateTimeSystem(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setString(dateTimeToString(std::time(nullptr)));
    return true;
}

// red * 65536 + green * 256 + blue of a named colour; an unknown name is a bad value.
bool colorNumber(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!argsCheck(status, arguments, 1, 1, {localValueTypeSTR}))
        return false;
    const localColorName *color = localColorFind(arguments[0]->localValueString);
    if (color == nullptr) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    result->setVal(double(color->rgb));
    return true;
}

// SYS(2001, "ESCAPE"[, on]): the calling context's permission for a running
// WHILE to ask about Esc. Answers the permission as it stands after the call.
bool sys(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
         localValueDescription *result)
{
    if (!argsCheck(status, arguments, 2, 3, {localValueTypeNUM, localValueTypeSTR, localValueTypeBOO}))
        return false;
    if (arguments[0]->localValueNumber != 2001.0 || localString::toUpper(arguments[1]->localValueString) != u"ESCAPE") {
        status = localErrorTypePARAMvalue;
        return false;
    }
    if (arguments.size() == 3)
        context->interruptible = arguments[2]->isTrue();
    result->setBool(context->interruptible);
    return true;
}

bool contextToString(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!noArguments(status, arguments))
        return false;
    result->setString(context->toString());
    return true;
}

} // namespace localFunctions
