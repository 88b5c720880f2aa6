#include "localTestSupport.h"

#include <QDir>
#include <QTemporaryDir>

using localTest::q;
using localTest::w;

namespace {

struct run {
    bool done;
    int status;
    int position;
    QString output;
};

run immediate(const QString &text, localContextUTF8 *context, bool onlyCheck)
{
    localTest::coutCapture captured;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    const std::u16string wide = w(text);
    const bool done = localInterpretatorUTF8::scanStringGetOperatorAndExec(status, wide, position, context, onlyCheck);
    return {done, int(status), int(position), captured.text()};
}

} // namespace

class tst_localImmediate : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // Under onlyCheck a statement only tells how far it reaches.
    void reach_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("done");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("position");
        QTest::newRow("cut words") << "DISP MEMO" << true << 54 << 9;
        QTest::newRow("whole words, mask") << "display memory X*Y?" << true << 54 << 19;
        QTest::newRow("three letters are no command") << "DIS MEMO" << true << 54 << 0;
        QTest::newRow("assignment is not seen") << "x = 5" << true << 54 << 0;
        QTest::newRow("quit sets its status") << "QUIT" << true << 5 << 4;
        QTest::newRow("do keeps a semicolon in the name") << "DO file.prg;" << true << 54 << 12;
        QTest::newRow("do quoted") << "DO \"a b.prg\";" << true << 54 << 12;
        QTest::newRow("do without name") << "DO" << false << 37 << 2;
        QTest::newRow("do unclosed quote") << "DO \"a.prg" << false << 37 << 9;
        QTest::newRow("clear memory") << "CLEA MEMO" << true << 54 << 9;
        QTest::newRow("clear other") << "CLEAR STUFF" << false << 37 << 11;
        QTest::newRow("display other") << "DISPLAY STUFF" << false << 37 << 13;
        QTest::newRow("modify without command") << "MODIFY STUFF" << false << 37 << 12;
        QTest::newRow("edit without name") << "EDIT COMMAND" << false << 37 << 12;
        QTest::newRow("edit with code page") << "EDIT COMMAND CP866 a.prg" << true << 54 << 24;
        QTest::newRow("help") << "HELP" << true << 54 << 4;
        QTest::newRow("run a name") << "RUN prog" << true << 54 << 8;
        QTest::newRow("empty") << "   " << true << 54 << 3;
        QTest::newRow("directory") << "DIRE" << true << 54 << 4;
    }
    void reach()
    {
        QFETCH(QString, text);
        QFETCH(bool, done);
        QFETCH(int, status);
        QFETCH(int, position);
        const run outcome = immediate(text, nullptr, true);
        QCOMPARE(outcome.done, done);
        QCOMPARE(outcome.status, status);
        QCOMPARE(outcome.position, position);
    }

    // Printing, assignment and QUIT at work are in the console program; here
    // the failures of both and EXIT.
    void printAndAssignFailing()
    {
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        const run failed = immediate("? 1 +", context.get(), false);
        QVERIFY(!failed.done);
        QCOMPARE(failed.status, 37);
        QVERIFY(failed.output.startsWith("ERROR!!! Синтаксическая ошибка. func: "));
        QCOMPARE(immediate("y = 1 +", context.get(), false).status, 37);
        const run quit = immediate("exit", context.get(), false);
        QVERIFY(quit.done);
        QCOMPARE(quit.status, 5);
    }

    void clearMemoryKeepsCellsBusy()
    {
        std::unique_ptr<localContextUTF8> outer(new localContextUTF8(localTest::globalContext()));
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(outer.get()));
        outer->variableSetNumber(u"KEPT", 1);
        QVERIFY(immediate("a = 1", context.get(), false).done);
        QVERIFY(immediate("b = 2", context.get(), false).done);
        const size_t used = localMemoryManager::instance().getUsedCount();
        QVERIFY(immediate("CLEA MEMO", context.get(), false).done);
        QVERIFY(context->variables.empty());
        QCOMPARE(outer->variables.size(), size_t(1));
        QCOMPARE(localMemoryManager::instance().getUsedCount(), used);
    }

    void listings()
    {
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        context->variableSetNumber(u"ALPHA", 1);
        context->variableSetNumber(u"BETA", 2);
        const QString memory = immediate("DISPLAY MEMORY AL*", context.get(), false).output;
        QVERIFY2(memory.startsWith("СПИСОК ПЕРЕМЕННЫХ *************** с шаблоном имени [AL*]\n"), qPrintable(memory));
        QVERIFY(memory.contains(" var [ALPHA] : ЧИСЛО [1]\n"));
        QVERIFY(!memory.contains("BETA"));
        QVERIFY(memory.contains(" потомка контекста [0x"));
        const QString functions = immediate("DISP FUNC", context.get(), false).output;
        QVERIFY(functions.startsWith("СПИСОК ФУНКЦИЙ \n"));
        QVERIFY(functions.contains("[СООБЩИТЬ]"));
        QVERIFY(immediate("HELP", context.get(), false).output.contains("MOFIFY COMMAND"));
    }

    void masks_data()
    {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("matches");
        QTest::newRow("star rest") << "AL*" << "ALPHA" << true;
        QTest::newRow("question one") << "B?TA" << "BETA" << true;
        QTest::newRow("case folded") << "al*" << "ALPHA" << true;
        QTest::newRow("too short") << "B?" << "BETA" << false;
        QTest::newRow("star middle") << "A*A" << "ALPHA" << true;
    }
    void masks()
    {
        QFETCH(QString, mask);
        QFETCH(QString, name);
        QFETCH(bool, matches);
        QCOMPARE(localInterpretatorUTF8::maskMatches(w(mask), w(name)), matches);
    }

    void modifyMakesAMissingFile()
    {
        QTemporaryDir directory;
        const QString file = directory.filePath("new.prg");
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        const run outcome = immediate("MODIFY COMMAND \"" + file + "\"", context.get(), false);
        QVERIFY(outcome.done);
        QVERIFY(QFileInfo::exists(file));
        QVERIFY(outcome.output.contains("needs the graphical console"));
    }
};

LOCAL_TEST_MAIN(tst_localImmediate)
#include "tst_localImmediate.moc"
