// The global functions on files, paths, modules and the log, called from
// expressions against files in a temporary directory.
#include "localLibraryTestSupport.h"

#include "localStd.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using localTest::q;
using localTest::run;

namespace {

// A string literal of the language holding `text`.
QString quoted(const QString &text)
{
    return "\"" + text + "\"";
}

QByteArray fileBytes(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void writeFile(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
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

    // Written with a code page and read back as raw bytes through Base64, so
    // every byte the conversion made is checked. Two appends double the file.
    void textAppendedInEachCodePage_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray utf8("\xD0\x81\xD0\xB6\xD0\xB8\xD0\xBA \xE9!");
        QTest::newRow("no word") << QString() << utf8;
        QTest::newRow("utf8") << "utf8" << utf8;
        QTest::newRow("unknown word") << "koi8" << utf8;
        QTest::newRow("cp1251") << "CP1251" << QByteArray("\xA8\xE6\xE8\xEA \xE9!");
        QTest::newRow("cp866 with blanks") << " cp866 " << QByteArray("\xF0\xA6\xA8\xAA \xE9!");
    }
    void textAppendedInEachCodePage()
    {
        QFETCH(QString, word);
        QFETCH(QByteArray, bytes);
        const QString file = path("page-" + QString(QTest::currentDataTag()).replace(' ', '-') + ".txt");
        const QString arguments = "(\"Ёжик é!\", " + quoted(file) + (word.isNull() ? QString() : ", " + quoted(word)) + ")";
        QCOMPARE(run("stringappendtofile" + arguments), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("строкадобавитьвфайл" + arguments), QString("БУЛЕВО ИСТИНА"));
        const QByteArray twice = bytes + bytes;
        QCOMPARE(fileBytes(file), twice);
        QCOMPARE(run("base64fromfile(" + quoted(file) + ")"), "СТРОКА " + QString::fromLatin1(twice.toBase64()));
    }

    void utf8FileReadsBack()
    {
        const QString file = path("back.txt");
        writeFile(file, QByteArray("\xD0\x81\xD0\xB6 \xE9\nline 2\n"));
        QCOMPARE(run("stringfromfile(" + quoted(file) + ")"), QString("СТРОКА Ёж é\nline 2"));
        QCOMPARE(run("строкаизфайла(" + quoted(file) + ")"), QString("СТРОКА Ёж é\nline 2"));
    }

    void base64RoundTrip()
    {
        const QString file = path("binary.bin");
        QCOMPARE(run("base64appendtofile(\"AAEC/w==\", " + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(fileBytes(file), QByteArray("\x00\x01\x02\xFF", 4));
        QCOMPARE(run("base64fromfile(" + quoted(file) + ")"), QString("СТРОКА AAEC/w=="));
    }

    void fileArgumentsAndMissingFiles_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("read missing") << "stringfromfile(\"/no/such/file\")" << "fail 23";
        QTest::newRow("base64 of missing") << "base64fromfile(\"/no/such/file\")" << "fail 23";
        QTest::newRow("append to a bad path") << "stringappendtofile(\"a\", \"/no/such/dir/f\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("append to no name") << "stringappendtofile(\"a\", \"\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("append a number") << "stringappendtofile(1, \"f\")" << "fail 33";
        QTest::newRow("code page kind") << "stringappendtofile(\"a\", \"f\", 1251)" << "fail 33";
        QTest::newRow("exist of a number") << "fileexist(1)" << "fail 33";
        QTest::newRow("empty path") << "pathexist(\"\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("missing path") << "путьсуществует(\"/no/such/dir\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("root path") << "pathexist(\"/\")" << "БУЛЕВО ИСТИНА";
        QTest::newRow("files alone") << "files()" << "fail 31";
        QTest::newRow("files of a number") << "files(1)" << "fail 33";
        QTest::newRow("files missing directory") << "files(\"/no/such/dir\").SIZE()" << "ЧИСЛО 0";
        QTest::newRow("program path") << "valuetypeasstring(binarypath())" << "СТРОКА СТРОКА";
        QTest::newRow("cwd of a number") << "cwd(1)" << "fail 33";
        QTest::newRow("cwd to nowhere") << "cwd(\"/no/such/dir\")" << "БУЛЕВО ЛОЖЬ";
    }
    void fileArgumentsAndMissingFiles()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        QCOMPARE(run(expression), outcome);
    }

    void existAndDelete()
    {
        const QString file = path("gone.txt");
        writeFile(file, "x");
        QCOMPARE(run("fileexist(" + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("pathexist(" + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("файлудалить(" + quoted(file) + ")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("файлсуществует(" + quoted(file) + ")"), QString("БУЛЕВО ЛОЖЬ"));
        QCOMPARE(run("filedelete(" + quoted(file) + ")"), QString("БУЛЕВО ЛОЖЬ"));
    }

    void filesListsEntriesByName()
    {
        QTemporaryDir listed;
        for (const char *name : {"b.txt", "a.txt", "c.dat"})
            writeFile(listed.filePath(name), "x");
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
        writeFile(module, "FUNCTION twice(x)\n    RETURN x * 2;\nENDFUNCTION;\nloadedMark = 5;\n");
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
        QTest::newRow("returns 1") << QByteArray("RETURN 1;\n") << "БУЛЕВО ИСТИНА";
        QTest::newRow("returns 2") << QByteArray("RETURN 2;\n") << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("run fault") << QByteArray("x = 1 / 0;\n") << "fail 21";
        QTest::newRow("compile fault") << QByteArray("IF 1 THEN\n") << "fail 45";
    }
    void moduleLoadOutcomes()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, outcome);
        const QString module = path("module.prg");
        writeFile(module, text);
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
        QTest::newRow("vars, option 1") << "memorydisplayvars(\"\", 1)" << "СПИСОК ПЕРЕМЕННЫХ";
        QTest::newRow("vars, option 2") << "памятьпоказатьпеременные(\"Z*\", 2)" << "СПИСОК ПЕРЕМЕННЫХ";
        QTest::newRow("vars, option 3") << "memorydisplayvars(\"\", 3)" << "";
        QTest::newRow("vars, no option") << "memorydisplayvars()" << "";
        QTest::newRow("data, option 1") << "memorydisplaydata(1)" << "all reserved 102400\n";
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
