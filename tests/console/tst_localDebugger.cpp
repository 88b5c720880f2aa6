// The debuggers of the console: DEBUG driven line by line with STEP, the
// operators it announces against those the compiler made, the line at the
// end of a session, a fault under DEBUG, and the pace of TRACE.
#include "localConsole.h"
#include "localCoutBuffer.h"
#include "localDebugger.h"

#include "localVclServices.h"
#include "localVclWidgetEditor.h"

#include "localTestSupport.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <iostream>
#include <memory>

namespace {

// The positions of the operators in the order a program without loops or
// calls runs them: the block, then each of its operators.
QList<int> operatorPositions(const QString &program)
{
    localOperatorCompiled root;
    localOperatorCompiled *block = &root;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    textCompile(status, localTest::w(program), position, &block);
    QList<int> positions{root.position};
    for (const localOperatorCompiled &child : root.children)
        positions.append(child.position);
    return positions;
}

} // namespace

class tst_localDebugger : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    localConsole *console = nullptr;
    localCoutBuffer buffer;
    std::streambuf *previous = nullptr;
    QStringList output;

    // Runs DEBUG on `program`, typing STEP whenever the program waits;
    // answers the positions announced and how many STEP lines it took.
    QList<int> debug(const QString &program, int &steps)
    {
        localTest::fileWrite(QStringLiteral("program.prg"), program.toUtf8());
        console->cmdExec(QStringLiteral("DEBUG program.prg"));
        QList<int> positions;
        int waiting = 0;
        connect(console->thread.data(), &MyThread::operChanged, this,
                [&positions, &waiting](const localOperatorCompiled *record) {
                    positions.append(record->position);
                    waiting += localDebuggerSkips(record) ? 0 : 1;
                });
        steps = 0;
        QElapsedTimer limit;
        limit.start();
        while (!ended() && limit.elapsed() < 20000) {
            QTest::qWait(10);
            for (; waiting > 0; --waiting, ++steps)
                console->cmdExec(QStringLiteral("STEP"));
        }
        return positions;
    }

    bool ended() const { return output.join('\n').contains(QStringLiteral("the debugged program has ended")); }

private slots:
    void initTestCase() { localVclInstall(); }

    void init()
    {
        directory.reset(new QTemporaryDir());
        QVERIFY(QDir::setCurrent(directory->path()));
        QVERIFY(localTest::fileWrite(QStringLiteral("console_history.log"), QByteArray()));
        console = new localConsole();
        output.clear();
        connect(&buffer, &localCoutBuffer::COUT, console, &localConsole::COUT);
        connect(&buffer, &localCoutBuffer::COUT, this, [this](const QString &line) { output.append(line); });
        previous = std::cout.rdbuf(&buffer);
    }

    void cleanup()
    {
        std::cout.rdbuf(previous);
        buffer.disconnect();
        QTRY_VERIFY(console->thread.isNull()); // a finished session is deleted
        delete console->window();
        qApp->closeAllWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void stepsFollowTheOperators()
    {
        const QString program = QStringLiteral("x = 1;\n\ny = 2;\n? x + y;");
        int steps = 0;
        const QList<int> positions = debug(program, steps);
        QCOMPARE(positions, operatorPositions(program));
        // The block announces itself but waits for no STEP.
        QCOMPARE(steps, positions.size() - 1);
        QVERIFY(output.contains(QStringLiteral("3")));
        QVERIFY(output.contains(QStringLiteral("DEBUG: the debugged program has ended, status: Ок. Ошибки отсутствуют")));
        QCOMPARE(console->debugEditor->textCursor().position(), positions.last());
    }

    void faultEndsTheSession()
    {
        int steps = 0;
        debug(QStringLiteral("x = 1;\ny = nothing + 1;\n? 5;\n"), steps);
        const QString ending = QStringLiteral("DEBUG: the debugged program has ended, status: ");
        const QStringList endings = output.filter(ending);
        QCOMPARE(endings.size(), 1);
        const QString status = endings[0].mid(ending.size());
        QVERIFY(status != localTest::q(localErrorText(localErrorTypeOK)));
        QVERIFY(!output.filter(QRegularExpression("^" + QRegularExpression::escape(status) + " func: MyThread::call")).isEmpty());
        QVERIFY(!output.contains(QStringLiteral("5")));
    }

    // STEP with no session and TRACE with no name print nothing.
    void nothingToDebug()
    {
        console->cmdExec(QStringLiteral("STEP"));
        console->cmdExec(QStringLiteral("TRACE"));
        QVERIFY(output.isEmpty());
        console->cmdExec(QStringLiteral("DEBUG nosuch.prg"));
        QCOMPARE(output.value(0), QStringLiteral("Error! "));
        QVERIFY(console->thread.isNull());
    }

    void traceTakesASecondAnOperator()
    {
        localTest::fileWrite(QStringLiteral("three.prg"), QByteArray("a = 1;\nb = 2;\nc = 3;\n"));
        QElapsedTimer timer;
        timer.start();
        console->cmdExec(QStringLiteral("TRACE three.prg"));
        const qint64 elapsed = timer.elapsed();
        qInfo("TRACE of three operators: %lld ms", elapsed);
        QVERIFY(elapsed >= 3000);
        QVERIFY(output.filter(QStringLiteral(" operShow!!!!!!:  func: ")).size() >= 4);
    }
};

QTEST_MAIN(tst_localDebugger)
#include "tst_localDebugger.moc"
