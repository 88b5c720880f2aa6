// Running compiled programs: the verdicts of textExec and textLoad, the
// lifetime of function bodies, the execute hook, the cost-free paths that
// must leave no cell or context behind, the Esc poll, and the log and save.
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localStd.h"
#include "localTestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <fstream>

using localTest::fileBytes;
using localTest::q;
using localTest::w;

namespace {

// Diagnostic tails name source files and lines; keep only the routine.
QString withoutPlaces(QString text)
{
    text.replace(QRegularExpression(" file: [^\n]* line: \\d+"), "");
    return text;
}

struct outcome {
    bool done;
    int status;
    QString output;
};

outcome run(bool (*routine)(localErrorType &, const std::u16string &, localContextUTF8 *), const QString &text,
            localContextUTF8 *context)
{
    localTest::coutCapture captured;
    localErrorType status = localErrorTypeOK;
    const bool done = routine(status, w(text), context);
    return {done, int(status), withoutPlaces(captured.text())};
}

// A context of its own for each case, so that cases do not see each other.
struct scratch {
    localContextUTF8 *context = new localContextUTF8(localTest::globalContext());
    ~scratch() { delete context; }
};

QString numberOf(localContextUTF8 *context, const char16_t *name)
{
    const localVariable *variable = context->variableFind(name);
    return variable == nullptr ? QString("none") : q(variable->value->toString());
}

// Counts the records that run, and runs them.
int hookCalls = 0;
bool countingExecute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                     localValueVector *arguments, localValueDescription **result)
{
    ++hookCalls;
    return localOperatorCompiled::executeRecord(status, context, record, arguments, result);
}

// Stands for a screen: counts the cursor and event calls, and reports Esc
// from a given poll on.
class recordingServices : public localServices {
public:
    int pushes = 0;
    int pops = 0;
    int events = 0;
    int polls = 0;
    int escapeFromPoll = 0; // 0: never
    void waitCursorPush() override { ++pushes; }
    void waitCursorPop() override { ++pops; }
    void processEvents() override { ++events; }
    bool escapePressed() override
    {
        ++polls;
        return escapeFromPoll > 0 && polls >= escapeFromPoll;
    }
};

} // namespace

// In a directory where the log's name is taken by a directory: the log
// cannot be opened, a line says so, and the program goes on.
LOCAL_CHILD_CASE(logCannotOpen)
{
    logWrite(u"lost");
    std::cout << "still here\n" << std::flush;
}

class tst_localProgram : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // The verdicts of textExec and of textLoad: a text to be included must end
    // by returning 1, and only the compile's report is printed for it.
    void verdict_data()
    {
        QTest::addColumn<bool>("load");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("done");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("output");
        QTest::newRow("exec: empty text is a proper end") << false << "" << true << 54 << "";
        QTest::newRow("exec: running to the end") << false << "? 1;" << true << 54 << "1\n";
        QTest::newRow("exec: RETURN 1") << false << "RETURN 1; ? 2;" << true << 54 << "";
        QTest::newRow("exec: RETURN 2") << false << "RETURN 2;" << true << 59 << "";
        QTest::newRow("exec: RETURN TRUE is not a number") << false << "RETURN TRUE;" << true << 59 << "";
        QTest::newRow("exec: BREAK at the top") << false << "BREAK; ? 1;" << true << 59 << "";
        QTest::newRow("exec: empty loop body") << false << "? 1; WHILE 1 DO ENDDO; ? 2;" << false << 54 << "1\n";
        QTest::newRow("exec: QUIT: nothing runs") << false << "? 1; QUIT; ? 2;" << true << 5 << "";
        QTest::newRow("exec: stray closing word")
            << false << "x = 1; ENDIF;" << false << 4
            << "x = 1; ENDIF;\nНепредвиденное использование зарезарвированного слова КонецЕсли (EndIf)\n"
               "line: 1 pos: 12 func: textExec\nchar: 59 func: textExec\n";
        QTest::newRow("exec: failing condition")
            << false << "IF 1/0 THEN ENDIF;" << false << 21
            << ">> 1/0 func: ifRun\nERROR!!! Деление на 0! func: ifRun\nДеление на 0! func: textExec\n";
        QTest::newRow("exec: failing RETURN")
            << false << "RETURN 1/0;" << false << 21
            << "localCompiledOperatorTypeRENURN with expression [(1/0)ERROR!!! func: returnRun\n"
               "Деление на 0! func: textExec\n";
        QTest::newRow("exec: failing command")
            << false << "DO \"no such file.prg\";" << false << 23
            << "Error! Файл не найден. func: statementDo\nDO \"no such file.prg\"; func: commandRun\n"
               "Файл не найден.ERROR!!! func: commandRun\nФайл не найден. func: textExec\n";
        QTest::newRow("load: empty text") << true << "" << true << 54 << "";
        QTest::newRow("load: definitions only") << true << "FUNCTION f() ENDFUNCTION;" << true << 54 << "";
        QTest::newRow("load: RETURN 1") << true << "RETURN 1;" << true << 54 << "";
        QTest::newRow("load: RETURN 2") << true << "RETURN 2;" << false << 58 << "";
        QTest::newRow("load: BREAK at the top") << true << "BREAK;" << false << 56 << "";
        QTest::newRow("load: QUIT") << true << "QUIT;" << false << 5 << "";
        QTest::newRow("load: compile fault")
            << true << "x = 1" << false << 42
            << "x = 1\nСинтаксическая ошибка. Ожидается \";\"\nline: 1 pos: 4 func: textLoad\nchar: 49 func: textLoad\n";
        QTest::newRow("load: run fault: the executor's lines only")
            << true << "RETURN 1/0;" << false << 21
            << "localCompiledOperatorTypeRENURN with expression [(1/0)ERROR!!! func: returnRun\n";
    }
    void verdict()
    {
        QFETCH(bool, load);
        QFETCH(QString, text);
        QFETCH(bool, done);
        QFETCH(int, status);
        QFETCH(QString, output);
        scratch here;
        const outcome result = run(load ? textLoad : textExec, text, here.context);
        QCOMPARE(result.output, output);
        QCOMPARE(result.status, status);
        QCOMPARE(result.done, done);
    }

    // The functions of a text stay callable after the call that ran it, though
    // its tree is gone; a later text that defines the name again replaces the
    // body, and the old one goes with its last user (AddressSanitizer watches).
    void functionsOutliveTheirText()
    {
        scratch here;
        QVERIFY(run(textLoad, "FUNCTION twice(x) RETURN x * 2; ENDFUNCTION;"
                              "FUNCTION quad(x) RETURN twice(twice(x)); ENDFUNCTION;",
                    here.context)
                    .done);
        QVERIFY(run(textExec, "a = quad(5);", here.context).done);
        QCOMPARE(numberOf(here.context, u"A"), QString("20"));

        QVERIFY(run(textExec, "FUNCTION twice(x) RETURN x * 3; ENDFUNCTION;", here.context).done);
        QVERIFY(run(textExec, "b = quad(5);", here.context).done);
        QCOMPARE(numberOf(here.context, u"B"), QString("45"));

        localErrorType status = localErrorTypeOK;
        localValueDescription *argument = localValueNew();
        argument->setVal(7);
        localValueVector arguments{argument};
        localValueDescription *result = nullptr;
        QVERIFY(here.context->funcExec(status, u"twice", &arguments, &result));
        QCOMPARE(result->localValueNumber, 21.0);
        QCOMPARE(int(status), 54);
        localValueRelease(result);
        localValueReleaseAll(arguments);
    }

    // A running function whose definition is replaced where it was made
    // runs to its end; the next call finds the new one.
    void bodyReplacedWhileItRuns()
    {
        QTemporaryDir dir;
        const QString library = dir.filePath("again.prg");
        QFile file(library);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("FUNCTION step(x) RETURN x + 100; ENDFUNCTION; RETURN 1;");
        file.close();
        scratch here;
        // Loaded, so that the entry alone holds the first body once the text has run.
        QVERIFY(run(textLoad,
                    "FUNCTION step(x) loaded = home.MODULELOAD(\"" + library + "\"); RETURN x + 1; ENDFUNCTION;",
                    here.context)
                    .done);
        QVERIFY(run(textExec, "home = CONTEXTGET(); first = step(1); second = step(1);", here.context).done);
        QCOMPARE(numberOf(here.context, u"FIRST"), QString("2"));
        QCOMPARE(numberOf(here.context, u"SECOND"), QString("101"));
    }

    // Calls, failed calls and loops give back every cell and context they took.
    void nothingLeftBehind_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("done");
        QTest::newRow("calls by reference and by value")
            << "FUNCTION f(a, VAR b) a = a + b; b = 0; RETURN a; ENDFUNCTION; x = 1; y = f(x, x); z = f((x), 2);"
            << true;
        QTest::newRow("recursion") << "FUNCTION r(n) IF n = 0 THEN RETURN 0; ENDIF; RETURN r(n - 1) + 1; ENDFUNCTION;"
                                      "? r(50);"
                                   << true;
        QTest::newRow("RETURN from a loop in a function")
            << "FUNCTION f() WHILE 1 DO IF 1 THEN RETURN \"s\"; ENDIF; ENDDO; ENDFUNCTION; s = f();" << true;
        QTest::newRow("BREAK leaves a loop") << "FOR i = 1 TO 9 DO IF i = 3 THEN BREAK; ENDIF; ENDDO;" << true;
        QTest::newRow("too few arguments") << "FUNCTION f(a, b) RETURN a; ENDFUNCTION; x = f(1);" << false;
        QTest::newRow("fault deep in calls")
            << "FUNCTION f(n) IF n = 0 THEN RETURN 1/0; ENDIF; RETURN f(n - 1); ENDFUNCTION; x = f(5);" << false;
        QTest::newRow("BREAK outside a loop") << "FUNCTION f(a) BREAK; ENDFUNCTION; f(1);" << false;
        QTest::newRow("VAR twice in a function") << "FUNCTION f() VAR a = 1; VAR a = 2; ENDFUNCTION; f();" << false;
    }
    void nothingLeftBehind()
    {
        QFETCH(QString, text);
        QFETCH(bool, done);
        const size_t cellsBefore = localMemoryManager::instance().getUsedCount();
        const int64_t contextsBefore = localContextUTF8::counterStaticTotal;
        {
            scratch here;
            QCOMPARE(run(textExec, text, here.context).done, done);
        }
        QCOMPARE(localContextUTF8::counterStaticTotal, contextsBefore);
        QCOMPARE(localMemoryManager::instance().getUsedCount(), cellsBefore);
    }


    // Every record runs through its own execute pointer, children and
    // function bodies included, so a debugger's hook sees each of them.
    void executeHook_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("calls");
        // root, x = 0, WHILE, three rounds of (body, assignment), final RETURN
        QTest::newRow("loop") << "x = 0; WHILE x < 3 DO x = x + 1; ENDDO;" << 10;
        // root, y = f(1), the body through localBlockCall, its RETURN, final RETURN
        QTest::newRow("call") << "FUNCTION f(a) RETURN a; ENDFUNCTION; y = f(1);" << 5;
        // root, IF, the taken branch, its print, final RETURN
        QTest::newRow("branch") << "IF 0 THEN ? 1; ELSE ? 2; ENDIF;" << 5;
    }
    void executeHook()
    {
        QFETCH(QString, text);
        QFETCH(int, calls);
        scratch here;
        localOperatorCompiled program(countingExecute);
        localOperatorCompiled *pointer = &program;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        const std::u16string wide = w(text);
        QVERIFY(textCompile(status, wide, position, &pointer));
        localTest::coutCapture quiet;
        hookCalls = 0;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        const bool done = program.execute(status, here.context, &program, &noArguments, &result);
        QVERIFY(done);
        QCOMPARE(hookCalls, calls);
        QCOMPARE(int(status), 58);
        QCOMPARE(result->localValueNumber, 1.0);
        localValueRelease(result);
    }

    // WHILE asks about Esc each round, only in an interruptible context.
    void escapePoll()
    {
        recordingServices *services = new recordingServices;
        services->escapeFromPoll = 3;
        localServices::install(services);
        scratch here;
        const outcome quiet = run(textExec, "i = 0; WHILE i < 5 DO i = i + 1; ENDDO;", here.context);
        const int pollsWhenQuiet = services->polls;
        here.context->interruptible = true;
        const outcome asked = run(textExec, "i = 0; WHILE i < 5 DO i = i + 1; ENDDO;", here.context);
        const int polls = services->polls;
        localServices::install(nullptr);
        QVERIFY(quiet.done);
        QCOMPARE(pollsWhenQuiet, 0);
        QVERIFY(!asked.done);
        QCOMPARE(asked.status, 55);
        QCOMPARE(polls, 3);
        QCOMPARE(numberOf(here.context, u"I"), QString("2"));
    }

    // The wait cursor is paired on every path; textExec lets events through
    // once after the run, textLoad does not.
    void waitCursorAndEvents_data()
    {
        QTest::addColumn<bool>("load");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("events");
        QTest::newRow("exec, proper end") << false << "x = 1;" << 1;
        QTest::newRow("exec, compile fault") << false << "x = ;" << 0;
        QTest::newRow("load, proper end") << true << "x = 1;" << 0;
    }
    void waitCursorAndEvents()
    {
        QFETCH(bool, load);
        QFETCH(QString, text);
        QFETCH(int, events);
        recordingServices *services = new recordingServices;
        localServices::install(services);
        scratch here;
        run(load ? textLoad : textExec, text, here.context);
        const int pushes = services->pushes;
        const int pops = services->pops;
        const int seen = services->events;
        localServices::install(nullptr);
        QVERIFY(pushes > 0);
        QCOMPARE(pops, pushes);
        QCOMPARE(seen, events);
    }

    void treePrinter()
    {
        localOperatorCompiled program;
        localOperatorCompiled *pointer = &program;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        QVERIFY(textCompile(status, u"x = 1; IF x THEN ? x; ENDIF; WHILE x DO BREAK; ENDDO;", position, &pointer));
        localTest::coutCapture captured;
        program.COUT();
        const QString expected = "[0]  // start localCompiledOperatorTypeBLOCK with indent=0 func: COUT\n"
                                 "[0]  X=1;  func: COUT\n"
                                 "[7]  localCompiledOperatorTypeIF  func: COUT\n"
                                 "[16]  if (x) then  func: COUT\n"
                                 "[16]  ..... // start localCompiledOperatorTypeBLOCK with indent=1 func: COUT\n"
                                 "[17]  ..... ? (x) ;  func: COUT\n"
                                 "[16]  ..... // finish localCompiledOperatorTypeBLOCK with indent=1 func: COUT\n"
                                 "[7]  endif;  func: COUT\n"
                                 "[29]  while (x) do func: COUT\n"
                                 "[39]  ..... // start localCompiledOperatorTypeBLOCK with indent=1 func: COUT\n"
                                 "[40]  ..... BREAK ;  func: COUT\n"
                                 "[39]  ..... // finish localCompiledOperatorTypeBLOCK with indent=1 func: COUT\n"
                                 "[29]  enddo;  func: COUT\n"
                                 "[53]  localCompiledOperatorTypeRENURN (1) func: COUT\n"
                                 "[0]  // finish localCompiledOperatorTypeBLOCK with indent=0 func: COUT\n";
        QCOMPARE(withoutPlaces(captured.text()), expected);
    }

    // Each log call appends one line; the stamped one starts with the date
    // and time. dispMemoToLog writes the listing there and not on the screen.
    void log()
    {
        const QString path = QString::fromStdString(localStd::logPath());
        const qint64 before = QFileInfo(path).size();
        scratch here;
        here.context->variableCreate(u"LOGGED");
        localTest::coutCapture captured;
        logWrite(u"plain line Ё");
        logWriteStamped(u"stamped");
        dispMemoToLog(here.context);
        QCOMPARE(captured.text(), QString());

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.seek(before));
        const QString added = QString::fromUtf8(file.readAll());
        const QStringList lines = added.split('\n');
        QCOMPARE(lines.value(0), QString("plain line Ё"));
        QVERIFY2(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d stamped$").match(lines.value(1)).hasMatch(),
                 qPrintable(lines.value(1)));
        QCOMPARE(lines.value(2), QString("СПИСОК ПЕРЕМЕННЫХ *************** "));
        QVERIFY(added.contains(" var [LOGGED] : ЧИСЛО [0]\n"));
        QVERIFY(lines.filter("Accessible RAM:").size() == 1);
    }

    void logCannotOpen()
    {
        QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir("current.log"));
        const localTest::childResult child = localTest::runChild("logCannotOpen", directory.path());
        QCOMPARE(child.exitCode, 0);
        QCOMPARE(withoutPlaces(QString::fromUtf8(child.output)), "Logfile [" + directory.path() + "/current.log] open ERROR! func: logWrite\nstill here\n");
    }

    // The bytes that each mode writes.
    void saveModes_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("0 writes UTF-8") << 0 << "AЁа" << QByteArray("A\xD0\x81\xD0\xB0");
        QTest::newRow("1 Base64 as bytes") << 1 << "QUJD" << QByteArray("ABC");
        QTest::newRow("2 CP1251") << 2 << "AЁа" << QByteArray("A\xA8\xE0");
        QTest::newRow("3 CP866") << 3 << "AЁа" << QByteArray("A\xF0\xA0");
        QTest::newRow("4 UTF-8") << 4 << "AЁа" << QByteArray("A\xD0\x81\xD0\xB0");
    }
    void saveModes()
    {
        QFETCH(int, mode);
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QTemporaryDir directory;
        const QString name = directory.filePath("saved.txt");
        localTest::coutCapture captured;
        QVERIFY(save(false, mode, w(text), w(name)));
        QCOMPARE(fileBytes(name), bytes);
        QCOMPARE(captured.text(), "Успешно записан файл " + name + "\n");
    }

    void saveAppendAndRefuse()
    {
        QTemporaryDir directory;
        const QString name = directory.filePath("log.txt");
        localTest::coutCapture quiet;
        QVERIFY(save(false, 4, u"one", w(name)) && save(true, 4, u"two", w(name)));
        QCOMPARE(fileBytes(name), QByteArray("onetwo"));
        QVERIFY(save(false, 4, u"three", w(name)));
        QCOMPARE(fileBytes(name), QByteArray("three"));
        localTest::coutCapture captured;
        QVERIFY(!save(false, 5, u"x", w(directory.filePath("five.txt"))));
        QVERIFY(!QFile::exists(directory.filePath("five.txt")));
        QVERIFY(!save(false, 4, u"x", u""));
        QCOMPARE(captured.text(), QString());
        QVERIFY(!save(false, 4, u"x", w(directory.filePath("missing/dir.txt"))));
        const QString failure = withoutPlaces(captured.text());
        QVERIFY2(failure.startsWith("Ошибка записи файла [" + directory.filePath("missing/dir.txt") + "]\n line: "),
                 qPrintable(failure));
    }
};

LOCAL_TEST_MAIN(tst_localProgram)
#include "tst_localProgram.moc"
