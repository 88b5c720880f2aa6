// The console widget: what keys may do to the input line, the history on
// disk, the function keys, the road of a typed line, output arriving while a
// command runs, and the window settings. Each case runs in a fresh working
// directory.
#include "localConsole.h"
#include "localConsoleStart.h"
#include "localCoutBuffer.h"

#include "localVclServices.h"

#include "localDbManager.h"

#include "localJson.h"
#include "localValueList.h"

#include "localTestSupport.h"
#include "localWidgetTestSupport.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QScreen>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

#include <iostream>
#include <memory>

using localTest::modalAnswer;

namespace {

const QString prompt = QStringLiteral("localInterpretatorUTF8> ");
const QString promptBusy = QStringLiteral("Wait!!!                 ");

QStringList fileLines(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return QStringList();
    QString text = QString::fromUtf8(file.readAll());
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

// A settings file as the console writes it: the JSON of a value list.
void iniWrite(const QList<QPair<QString, double>> &items)
{
    localValueDescription *cell = localValueNew();
    localValueList *list = localValueList::newInCell(cell);
    for (const auto &item : items)
        list->valueSetByPresentation(item.second, localTest::w(item.first));
    localTest::fileWrite(QStringLiteral("localConsole.ini"), localTest::q(localJson::valueToJson(*cell)).toUtf8());
    localValueRelease(cell);
}

} // namespace

class tst_localConsole : public QObject {
    Q_OBJECT

    QString startDirectory;
    std::unique_ptr<QTemporaryDir> directory;
    QPointer<localConsole> console;
    localCoutBuffer buffer;
    std::streambuf *previous = nullptr;

    // Makes the console as the start-up does, with std::cout sent into it.
    void consoleOpen()
    {
        console = new localConsole();
        qApp->setProperty("localGlobalContext", qlonglong(quintptr(localContextUTF8::globalContext)));
        QObject::connect(&buffer, &localCoutBuffer::COUT, console.data(), &localConsole::COUT);
        previous = std::cout.rdbuf(&buffer);
    }

    void consoleClose()
    {
        if (previous != nullptr)
            std::cout.rdbuf(previous);
        previous = nullptr;
        if (console != nullptr) {
            QWidget *top = console->window();
            delete top;
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        qApp->setProperty("localGlobalContext", QVariant());
    }

    QString lastLine() const { return console->document()->lastBlock().text(); }
    QStringList lines() const { return console->toPlainText().split(QLatin1Char('\n')); }

    void type(const QString &text)
    {
        for (const QChar c : text) {
            const int key = c.toUpper().unicode();
            QTest::sendKeyEvent(QTest::Click, console.data(), Qt::Key(key), QString(c), Qt::NoModifier);
        }
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(console.data(), Qt::Key(key), modifiers);
    }
    void enter(const QString &text)
    {
        type(text);
        press(Qt::Key_Return);
    }

    // The lines a command printed: between its echo and the new prompt,
    // without the developer's diagnostic lines.
    QStringList answerOf(const QString &command) const
    {
        const QStringList all = lines();
        const int echo = all.lastIndexOf(prompt + command);
        QStringList answer;
        for (int i = echo + 1; i >= 1 && i < all.size() - 1; ++i)
            if (!all[i].contains(QLatin1String(" func: ")))
                answer << all[i];
        return answer;
    }

private slots:
    void initTestCase()
    {
        localVclInstall();
        startDirectory = QDir::currentPath();
    }

    void init()
    {
        directory.reset(new QTemporaryDir());
        QVERIFY(directory->isValid());
        QVERIFY(QDir::setCurrent(directory->path()));
        QVERIFY(localTest::fileWrite(QStringLiteral("console_history.log"), QByteArray()));
    }

    void cleanup()
    {
        consoleClose();
        QDir::setCurrent(startDirectory);
        directory.reset();
    }

    void promptCannotBeErased_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("expected");
        QTest::newRow("backspace") << int(Qt::Key_Backspace) << int(Qt::NoModifier) << "X";
        QTest::newRow("left") << int(Qt::Key_Left) << int(Qt::NoModifier) << "Xab";
        QTest::newRow("shift+left selects the input only") << int(Qt::Key_Left) << int(Qt::ShiftModifier) << "X";
        QTest::newRow("home") << int(Qt::Key_Home) << int(Qt::NoModifier) << "Xab";
    }

    // "ab" typed, the key pressed three times (a cursor that slipped into the
    // prompt would stop there), three Backspaces and an "X": whatever the key
    // did, the prompt stands whole.
    void promptCannotBeErased()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, expected);
        consoleOpen();
        type(QStringLiteral("ab"));
        press(key, Qt::KeyboardModifiers(modifiers), 3);
        press(Qt::Key_Backspace, Qt::NoModifier, 3);
        type(QStringLiteral("X"));
        QCOMPARE(lastLine(), prompt + expected);
    }

    // With the cursor or a selection in earlier output (a mouse click puts
    // it there), editing keys act at the end of the input line.
    void editingElsewhereActsOnTheInputLine()
    {
        consoleOpen();
        std::cout << "old output\n";
        type(QStringLiteral("ab"));
        QTextCursor cursor(console->document());
        cursor.movePosition(QTextCursor::Start);
        cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, 5);
        console->setTextCursor(cursor);
        press(Qt::Key_Backspace);
        type(QStringLiteral("X"));
        QCOMPARE(lines(), (QStringList{"old output", prompt + QStringLiteral("aX")}));
    }

    void printableKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("typed");
        QTest::newRow("latin with shift") << int(Qt::Key_Q) << "Q" << int(Qt::ShiftModifier) << "Q";
        QTest::newRow("digit on the keypad") << int(Qt::Key_5) << "5" << int(Qt::KeypadModifier) << "5";
        QTest::newRow("russian") << 0x416 << "ж" << int(Qt::NoModifier) << "ж";
        QTest::newRow("russian yo") << 0x401 << "ё" << int(Qt::NoModifier) << "ё";
        QTest::newRow("ukrainian i") << 0x406 << "і" << int(Qt::NoModifier) << "";
        QTest::newRow("ctrl+v") << int(Qt::Key_V) << "\x16" << int(Qt::ControlModifier) << "";
        QTest::newRow("alt+a") << int(Qt::Key_A) << "a" << int(Qt::AltModifier) << "";
    }

    void printableKeys()
    {
        QFETCH(int, key);
        QFETCH(QString, text);
        QFETCH(int, modifiers);
        QFETCH(QString, typed);
        consoleOpen();
        QTest::sendKeyEvent(QTest::Click, console.data(), Qt::Key(key), text, Qt::KeyboardModifiers(modifiers));
        QCOMPARE(lastLine(), prompt + typed);
    }

    void ctrlCAbandonsTheLine()
    {
        consoleOpen();
        type(QStringLiteral("abc"));
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(lastLine(), prompt);
        QVERIFY(lines().contains(prompt + QStringLiteral("abc")));
        QVERIFY(console->history.isEmpty());
    }

    void historyWalk()
    {
        consoleOpen();
        press(Qt::Key_Up);
        QCOMPARE(lastLine(), prompt);
        enter(QStringLiteral("? 1"));
        enter(QStringLiteral("? 2"));
        enter(QStringLiteral("? 3"));
        const QStringList expected = {"? 3", "? 2", "? 1", "? 1", "? 2", "? 3", "", ""};
        const int keys[] = {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up,
                            Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down};
        for (int i = 0; i < expected.size(); ++i) {
            press(keys[i]);
            QCOMPARE(lastLine(), prompt + expected[i]);
        }
        // Shift+Up is no history key.
        press(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(lastLine(), prompt);
    }

    void historyStoredOnce_data()
    {
        QTest::addColumn<QStringList>("commands");
        QTest::addColumn<QStringList>("stored");
        QTest::newRow("repeated") << QStringList{"? 1", "? 1"} << QStringList{"? 1"};
        QTest::newRow("repeated with blanks around") << QStringList{"? 1", "? 1  "} << QStringList{"? 1"};
        QTest::newRow("separated") << QStringList{"? 1", "? 2", "? 1"} << QStringList{"? 1", "? 2", "? 1"};
        QTest::newRow("blank line") << QStringList{"? 1", "   "} << QStringList{"? 1", ""};
    }

    // In memory and in the file; a new console reads it back without the
    // empty entries.
    void historyStoredOnce()
    {
        QFETCH(QStringList, commands);
        QFETCH(QStringList, stored);
        consoleOpen();
        for (const QString &command : commands)
            enter(command);
        QCOMPARE(console->history, stored);
        QCOMPARE(fileLines(QStringLiteral("console_history.log")), stored);
        consoleClose();
        consoleOpen();
        stored.removeAll(QString());
        QCOMPARE(console->history, stored);
        QCOMPARE(console->historyPosition, stored.size());
    }

    void historyFileMissing()
    {
        QFile::remove(QStringLiteral("console_history.log"));
        modalAnswer box(modalAnswer::press(QMessageBox::Ok));
        consoleOpen();
        QCOMPARE(box.text, QStringLiteral("Файл console_history.log не найден!"));
        QCOMPARE(box.title, QString());
        enter(QStringLiteral("? 7"));
        QCOMPARE(fileLines(QDir::current().filePath(QStringLiteral("console_history.log"))), QStringList{"? 7"});
    }

    void functionKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("marker"); // empty: nothing happens at all
        const QString manual = QStringLiteral("manual ran");
        QTest::newRow("F1 help") << int(Qt::Key_F1) << int(Qt::NoModifier) << "КОМАНДЫ";
        QTest::newRow("F7 display memory") << int(Qt::Key_F7) << int(Qt::NoModifier) << "СПИСОК ПЕРЕМЕННЫХ";
        QTest::newRow("alt+F1") << int(Qt::Key_F1) << int(Qt::AltModifier) << manual;
        QTest::newRow("alt+shift+F1") << int(Qt::Key_F1) << int(Qt::AltModifier | Qt::ShiftModifier) << manual;
        QTest::newRow("ctrl+F1") << int(Qt::Key_F1) << int(Qt::ControlModifier) << manual;
        QTest::newRow("shift+F1") << int(Qt::Key_F1) << int(Qt::ShiftModifier) << manual;
        QTest::newRow("ctrl+shift+F1") << int(Qt::Key_F1) << int(Qt::ControlModifier | Qt::ShiftModifier) << "";
        QTest::newRow("shift+F2") << int(Qt::Key_F2) << int(Qt::ShiftModifier) << "";
        QTest::newRow("F3 has no command") << int(Qt::Key_F3) << int(Qt::NoModifier) << "";
    }

    void functionKeys()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, marker);
        QVERIFY(localTest::fileWrite(QStringLiteral("testHelpLocalInterpretatorUtf8.prg"), "? \"manual ran\";\n"));
        consoleOpen();
        type(QStringLiteral("ab"));
        const QString before = console->toPlainText();
        press(key, Qt::KeyboardModifiers(modifiers));
        QVERIFY(!console->busy);
        if (marker.isEmpty()) {
            QCOMPARE(console->toPlainText(), before);
            return;
        }
        QVERIFY2(console->toPlainText().contains(marker), qPrintable(console->toPlainText()));
        // Nothing is echoed: the typed line stays as it was, a fresh prompt below.
        QVERIFY(lines().contains(prompt + QStringLiteral("ab")));
        QCOMPARE(lastLine(), prompt);
        QVERIFY(console->history.isEmpty());
    }

    void manualWithoutHelpProgram()
    {
        consoleOpen();
        modalAnswer box(modalAnswer::press(QMessageBox::Ok));
        enter(QStringLiteral("MaNuAl"));
        QCOMPARE(box.title, QStringLiteral("Help"));
        QCOMPARE(box.text, QStringLiteral("Файл testHelpLocalInterpretatorUtf8.prg не найден!"));
        QCOMPARE(lastLine(), prompt);
    }

    void typedLines_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("answer");
        QTest::newRow("one letter") << "a" << QStringList{"", "Syntax ERROR: a"};
        QTest::newRow("expression") << "? 2+2" << QStringList{"4"};
        QTest::newRow("hash expression") << "# 1+2" << QStringList{"3"};
        QTest::newRow("hash expression failing") << "# 1/0" << QStringList{"", "Деление на 0!"};
        QTest::newRow("blanks") << "   " << QStringList{"", ""};
        QTest::newRow("debugging a missing file") << "DEBUG prog.prg" << QStringList{"Error! "};
        QTest::newRow("step without a session") << "step" << QStringList();
        QTest::newRow("retired edit without COMMAND")
            << "E1111111111111111111111111111111111111111DIT x"
            << QStringList{"", "команда: E1111111111111111111111111111111111111111DIT Syntax ERROR"};
        QTest::newRow("edit opens a window") << "EDIT COMMAND x.prg" << QStringList();
    }

    // The road of a typed line: its answer between the echo and the prompt.
    void typedLines()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, answer);
        consoleOpen();
        const QWidgetList before = QApplication::topLevelWidgets();
        enter(command);
        QCOMPARE(answerOf(command), answer);
        QCOMPARE(lastLine(), prompt);
        QVERIFY(!console->busy);
        // A window a line opens (the editor ignores its close) goes with the row.
        QWidgetList opened;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (!before.contains(widget) && widget->parentWidget() == nullptr)
                opened << widget;
        QCOMPARE(!opened.isEmpty(), command.startsWith(QLatin1String("EDIT COMMAND")));
        qDeleteAll(opened);
    }

    void quitSaysGoodByeAndCloses()
    {
        consoleOpen();
        console->windowShow();
        QPointer<QWidget> frame = console->window();
        QVERIFY(frame->isVisible());
        enter(QStringLiteral("quit"));
        QVERIFY(lines().contains(QStringLiteral("Good bye!")));
        QVERIFY(!frame->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(frame.isNull());
    }

    void outputAboveTheInputLine_data()
    {
        QTest::addColumn<bool>("busy");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("shown");
        QTest::newRow("while busy") << true << "" << QByteArray("Привет, line\n") << "Привет, line";
        QTest::newRow("while typing") << false << "abc" << QByteArray("out\n") << "out";
        QTest::newRow("NUL ends the line") << true << "" << QByteArray("ab\0cd\n", 6) << "ab";
    }

    void outputAboveTheInputLine()
    {
        QFETCH(bool, busy);
        QFETCH(QString, typed);
        QFETCH(QByteArray, written);
        QFETCH(QString, shown);
        consoleOpen();
        type(typed);
        if (busy) {
            // As a running command leaves the console.
            console->busySet(true);
            console->promptPrint(true, u"");
        }
        std::cout.write(written.constData(), written.size());
        const QStringList all = lines();
        QCOMPARE(all.last(), (busy ? promptBusy : prompt) + typed);
        QCOMPARE(all[all.size() - 2], shown);
    }

    void partialLineWaitsForItsEnd()
    {
        consoleOpen();
        const QString before = console->toPlainText();
        std::cout << "par" << std::flush;
        QCOMPARE(console->toPlainText(), before);
        std::cout << "tial\n";
        QCOMPARE(lines().mid(lines().size() - 2), (QStringList{"partial", prompt}));
    }

    void keysAreSwallowedWhileBusy()
    {
        consoleOpen();
        console->busySet(true);
        console->promptPrint(true, u"");
        const QString before = console->toPlainText();
        type(QStringLiteral("ab"));
        press(Qt::Key_F1);
        press(Qt::Key_Return);
        QCOMPARE(console->toPlainText(), before);
    }

    void iniPlacement_data()
    {
        QTest::addColumn<QByteArray>("names");
        QTest::addColumn<QList<double>>("values");
        QTest::newRow("no file") << QByteArray() << QList<double>{};
        QTest::newRow("only x") << QByteArray("x") << QList<double>{345};
        QTest::newRow("all four") << QByteArray("whxy") << QList<double>{500.7, 350, 10, 20};
        QTest::newRow("a zero width is no width") << QByteArray("w") << QList<double>{0};
    }

    // Each stored key moves or sizes the window; every missing one leaves the
    // window's own value.
    void iniPlacement()
    {
        QFETCH(QByteArray, names);
        QFETCH(QList<double>, values);
        QList<QPair<QString, double>> items;
        const QHash<char, QString> keys = {{'w', "width"}, {'h', "height"}, {'x', "x"}, {'y', "y"}};
        for (int i = 0; i < names.size(); ++i)
            items << qMakePair(keys[names[i]], values[i]);
        if (!items.isEmpty())
            iniWrite(items);
        consoleOpen();
        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
        const QSize defaultSize(available.width() / 2, available.height() * 3 / 4);
        const QPoint own = console->pos();
        console->windowShow();
        QWidget *frame = console->window();
        QVERIFY(frame != console);
        QCOMPARE(frame->windowTitle(), QStringLiteral("Корвел "));
        auto stored = [&](char key, int otherwise) {
            const int at = names.indexOf(key);
            const bool sizeKey = key == 'w' || key == 'h';
            return at < 0 || (sizeKey && values[at] <= 0) ? otherwise : int(values[at]);
        };
        QCOMPARE(frame->x(), stored('x', own.x()));
        QCOMPARE(frame->y(), stored('y', own.y()));
        QCOMPARE(console->width(), stored('w', defaultSize.width()));
        QCOMPARE(console->height(), stored('h', defaultSize.height()));
    }

    // Leaving the window writes the four numbers; the next console takes them.
    void iniSavedOnFocusOut()
    {
        consoleOpen();
        console->windowShow();
        QWidget *frame = console->window();
        frame->move(31, 47);
        console->resize(420, 310);
        QFocusEvent leaving(QEvent::FocusOut);
        QApplication::sendEvent(console.data(), &leaving);
        std::unique_ptr<localValueList> saved(localJson::valueListFromJsonFile(u"localConsole.ini"));
        QCOMPARE(int(saved->size()), 4);
        const char16_t *keys[] = {u"width", u"height", u"x", u"y"};
        const int expected[] = {420, 310, frame->x(), frame->y()};
        for (size_t i = 0; i < 4; ++i) {
            QCOMPARE(localTest::q(*saved->presentationByIndex(i + 1)), localTest::q(keys[i]));
            QCOMPARE(saved->valueByIndex(i + 1)->localValueNumber, double(expected[i]));
        }
        consoleClose();
        consoleOpen();
        QCOMPARE(console->size(), QSize(420, 310));
    }

    // The console as the start-up assembles it opens the manager of the
    // application's data file on Ctrl+D.
    void ctrlDOpensTheDatabaseManager()
    {
        const QString fileName = directory->filePath(QStringLiteral("data.sqlite"));
        {
            QSqlDatabase setup = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("setup"));
            setup.setDatabaseName(fileName);
            QVERIFY(setup.open());
            QVERIFY(QSqlQuery(setup).exec(QStringLiteral("create table goods (name CHAR(10))")));
            setup.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("setup"));
        qApp->setProperty("dataFileName", fileName);
        previous = std::cout.rdbuf();
        console = localConsoleAssemble(&buffer);
        QWidget *frame = console->window();
        frame->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(frame));
        press(Qt::Key_D, Qt::ControlModifier);
        qApp->setProperty("dataFileName", QVariant());
        localDbManagerTableView *manager = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets())
            if (localDbManagerTableView *found = top->findChild<localDbManagerTableView *>())
                manager = found;
        QVERIFY(manager != nullptr);
        QCOMPARE(manager->managerModel()->data(manager->managerModel()->index(0, 1)).toString(),
                 QStringLiteral("goods"));
        delete manager->window();
    }
};

QTEST_MAIN(tst_localConsole)
#include "tst_localConsole.moc"
