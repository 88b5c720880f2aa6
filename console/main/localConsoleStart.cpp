#include "localConsoleStart.h"

#include "localConsole.h"
#include "localCoutBuffer.h"

#include "localVCL.h"
#include "localVclServices.h"

#include "localClassV77.h"
#include "localContextUTF8.h"
#include "localDbInstall.h"
#include "localDbManager.h"
#include "localDbVclInstall.h"
#include "localForm.h"
#include "localFormConstructor.h"
#include "localInterpretatorUTF8.h"
#include "localNetwork.h"
#include "localStd.h"
#include "localSxl.h"
#include "localSxlWidget.h"
#include "localString.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFont>

#include <iostream>

namespace {

// Started from the program's own folder (by any spelling of it), the
// console works in the samples below it.
void moveIntoSamples()
{
    const QString here = QDir::current().canonicalPath();
    const QString programDirectory =
        QFileInfo(QString::fromLocal8Bit(localStd::argv0Directory().c_str())).canonicalFilePath();
    if (here.isEmpty() || here != programDirectory)
        return;
    const std::u16string samples = localFromQString(here) + localStd::separatorWide + u"prgTest";
    if (!localString::cwdSet(samples))
        return;
    std::cout << "CWD is set to  " << localToQString(samples).toUtf8().constData() << "\n";
}

// More than a thousand arguments run argv[1] once without the console; an
// ordinary command line never gets here.
int runOnce(const char *argument)
{
    if (argument[0] == '>')
        return 0;
    std::cout << argument << LOCAL_DIAG_TAIL;
    const std::u16string command = u"do " + localString::wideFromCp1251(argument);
    std::cout << "command: [" << localToQString(command).toUtf8().constData() << "]" << LOCAL_DIAG_TAIL;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localInterpretatorUTF8::scanStringGetOperatorAndExec(status, command, position, localVCL::globalContext(), false);
    const int code = QApplication::topLevelWidgets().isEmpty() ? 0 : QApplication::exec();
    if (status == localErrorTypeQUIT)
        std::cout << "Done!\n";
    return code;
}

// Ctrl+D and the context menu open the manager on the application's data
// file; the manager object lives as long as the console.
void databaseManagerEntry(localConsole *console)
{
    localDbManager *manager = new localDbManager(console);
    QAction *entry = new QAction(QStringLiteral("Database manager"), console);
    entry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    entry->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(entry, &QAction::triggered, manager, &localDbManager::dbManage);
    console->addAction(entry);
}

// Ctrl+E and the context menu open an empty form constructor.
void formConstructorEntry(localConsole *console)
{
    QAction *entry = new QAction(QStringLiteral("Form constructor"), console);
    entry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    entry->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(entry, &QAction::triggered, [] { localFormConstructorShow(); });
    console->addAction(entry);
}

} // namespace

localConsole *localConsoleAssemble(localCoutBuffer *buffer)
{
    localConsole *console = new localConsole();
    // The console's context is the first one made, hence the global one.
    qApp->setProperty("localGlobalContext", qlonglong(quintptr(localContextUTF8::globalContext)));
    QObject::connect(buffer, &localCoutBuffer::COUT, console, &localConsole::COUT);
    std::cout.rdbuf(buffer);
    std::cout << "This is the high-level language Korvel interpreter.\n"
              << "Интерпретатор языка Корвел.\n"
              << "\n"
              << " Press F1 or input HELP command for brief manual\n"
              << " Press Ctrl+F1, Shift+F1, Alt+F1, or input MANUAL command for full manual\n"
              << " Input QUIT command for exit.\n";
    moveIntoSamples();
    databaseManagerEntry(console);
    formConstructorEntry(console);
    console->windowShow();
    std::cout << "\n";
    return console;
}

int qMain(int argc, char **argv)
{
    localStd::argv0Set(argv[0]);
    // Output lines and WAIT dispatch events without the user's input, and the
    // Esc poll then takes that input in a second pass. The GLib dispatcher
    // of the X11 platform leaves input that one pass set aside until new X
    // traffic arrives, so the poll would never see Esc; the plain Unix
    // dispatcher reads it on every pass.
    qputenv("QT_NO_GLIB", "1");
    QApplication application(argc, argv);
    localVclInstall();
    localDbInstall();
    localDbVclInstall();
    localSxlInstall();
    localSxlVclInstall();
    localFormInstall();
    localNetworkInstall();
    localAutomation1CInstall();
    const QFont font(QStringLiteral("MS Sans Serif"), 10);
    std::cout << QApplication::font().pointSize() << LOCAL_DIAG_TAIL;
    QApplication::setFont(font);

    localCoutBuffer buffer;
    std::streambuf *const previous = std::cout.rdbuf();
    int code = 0;
    if (argc <= 1000) {
        localConsoleAssemble(&buffer);
        code = QApplication::exec();
    } else {
        code = runOnce(argv[1]);
    }
    // The closed windows are deleted while the output still has somewhere to go.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    std::cout.rdbuf(previous);
    return code;
}
