#include "localVclServices.h"

#include "localVclEventEscapeFilter.h"
#include "localVclWidgetEditor.h"

#include "localString.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QProcess>
#include <QProcessEnvironment>

#include <iostream>

namespace {

QString q(const std::u16string &text)
{
    return localToQString(text);
}

// Boxes come up with the arrow even while a program holds the wait cursor.
class arrowCursor {
public:
    arrowCursor() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~arrowCursor() { QApplication::restoreOverrideCursor(); }
    arrowCursor(const arrowCursor &) = delete;
    arrowCursor &operator=(const arrowCursor &) = delete;
};

} // namespace

void localVclServices::messageBox(boxKind kind, const std::u16string &title, const std::u16string &text)
{
    arrowCursor cursor;
    switch (kind) {
    case boxInformation:
        QMessageBox::information(nullptr, q(title), q(text));
        break;
    case boxWarning:
        QMessageBox::warning(nullptr, q(title), q(text));
        break;
    case boxCritical:
        QMessageBox::critical(nullptr, q(title), q(text));
        break;
    case boxAbout:
        QMessageBox::about(nullptr, q(title), q(text));
        break;
    }
}

bool localVclServices::questionBox(const std::u16string &title, const std::u16string &text)
{
    arrowCursor cursor;
    return QMessageBox::question(nullptr, q(title), q(text), QMessageBox::Ok | QMessageBox::Cancel,
                                 QMessageBox::Cancel)
           == QMessageBox::Ok;
}

std::u16string localVclServices::openFileName(const std::u16string &title, const std::u16string &folder,
                                              const std::u16string &filter)
{
    arrowCursor cursor;
    return localFromQString(QFileDialog::getOpenFileName(nullptr, q(title), q(folder), q(filter)));
}

std::u16string localVclServices::saveFileName(const std::u16string &title, const std::u16string &folder,
                                              const std::u16string &filter)
{
    arrowCursor cursor;
    return localFromQString(QFileDialog::getSaveFileName(nullptr, q(title), q(folder), q(filter)));
}

void localVclServices::fatalBox(const std::u16string &title, const std::u16string &text)
{
    arrowCursor cursor;
    QMessageBox::critical(nullptr, q(title), q(text));
}

void localVclServices::waitCursorPush()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void localVclServices::waitCursorPop()
{
    QApplication::restoreOverrideCursor();
}

// Input waits in the queue, as it does while output lines are written: the
// console is busy, and the Esc poll of a running loop must still find it.
void localVclServices::processEvents()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool localVclServices::escapeQuestion()
{
    arrowCursor cursor;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Выход"), QStringLiteral("Прервать выполнение обработки"),
                    QMessageBox::Yes | QMessageBox::No);
    box.setObjectName(QStringLiteral("Вопрос"));
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

bool localVclServices::escapePressed()
{
    return localVclEventEscapeFilter::instance().poll() && escapeQuestion();
}

void localVclServices::editFile(const std::u16string &fileName, int32_t codePage, bool builtIn)
{
    if (builtIn) {
        localVclWidgetEditor *editor = new localVclWidgetEditor();
        if (!editor->load(fileName, codePage)) {
            delete editor;
            return;
        }
        editor->editorShow(editor->titleText());
        return;
    }
    // $VISUAL may carry its own options ("emacsclient -c").
    QStringList command = QProcess::splitCommand(QProcessEnvironment::systemEnvironment().value("VISUAL"));
    if (command.isEmpty())
        command << QStringLiteral("xdg-open");
    const QString program = command.takeFirst();
    if (!QProcess::startDetached(program, command << q(fileName)))
        std::cout << "MODIFY COMMAND: " << localNarrow(localFromQString(program)) << " could not be started\n"
                  << std::flush;
}

bool localVclServices::graphical() const
{
    return true;
}

void localVclInstall()
{
    localServices::install(new localVclServices);
    localVclGlobalFunctionsRegister();
    localVclListDialogsRegister();
}
