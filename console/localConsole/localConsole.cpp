#include "localConsole.h"

#include "localVCL.h"

#include "localConsoleLine.h"
#include "localDebugger.h"
#include "localVclWidgetEditor.h"
#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localServices.h"
#include "localStd.h"
#include "localString.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextStream>

#include <iostream>

namespace {

QString q(const std::u16string &text)
{
    return localToQString(text);
}

QTextCharFormat foreground(const QColor &color)
{
    QTextCharFormat format;
    format.setForeground(color);
    return format;
}

const QColor promptColor(Qt::green);
const QColor outputColor(Qt::gray);

} // namespace

// The console's side of the shared line classification.
class localConsoleLineHooks : public localConsoleLine {
public:
    localConsoleLineHooks(localConsole *owner, localContextUTF8 *lineContext)
        : localConsoleLine(lineContext), console(owner)
    {
    }

protected:
    void answerPrint(const std::u16string &text) override { console->answerPrint(q(text)); }
    void busyLineRemove() override { console->inputLineRemove(); }
    void leave() override { console->window()->close(); }
    void commandHelpAsPrg() override { console->commandHelpAsPrg(); }
    void commandDebug(const std::u16string &arguments) override { console->commandDebug(arguments); }
    // With no session nothing is connected, and the line goes nowhere.
    void commandStep(const std::u16string &line) override { emit console->commandToThread(line); }
    void commandTrace(const std::u16string &arguments) override
    {
        localProcess process;
        localErrorType status = localErrorTypeOK;
        process.trace(status, arguments, context);
    }
    void commandEdit(const std::u16string &fileName, int32_t codePage) override
    {
        localServices::instance().editFile(fileName, codePage, true);
    }

private:
    localConsole *console;
};

coutBufferClass::coutBufferClass(localConsole *owner) : console(owner) {}

coutBufferClass::int_type coutBufferClass::overflow(int_type c)
{
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    if (c != '\n') {
        buffer += char(c);
        return c;
    }
    console->linePrint(QString::fromUtf8(buffer.c_str()));
    buffer.clear();
    console->verticalScrollBar()->setValue(console->verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
    return c;
}

localConsole::localConsole(QWidget *parent) : QPlainTextEdit(parent)
{
    localDebuggerRegisterTypes();
    setObjectName(QStringLiteral("localConsole() adr 0x") + QString::number(quintptr(this), 16));
    context = new localContextUTF8();
    line.reset(new localConsoleLineHooks(this, context));
    iniFileName = u"localConsole.ini";
    setUndoRedoEnabled(false); // a session's output is no edit to undo

    prompt = QStringLiteral("localInterpretatorUTF8> ");
    promptLength = prompt.size();
    promptBusy = QStringLiteral("Wait!!!").leftJustified(100, QLatin1Char(' ')).left(promptLength);
    promptCurrent = prompt;

    promptPrint(false, u"");
    busySet(false);
    historyLoad();

    coutBuffer.reset(new coutBufferClass(this));

    QPalette colours = palette();
    colours.setBrush(QPalette::All, QPalette::Base, Qt::black);
    colours.setBrush(QPalette::All, QPalette::Text, Qt::green);
    setPalette(colours);
    QFont larger = font();
    larger.setPointSize(12);
    setFont(larger);

    keyCommandsFill();

    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    resize(available.width() / 2, available.height() * 3 / 4);
    iniLoad();
}

localConsole::~localConsole()
{
    line.reset();
    delete context;
}

void localConsole::keyCommandsFill()
{
    // F4 opens the sample folder beside the program.
    const std::u16string samples = localFromQString(QCoreApplication::applicationDirPath()) + u"/prgTest";
    const keyCommand table[keyCommandCount] = {
        {Qt::Key_F1, keyModifiersNone, u"help"},
        {Qt::Key_F2, keyModifiersNone, u"trying"},
        {Qt::Key_F3, keyModifiersNone, u""},
        {Qt::Key_F4, keyModifiersNone, u"run \"" + samples + u"\""},
        {Qt::Key_F5, keyModifiersNone, u""},
        {Qt::Key_F6, keyModifiersNone, u""},
        {Qt::Key_F7, keyModifiersNone, u"display memory"},
        {Qt::Key_F8, keyModifiersNone, u"clear memory"},
        {Qt::Key_F9, keyModifiersNone, u""},
        {Qt::Key_F10, keyModifiersNone, u""},
        {Qt::Key_F11, keyModifiersNone, u""},
        {Qt::Key_F12, keyModifiersNone, u""},
        {Qt::Key_F1, keyModifiersAltAny, u"manual"},
        {Qt::Key_F1, keyModifiersCtrlOnly, u"manual"},
        {Qt::Key_F1, keyModifiersShiftOnly, u"manual"},
    };
    std::copy(std::begin(table), std::end(table), std::begin(keyCommands));
}

const std::u16string *localConsole::keyCommandFind(int key, Qt::KeyboardModifiers modifiers) const
{
    for (const keyCommand &entry : keyCommands) {
        if (entry.key != key || entry.command.empty())
            continue;
        bool matches = false;
        switch (entry.modifiers) {
        case keyModifiersNone:
            matches = modifiers == Qt::NoModifier;
            break;
        case keyModifiersAltAny:
            matches = (modifiers & Qt::AltModifier) != 0;
            break;
        case keyModifiersCtrlOnly:
            matches = modifiers == Qt::ControlModifier;
            break;
        case keyModifiersShiftOnly:
            matches = modifiers == Qt::ShiftModifier;
            break;
        }
        if (matches)
            return &entry.command;
    }
    return nullptr;
}

void localConsole::scrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void localConsole::promptPrint(bool newBlock, const std::u16string &text)
{
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    if (newBlock)
        cursor.insertBlock();
    const QTextCharFormat format = foreground(promptColor);
    cursor.setBlockCharFormat(format);
    cursor.setCharFormat(format);
    cursor.insertText(text.empty() ? promptCurrent : q(text));
    setTextCursor(cursor);
    scrollToEnd();
}

void localConsole::inputLineRemove()
{
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    setTextCursor(cursor);
}

void localConsole::answerPrint(const QString &text)
{
    if (busy) {
        inputLineRemove();
        promptCurrent = prompt;
        busy = false;
    }
    linePrint(text);
    promptPrint(true, u"");
}

void localConsole::linePrint(const QString &text)
{
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.insertBlock();
    cursor.insertText(text, foreground(outputColor));
    setTextCursor(cursor);
}

void localConsole::busySet(bool on)
{
    if (on) {
        promptCurrent = promptBusy;
        busy = true;
        return;
    }
    if (busy)
        inputLineRemove();
    promptCurrent = prompt;
    busy = false;
}

void localConsole::COUT(QString text)
{
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    const QString typed = cursor.block().text().mid(promptLength).trimmed();
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.insertText(text, foreground(outputColor));
    cursor.insertBlock();
    const QTextCharFormat format = foreground(promptColor);
    cursor.setBlockCharFormat(format);
    cursor.setCharFormat(format);
    cursor.insertText(promptCurrent + typed);
    setTextCursor(cursor);
    scrollToEnd();
}

void localConsole::cmdExec(const QString &text)
{
    promptPrint(true, u"");
    line->cmdExec(localFromQString(text));
    // Paths that ended with an answer have left the busy state already.
    if (busy) {
        busySet(false);
        promptPrint(false, u"");
    }
}

void localConsole::commandHelpAsPrg()
{
    const std::u16string name = u"testHelpLocalInterpretatorUtf8.prg";
    const std::u16string directory = localString::pathSearch(name);
    if (directory.empty()) {
        QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Help"),
                        QStringLiteral("Файл testHelpLocalInterpretatorUtf8.prg не найден!"));
        box.exec();
        return;
    }
    // The help runs in the global context, so its variables stay out of
    // the console's DISPLAY MEMORY.
    const std::u16string command = u"do \"" + directory + localStd::separatorWide + name + u"\"";
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    if (!localInterpretatorUTF8::scanStringGetOperatorAndExec(status, command, position, localVCL::globalContext(),
                                                              false))
        LOCAL_DIAG(localErrorText(status));
}

void localConsole::historyLoad()
{
    history.clear();
    historyPosition = 0;
    const std::u16string name = u"console_history.log";
    historyFileName = name;
    const std::u16string directory = localString::pathSearch(name);
    if (!directory.empty()) {
        historyFileName = directory + localStd::separatorWide + name;
    } else {
        QMessageBox box(QMessageBox::NoIcon, QString(), QStringLiteral("Файл console_history.log не найден!"));
        box.exec();
        // The start's working directory, where the next start looks first:
        // the console moves into prgTest before the first command is written.
        historyFileName = localString::cwdGet() + localStd::separatorWide + name;
    }
    QFile file(q(historyFileName));
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream stream(&file);
        stream.setCodec("UTF-8");
        while (!stream.atEnd()) {
            const QString entry = stream.readLine().trimmed();
            if (!entry.isEmpty())
                history << entry;
        }
    }
    historyPosition = history.size();
}

void localConsole::historyUp()
{
    if (historyPosition == 0)
        return;
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.insertText(promptCurrent + history[historyPosition - 1]);
    setTextCursor(cursor);
    --historyPosition;
}

void localConsole::historyDown()
{
    if (historyPosition == history.size())
        return;
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    if (historyPosition == history.size() - 1)
        cursor.insertText(promptCurrent);
    else
        cursor.insertText(promptCurrent + history[historyPosition + 1]);
    setTextCursor(cursor);
    ++historyPosition;
}

void localConsole::enterKey()
{
    const QTextCursor cursor = textCursor();
    if (cursor.positionInBlock() == promptLength) {
        promptPrint(true, u"");
        return;
    }
    const QString text = cursor.block().text().mid(promptLength).trimmed();
    if (history.isEmpty() || history.last().trimmed() != text) {
        history << text;
        QFile file(q(historyFileName));
        if (file.open(QIODevice::WriteOnly | QIODevice::Append)) {
            file.write(text.toUtf8());
            file.write("\n");
        }
    }
    historyPosition = history.size();
    busySet(true);
    cmdExec(text);
}

void localConsole::inputCursorEnsure()
{
    QTextCursor cursor = textCursor();
    const QTextBlock last = document()->lastBlock();
    if (cursor.block() == last && cursor.selectionStart() >= last.position() + promptLength
        && cursor.positionInBlock() >= promptLength)
        return;
    cursor.movePosition(QTextCursor::End);
    setTextCursor(cursor);
}

bool localConsole::printable(const QKeyEvent *event)
{
    const int key = event->key();
    const bool typed = (key >= 0x20 && key <= 0x7E) || key == 0x401 || key == 0x451 || (key >= 0x410 && key <= 0x44F);
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    return typed
           && (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier || modifiers == Qt::KeypadModifier);
}

void localConsole::keyPressEvent(QKeyEvent *event)
{
    if (busy)
        return;
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (const std::u16string *command = keyCommandFind(key, modifiers)) {
        busySet(true);
        cmdExec(q(*command));
        return;
    }
    if (key == Qt::Key_F10 && (modifiers & Qt::AltModifier)) {
        QWidget *top = window();
        if (top->isMaximized())
            top->showNormal();
        else
            top->showMaximized();
    }
    if (((key == Qt::Key_C) && (modifiers & Qt::ControlModifier)) || key == 0x01000063) {
        answerPrint(QString());
        return;
    }
    inputCursorEnsure();
    const bool noModifier = modifiers == Qt::NoModifier;
    const bool alt = (modifiers & Qt::AltModifier) != 0;
    const QTextCursor cursor = textCursor();
    switch (key) {
    case Qt::Key_Insert:
    case Qt::Key_End:
        QPlainTextEdit::keyPressEvent(event);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (!noModifier)
            break;
        if (key == Qt::Key_Up)
            historyUp();
        else
            historyDown();
        return;
    case Qt::Key_Home: {
        QTextCursor home = cursor;
        home.movePosition(QTextCursor::StartOfBlock);
        home.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, promptLength);
        setTextCursor(home);
        return;
    }
    case Qt::Key_Right:
        if (alt)
            break;
        if (!cursor.atBlockEnd())
            QPlainTextEdit::keyPressEvent(event);
        return;
    case Qt::Key_Left:
        if (alt)
            break;
        if (cursor.positionInBlock() > promptLength)
            QPlainTextEdit::keyPressEvent(event);
        return;
    case Qt::Key_Backspace:
        if (!noModifier)
            break;
        if (cursor.positionInBlock() > promptLength)
            QPlainTextEdit::keyPressEvent(event);
        return;
    case Qt::Key_Delete:
        if (!noModifier)
            break;
        QPlainTextEdit::keyPressEvent(event);
        return;
    case Qt::Key_Return:
        if (!noModifier)
            break;
        {
            QTextCursor end = cursor;
            end.movePosition(QTextCursor::EndOfBlock);
            setTextCursor(end);
        }
        enterKey();
        return;
    default:
        break;
    }
    if (printable(event))
        QPlainTextEdit::keyPressEvent(event);
}

bool localConsole::canInsertFromMimeData(const QMimeData *) const
{
    return false;
}

void localConsole::insertFromMimeData(const QMimeData *) {}

void localConsole::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    QAction *copy = menu.addAction(QStringLiteral("Copy"), this, &QPlainTextEdit::copy);
    copy->setEnabled(textCursor().hasSelection());
    menu.addAction(QStringLiteral("Select All"), this, &QPlainTextEdit::selectAll);
    // Entries that the application hangs on the console (the database
    // manager) follow the editing ones.
    if (!actions().isEmpty()) {
        menu.addSeparator();
        menu.addActions(actions());
    }
    menu.exec(event->globalPos());
}

// --- the step debugger ----------------------------------------------------------

void localConsole::commandDebug(const std::u16string &arguments)
{
    localErrorType status = localErrorTypeOK;
    std::u16string fileName;
    std::u16string text;
    if (!localDebuggerProgramRead(status, arguments, fileName, text)) {
        std::cout << "Error! \n" << localNarrow(localErrorText(status)) << LOCAL_DIAG_TAIL << std::flush;
        return;
    }
    thread = new MyThread(text, context);
    connect(thread, &MyThread::toConsole, this, &localConsole::fromThread);
    connect(thread, &MyThread::operChanged, this, &localConsole::operChangedSlot);
    connect(this, &localConsole::commandToThread, thread, &MyThread::fromConsole);
    connect(thread, &QThread::finished, this, &localConsole::threadFinished);
    debugEditor = localDebuggerEditor(text, localToQString(fileName));
    thread->start(QThread::InheritPriority);
    setFocus();
    activateWindow();
}

void localConsole::fromThread(std::u16string *text)
{
    linePrint(q(*text));
    delete text;
}

void localConsole::operChangedSlot(const localOperatorCompiled *record)
{
    if (debugEditor == nullptr)
        return;
    QTextCursor cursor = debugEditor->textCursor();
    cursor.setPosition(qMin(record->position, debugEditor->document()->characterCount() - 1),
                       QTextCursor::MoveAnchor);
    debugEditor->setTextCursor(cursor);
}

void localConsole::threadFinished()
{
    MyThread *ended = qobject_cast<MyThread *>(sender());
    if (ended == nullptr)
        return;
    std::cout << "DEBUG: the debugged program has ended, status: " << localNarrow(localErrorText(ended->status))
              << "\n"
              << std::flush;
    ended->deleteLater();
}
