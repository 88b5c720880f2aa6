// HTTP from programs run by korvel-cli: the test serves the requests while
// korvel-cli's worker thread waits for them. Each NAME.prg in programs/ has
// @URL@ (the server) and @REFUSED@ (a port nobody listens at) filled in, and
// its output, with the two addresses written back as those words, must
// equal NAME.out.
#include "localLoopbackServer.h"

#include <QDir>
#include <QEventLoop>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray fileBytes(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing " + name.toUtf8() + ">");
}

// Source paths and lines of diagnostic tails differ from build to build.
QByteArray tailsMasked(QByteArray text)
{
    return QString::fromUtf8(text)
        .replace(QRegularExpression(" file: [^\n]* line: [0-9]+"), " file: * line: *")
        .toUtf8();
}

} // namespace

class tst_localNetworkCli : public QObject {
    Q_OBJECT
private slots:
    void program_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<int>("requests");
        QTest::newRow("get and post") << "get_and_post" << 0 << 5;
        QTest::newRow("refused") << "refused" << 0 << 0;
        QTest::newRow("wrong arguments") << "wrong_arguments" << 1 << 0;
    }
    void program()
    {
        QFETCH(QString, name);
        QFETCH(int, exitCode);
        QFETCH(int, requests);
        const QString programs = QStringLiteral(KORVEL_NETWORK_PROGRAMS);
        localLoopbackServer server;
        QString refused;
        {
            localLoopbackServer closed;
            refused = closed.url(QString());
        }
        QByteArray program = fileBytes(programs + "/" + name + ".prg");
        program.replace("@URL@", server.url(QString()).toUtf8()).replace("@REFUSED@", refused.toUtf8());
        QTemporaryDir directory;
        QFile file(directory.filePath(name + ".prg"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(program);
        file.close();

        QProcess cli;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *proxy : {"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"})
            environment.remove(proxy);
        cli.setProcessEnvironment(environment);
        cli.setWorkingDirectory(directory.path());
        cli.setProcessChannelMode(QProcess::SeparateChannels);
        QEventLoop loop;
        connect(&cli, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop, &QEventLoop::quit);
        QTimer::singleShot(60000, &loop, &QEventLoop::quit);
        cli.start(QStringLiteral(KORVEL_CLI), {name + ".prg"});
        loop.exec();
        QCOMPARE(cli.state(), QProcess::NotRunning);

        const QByteArray expected = fileBytes(programs + "/" + name + ".out");
        QByteArray actual = cli.readAllStandardOutput();
        actual.replace(server.url(QString()).toUtf8(), "@URL@").replace(refused.toUtf8(), "@REFUSED@");
        if (tailsMasked(actual) != tailsMasked(expected)) {
            // kept beside the test for a look, or to become the new NAME.out
            QFile kept(QDir::current().filePath(name + ".actual.out"));
            if (kept.open(QIODevice::WriteOnly))
                kept.write(actual);
        }
        QCOMPARE(QString::fromUtf8(tailsMasked(actual)), QString::fromUtf8(tailsMasked(expected)));
        QCOMPARE(cli.exitCode(), exitCode);
        QCOMPARE(int(server.requests.size()), requests);
    }
};

QTEST_GUILESS_MAIN(tst_localNetworkCli)
#include "tst_localNetworkCli.moc"
