// korvel-cli: the headless runner.
//   korvel-cli FILE   runs the console line DO "FILE" in a fresh process
//   korvel-cli        handles console lines from standard input
//   --data DATAFILE   the application's data file (else $KORVEL_DATA_FILE,
//                     else ../lib/Zakup200215.sqlite from the working directory)
#include "localClassV77.h"
#include "localConsoleLine.h"
#include "localContextUTF8.h"
#include "localDbInstall.h"
#include "localNetwork.h"
#include "localStd.h"
#include "localSxl.h"
#include "localString.h"

#include <QCoreApplication>
#include <QThread>
#include <QVariant>

#include <unistd.h>

#include <cstring>

#include <iostream>
#include <string>

namespace {

constexpr unsigned interpreterStackSize = 64u * 1024 * 1024;

int runFile(localConsoleLine &console, const char *fileName)
{
    const std::u16string name = localFromQString(QString::fromLocal8Bit(fileName));
    bool succeeded = false;
    const localErrorType status = console.cmdExec(u"DO \"" + name + u"\"", &succeeded);
    if (status == localErrorTypeQUIT)
        return 0;
    return succeeded && (status == localErrorTypeOK || status == localErrorTypeRESULTnotOne) ? 0 : 1;
}

int runLines(localConsoleLine &console)
{
    const bool interactive = isatty(STDIN_FILENO) != 0;
    std::string line;
    for (;;) {
        if (interactive)
            std::cout << "localInterpretatorUTF8> " << std::flush;
        if (!std::getline(std::cin, line))
            return 0;
        const std::u16string wide = localString::trim(localFromQString(QString::fromUtf8(line.c_str())));
        if (console.cmdExec(wide) == localErrorTypeQUIT)
            return 0;
    }
}

int usage()
{
    std::cerr << "usage: korvel-cli [--data DATAFILE] [program-file]\n";
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    localStd::argv0Set(argv[0]);
    QCoreApplication application(argc, argv);
    QString dataFile = qEnvironmentVariable("KORVEL_DATA_FILE");
    const char *program = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--data") == 0) {
            if (++i == argc)
                return usage();
            dataFile = QString::fromLocal8Bit(argv[i]);
        } else if (program == nullptr) {
            program = argv[i];
        } else {
            return usage();
        }
    }
    if (!dataFile.isEmpty())
        application.setProperty("dataFileName", dataFile);
    localDbInstall();
    localSxlInstall();
    localNetworkInstall();
    localAutomation1CInstall();
    // The interpreter recurses on the machine stack for every call, bracket
    // and block, so it runs on a thread with a stack of its own: deep enough
    // for some ten thousand nested calls, and small enough that the stack,
    // not the table of cells, is what a runaway recursion meets first.
    int code = 0;
    QThread *worker = QThread::create([&code, program] {
        // The first context made is the global one, and the console works in it.
        localContextUTF8 *context = new localContextUTF8();
        localConsoleLine console(context);
        code = program != nullptr ? runFile(console, program) : runLines(console);
        std::cout << std::flush;
    });
    worker->setStackSize(interpreterStackSize);
    worker->start();
    worker->wait();
    delete worker;
    return code;
}
