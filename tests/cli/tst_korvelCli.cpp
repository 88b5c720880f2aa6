// korvel-cli as a user meets it: exit statuses, and input that runs the
// interpreter out of stack without ending the process.
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct cliRun {
    int exitCode;
    QByteArray output;
};

cliRun runCli(const QStringList &arguments, const QByteArray &input, const QString &directory,
              const QString &dataEnvironment = QString())
{
    QProcess cli;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("KORVEL_DATA_FILE");
    if (!dataEnvironment.isEmpty())
        environment.insert("KORVEL_DATA_FILE", dataEnvironment);
    cli.setProcessEnvironment(environment);
    cli.setWorkingDirectory(directory);
    cli.setProcessChannelMode(QProcess::MergedChannels);
    cli.start(KORVEL_CLI, arguments);
    cli.write(input);
    cli.closeWriteChannel();
    cli.waitForFinished(120000);
    return {cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1, cli.readAll()};
}

void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

const QByteArray stackMessage = "Стек исчерпан";

} // namespace

class tst_korvelCli : public QObject {
    Q_OBJECT
private slots:
    void exitStatuses_data()
    {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("proper end") << QByteArray("? 1;") << 0;
        QTest::newRow("other result is still an end") << QByteArray("RETURN 2;") << 0;
        QTest::newRow("quit") << QByteArray("QUIT;") << 0;
        QTest::newRow("run fault") << QByteArray("? 1 / 0;") << 1;
        QTest::newRow("compile fault") << QByteArray("x = ;") << 1;
    }
    void exitStatuses()
    {
        QFETCH(QByteArray, program);
        QFETCH(int, exitCode);
        QTemporaryDir directory;
        writeFile(directory.filePath("p.prg"), program);
        QCOMPARE(runCli({"p.prg"}, QByteArray(), directory.path()).exitCode, exitCode);
    }

    void usageAndMissingFile()
    {
        QTemporaryDir directory;
        QCOMPARE(runCli({"a.prg", "b.prg"}, QByteArray(), directory.path()).exitCode, 2);
        QCOMPARE(runCli({"a.prg", "--data"}, QByteArray(), directory.path()).exitCode, 2);
        const cliRun missing = runCli({"missing.prg"}, QByteArray(), directory.path());
        QCOMPARE(missing.exitCode, 1);
        QVERIFY2(missing.output.contains("Error! Файл не найден."), missing.output.constData());
    }

    // The data file comes from --data, else from the environment, else the
    // default beside the working directory, which is missing here: headless,
    // nobody is asked for another, and CONNECT fails with "file not found".
    void dataFile_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QByteArray>("connected");
        QTest::newRow("option") << QStringList{"--data", "a.sqlite", "c.prg"} << QString() << QByteArray("[a.sqlite]");
        QTest::newRow("environment") << QStringList{"c.prg"} << "b.sqlite" << QByteArray("[b.sqlite]");
        QTest::newRow("option over environment")
            << QStringList{"c.prg", "--data", "a.sqlite"} << "b.sqlite" << QByteArray("[a.sqlite]");
        QTest::newRow("none") << QStringList{"c.prg"} << QString() << QByteArray();
    }
    void dataFile()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, environment);
        QFETCH(QByteArray, connected);
        QTemporaryDir directory;
        writeFile(directory.filePath("a.sqlite"), QByteArray());
        writeFile(directory.filePath("b.sqlite"), QByteArray());
        writeFile(directory.filePath("c.prg"), "CLASSLOAD(\"DATABASE\");\n? CREATEOBJECT(\"DATABASE\").CONNECT();\n");
        const cliRun run = runCli(arguments, QByteArray(), directory.path(), environment);
        if (connected.isEmpty()) {
            QCOMPARE(run.exitCode, 1);
            QVERIFY2(run.output.startsWith("CONNECT() file \n"), run.output.constData());
        } else {
            QCOMPARE(run.exitCode, 0);
            QVERIFY2(run.output.contains("fileNameForOpenQString=" + connected), run.output.constData());
            QVERIFY(run.output.endsWith("ИСТИНА\n"));
        }
    }

    // Diagnostic lines name sources by their path in the source tree, so
    // the texts are the same whichever machine built the program.
    void diagnosticsNameSourcesRelatively()
    {
        QTemporaryDir directory;
        writeFile(directory.filePath("fault.prg"), "? 1 / 0;\n");
        const cliRun run = runCli({"fault.prg"}, QByteArray(), directory.path());
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.contains(" func: statementDo file: lib/localInterpretatorUTF8/localImmediate.cpp line: "),
                 run.output.constData());
        QVERIFY2(!run.output.contains(KORVEL_SOURCE_DIR), run.output.constData());
    }

    // Endless recursion ends with a status and a message, and the next
    // console line still works.
    void endlessRecursionLeavesTheConsoleUsable()
    {
        QTemporaryDir directory;
        writeFile(directory.filePath("deep.prg"), "FUNCTION deep(n)\n  RETURN deep(n + 1);\nENDFUNCTION;\n? deep(1);\n");
        const cliRun run = runCli({}, "DO deep.prg\n? 2+2\nQUIT\n", directory.path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.output.contains(stackMessage));
        QVERIFY(run.output.endsWith("4\nGood bye!\n"));
        QCOMPARE(runCli({"deep.prg"}, QByteArray(), directory.path()).exitCode, 1);
    }

    void deeplyNestedBrackets()
    {
        QTemporaryDir directory;
        const QByteArray nested = "? " + QByteArray(200000, '(') + "1" + QByteArray(200000, ')') + "\n? 3\n";
        const cliRun run = runCli({}, nested, directory.path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.output.contains(stackMessage));
        QVERIFY(run.output.endsWith("3\n"));
    }

    // Nesting past the reader's limit fails the parse; PARSEJSON answers 0.
    void deeplyNestedJson()
    {
        QTemporaryDir directory;
        const QByteArray input = "x = PARSEJSON(\"" + QByteArray(300000, '[') + "\")\n? x\n";
        const cliRun run = runCli({}, input, directory.path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.output.contains("JSON nested deeper than 10000 levels"));
        QVERIFY(run.output.endsWith("0\n"));
    }
};

QTEST_GUILESS_MAIN(tst_korvelCli)
#include "tst_korvelCli.moc"
