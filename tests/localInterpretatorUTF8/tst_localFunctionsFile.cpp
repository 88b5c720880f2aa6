// The global functions on files, paths, modules and the log, called from
// expressions against files in a temporary directory.
#include "localLibraryTestSupport.h"

#include "localStd.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using localTest::fileBytes;
using localTest::q;
using localTest::run;

namespace {

// A string literal of the language holding `text`.
QString quoted(const QString &text)
{
    return "\"" + text + "\"";
}

qint64 logSize()
{
    return QFileInfo(QString::fromStdString(localStd::logPath())).size();
}

QString logTail(qint64 from)
{
    QFile log(QString::fromStdString(localStd::logPath()));
    if (!log.open(QIODevice::ReadOnly) || !log.seek(from))
        return QString();
    return QString::fromUtf8(log.readAll());
}

} // namespace

class tst_localFunctionsFile : public QObject {
    Q_OBJECT
private:
    QTemporaryDir directory;

    QString path(const QString &name) const { return directory.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(directory.isValid());
        localTest::globalContext();
    }

    // The code pages by name, the conversions and BASE64FROMFILE are run by the
    // code-page program; here the page word left out or unknown, in both
    // spellings: each call appends, so two calls double the file.
    void textAppendedWithoutAKnownPage()
    {
        const QByteArray utf8("\xD0\x81\xD0\xB6 \xE9!");
        for (const QString &word : {QString(), QString(", \"koi8\"")}) {
            const QString file = path(word.isEmpty() ? "no-word.txt" : "koi8.txt");
            const QString arguments = "(\"Ёж é!\", " + quoted(file) + word + ")";
            QCOMPARE(run("stringappendtofile" + arguments), QString("БУЛЕВО ИСТИНА"));
            QCOMPARE(run("строкадобавитьвфайл" + arguments), QString("БУЛЕВО ИСТИНА"));
            QCOMPARE(fileBytes(file), utf8 + utf8);
        }
    }

    void fileArgumentsAndMissingFiles_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("read missing") << "stringfromfile(\"/no/such/file\")" << "fail 23";
        QTest::newRow("append to a bad path") << "stringappendtofile(\"a\", \"/no/such/dir/f\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("append a number") << "stringappendtofile(1, \"f\")" << "fail 33";
        QTest::newRow("code page kind") << "stringappendtofile(\"a\", \"f\", 1251)" << "fail 33";
        QTest::newRow("exist of a number") << "fileexist(1)" << "fail 33";
        QTest::newRow("empty path") << "путьсуществует(\"\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("root path") << "pathexist(\"/\")" << "БУЛЕВО ИСТИНА";
        QTest::newRow("files of a number") << "files(1)" << "fail 33";
        QTest::newRow("files missing directory") << "files(\"/no/such/dir\").SIZE()" << "ЧИСЛО 0";
        QTest::newRow("program path") << "valuetypeasstring(binarypath())" << "СТРОКА СТРОКА";
        QTest::newRow("cwd to nowhere") << "cwd(\"/no/such/dir\")" << "БУЛЕВО ЛОЖЬ";
    }
    void fileArgumentsAndMissingFiles()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        QCOMPARE(run(expression), outcome);
    }

    // FILEEXIST and FILEDELETE on a file that is there are in the code-page program.
    void existAndDelete()
    {
        const QString file = path("gone.txt");
        QVERIFY(localTest::fileWrite(file, "x"));
        QCOMPARE(run("pathexist(" + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("файлудалить(" + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("файлсуществует(" + quoted(file) + ")"), QString("БУЛЕВО ЛОЖЬ"));
        QCOMPARE(run("filedelete(" + quoted(file) + ")"), QString("БУЛЕВО ЛОЖЬ"));
    }

    void filesListsEntriesByName()
    {
        QTemporaryDir listed;
        for (const char *name : {"b.txt", "a.txt", "c.dat"})
            QVERIFY(localTest::fileWrite(listed.filePath(name), "x"));
        QVERIFY(QDir(listed.path()).mkdir("d.txt"));
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::evaluate(status, localTest::w("files(" + quoted(listed.path()) + ")"), &result,
                                                 localTest::globalContext()));
        QCOMPARE(localTest::listDump(*localValueList::fromValue(result)),
                 QString("a.txt=a.txt; b.txt=b.txt; c.dat=c.dat; d.txt=d.txt"));
        localValueRelease(result);
        QCOMPARE(run("файлы(" + quoted(listed.path()) + ", \"*.txt\").SIZE()"), QString("ЧИСЛО 3"));
        QCOMPARE(run("files(" + quoted(listed.path()) + ", \"*.dat\").VALUEGET(1)"), QString("СТРОКА c.dat"));
    }

    void workingDirectoryChanges()
    {
        const QString before = QDir::currentPath();
        QCOMPARE(run("cwd()"), "СТРОКА " + before);
        QCOMPARE(run("каталограбочий(" + quoted(directory.path()) + ")"), QString("БУЛЕВО ИСТИНА"));
        const QString now = run("cwd()");
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(now, "СТРОКА " + QDir(directory.path()).canonicalPath());
    }

    // The module runs in the calling context; its functions stay callable
    // there after the load, and only there.
    void moduleLoadKeepsFunctions()
    {
        const QString module = path("twice.prg");
        QVERIFY(localTest::fileWrite(module, "FUNCTION twice(x)\n    RETURN x * 2;\nENDFUNCTION;\nloadedMark = 5;\n"));
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        localTest::coutCapture quiet;
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("moduleload(\" " + module + " \")", context.get())),
                 QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("twice(21)", context.get())), QString("ЧИСЛО 42"));
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("loadedMark", context.get())), QString("ЧИСЛО 5"));
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("twice(21)", localTest::globalContext())),
                 QString("fail 27"));
    }

    void moduleLoadOutcomes_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("runs to its end") << QByteArray("x = 1;\n") << "БУЛЕВО ИСТИНА";
        QTest::newRow("returns 2") << QByteArray("RETURN 2;\n") << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("run fault") << QByteArray("x = 1 / 0;\n") << "fail 21";
        QTest::newRow("compile fault") << QByteArray("IF 1 THEN\n") << "fail 45";
    }
    void moduleLoadOutcomes()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, outcome);
        const QString module = path("module.prg");
        QVERIFY(localTest::fileWrite(module, text));
        QCOMPARE(run("модульзагрузить(" + quoted(module) + ")"), outcome);
    }

    void moduleLoadNames()
    {
        QCOMPARE(run("moduleload(\"   \")"), QString("fail 23"));
        QCOMPARE(run("moduleload(1)"), QString("fail 33"));
        localTest::coutCapture captured;
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("moduleload(\"/no/such.prg\")", localTest::globalContext())),
                 QString("fail 23"));
        QVERIFY2(captured.text().startsWith("Error! Файл не найден."), qPrintable(captured.text()));
    }

    void logWriteAddsAStampedLine()
    {
        const qint64 before = logSize();
        QCOMPARE(run("logwrite(\"строка журнала\")"), QString("ЧИСЛО 1"));
        const QString added = logTail(before);
        QVERIFY2(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d строка журнала\n$").match(added).hasMatch(),
                 qPrintable(added));
    }

    void memoryListingsGoToTheLogOnRequest_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("inLog");
        QTest::newRow("vars, option 1") << "памятьпоказатьпеременные(\"Z*\", 1)" << "СПИСОК ПЕРЕМЕННЫХ";
        QTest::newRow("vars, option 3") << "memorydisplayvars(\"\", 3)" << "";
        QTest::newRow("vars, no option") << "memorydisplayvars()" << "";
        QTest::newRow("data, option 2") << "памятьпоказатьданные(2)" << "all reserved 102400\n";
        QTest::newRow("data, option 0") << "memorydisplaydata(0)" << "";
    }
    void memoryListingsGoToTheLogOnRequest()
    {
        QFETCH(QString, expression);
        QFETCH(QString, inLog);
        const qint64 before = logSize();
        QCOMPARE(run(expression), QString("ЧИСЛО 1"));
        const QString added = logTail(before);
        if (inLog.isEmpty())
            QCOMPARE(added, QString());
        else
            QVERIFY2(added.contains(inLog), qPrintable(added));
    }
};

LOCAL_TEST_MAIN(tst_localFunctionsFile)
#include "tst_localFunctionsFile.moc"
