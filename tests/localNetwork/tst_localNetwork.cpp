// HTTP calls against a loopback server that the test itself runs, directly
// and from a program that korvel-cli runs.
#include "localLoopbackServer.h"
#include "localTestSupport.h"

#include "localNetwork.h"
#include "localValueList.h"

#include <QNetworkRequest>
#include <QRegularExpression>
#include <QTemporaryDir>

using localTest::q;
using localTest::w;

namespace {

void row(const char *name, const QString &method, const QString &path, const QString &reply, const QString &error,
         const QStringList &items = QStringList())
{
    QTest::newRow(name) << method << path << reply << error << items;
}

} // namespace

class tst_localNetwork : public QObject {
    Q_OBJECT
    localTest::boxRecorder *boxes = nullptr;
    localValueDescription cell;
    localValueList *list = nullptr;

    // Items given as name, value, name, value...
    void itemsAdd(const QStringList &items)
    {
        for (int i = 0; i + 1 < items.size(); i += 2) {
            localValueDescription value;
            value.setString(w(items[i + 1]));
            list->valueAdd(&value, w(items[i]));
        }
    }
    QString item(const std::u16string &name) const
    {
        const localValueDescription *value = list->valueByKey(name);
        return value == nullptr ? QStringLiteral("-") : q(value->toString());
    }

private slots:
    void initTestCase() { localNetworkInstall(); }
    void init()
    {
        boxes = localTest::boxRecorder::install();
        list = localValueList::newInCell(&cell);
    }
    void cleanup() { localServices::install(nullptr); }

    // The list starts with replyText "old" and errorText "kept"; a reply
    // replaces the first in place, a refusal of the method the second, and
    // only a reply reaches the server. /echo shows what the server got.
    void exchange_data()
    {
        for (const char *column : {"method", "path", "reply", "error"})
            QTest::addColumn<QString>(column);
        QTest::addColumn<QStringList>("items");
        const QString kept = "kept";
        row("GET", "GET", "/echo", "GET|||", kept);
        row("POST", "POST", "/echo", "POST|a/json|3|abc", kept, {"contentTypeHeader", "a/json", "requestText", "abc"});
        row("type after body", "POST", "/echo", "POST|t/x|2|{}", kept,
            {"requestText", "{}", "contentTypeHeader", "t/x"});
        row("trimmed, lower case", " \tpost\n", "/echo", "POST|application/x-www-form-urlencoded|1|x", kept,
            {"requestText", "x", "REQUESTTEXT", "y"});
        row("Cyrillic both ways", "POST", "/echo", "POST|t/ё|12|Привет", kept,
            {"requestText", "Привет", "contentTypeHeader", "t/ё"});
        row("Cyrillic reply", "get", "/cyrillic", "Ответ", kept);
        row("cut at NUL", "GET", "/nul", "abc", kept);
        row("404 is a reply", "GET", "/status/404", "status 404", kept);
        row("500 is a reply", "POST", "/status/500", "status 500", kept);
        row("PUT", "PUT", "/echo", "old", "Illegal method name \"PUT\"");
        row("carriage return stays", "GET\r", "/echo", "old", "Illegal method name \"GET\r\"");
        row("Cyrillic upper-cased", " пост ё", "/echo", "old", "Illegal method name \"ПОСТ Ё\"");
    }
    void exchange()
    {
        QFETCH(QString, method);
        QFETCH(QString, path);
        QFETCH(QStringList, items);
        QFETCH(QString, reply);
        QFETCH(QString, error);
        const bool answer = error == "kept";
        localLoopbackServer server;
        itemsAdd(QStringList{"replyText", "old", "errorText", "kept"} + items);
        QCOMPARE(localNetwork::requestExecByMethodName(w(method), w(server.url(path)), list), answer);
        QCoreApplication::processEvents();
        QCOMPARE(server.requests.size(), answer ? 1 : 0);
        QCOMPARE(q(*list->presentationByIndex(1)), QStringLiteral("replyText")); // replaced where it stood
        QCOMPARE(item(u"replyText") + '|' + item(u"errorText"), reply + '|' + error);
        QCOMPARE(list->size(), size_t(2 + items.size() / 2));
        QVERIFY(boxes->boxes.empty());
    }

    // A body sets the fixed length header "15000\r\n". A POST goes out with
    // the body's own length, as the exchange shows; a GET sends the header's
    // text as it stands, its line end included.
    void lengthHeader()
    {
        itemsAdd({"requestText", "a", "contentTypeHeader", "ё", "requestText", "Ёж"});
        QNetworkRequest request(QUrl("http://127.0.0.1/"));
        QCOMPARE(localNetwork::requestPrepare(request, list), QStringLiteral("Ёж").toUtf8());
        QCOMPARE(request.rawHeader("Content-Type"), QStringLiteral("ё").toUtf8());
        QCOMPARE(request.rawHeader("Content-Length"), QByteArray("15000\r\n"));
        localLoopbackServer server;
        QVERIFY(localNetwork::requestExecByMethodName(u"GET", w(server.url("/echo")), list));
        QCOMPARE(server.requests.size(), 1);
        QVERIFY2(server.requests[0].contains("\r\nContent-Length: 15000\r\n\r\n"), server.requests[0].constData());
    }

    // Nobody listens: false, the error in the list and in a critical box,
    // which headless is printed.
    void refusedPort()
    {
        const QString url = localLoopbackServer().url("/echo");
        QVERIFY(!localNetwork::requestExecByMethodName(u"GET", w(url), list));
        const QString error = item(u"errorText");
        QVERIFY2(error.contains("refused"), qPrintable(error));
        QCOMPARE(item(u"replyText"), QStringLiteral("-"));
        QCOMPARE(boxes->boxes.size(), size_t(1));
        QCOMPARE(boxes->boxes[0].kind, localServices::boxCritical);
        QCOMPARE(q(boxes->boxes[0].title + u"|" + boxes->boxes[0].text), "serviceRequestNotFinish()|" + error);
        localServices::install(nullptr);
        localTest::coutCapture output;
        QVERIFY(!localNetwork::requestExec(localNetwork::methodPOST, w(url), nullptr));
        QCOMPARE(output.text(), "serviceRequestNotFinish()\n" + error + "\n");
    }

    void globalFunction_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("outcome");
        const char *const rows[][3] = {
            {"one", "\"GET\"", "fail 31"},
            {"four", "\"GET\", \"u\", createobject(\"VALUELIST\"), 1", "fail 31"},
            {"number method", "1, \"u\"", "fail 33"},
            {"boolean url", "\"GET\", TRUE", "fail 33"},
            {"table for list", "\"GET\", \"u\", createobject(\"VALUETABLE\")", "fail 33"},
            {"illegal method", "\"PUT\", \"URL\"", "ok ЛОЖЬ"},
            {"with a list", "\"get\", \"URL\", createobject(\"VALUELIST\")", "ok ИСТИНА"},
        };
        for (const auto &row : rows)
            QTest::newRow(row[0]) << QString(row[1]) << QString(row[2]);
    }
    void globalFunction()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, outcome);
        localLoopbackServer server;
        const QString call = "СетьЗапросВыполнитьСинхронно(" + arguments.replace("URL", server.url("/echo")) + ")";
        const localTest::evaluation result = localTest::evaluate(call, localTest::globalContext());
        QCOMPARE(result.done ? "ok " + result.text : QStringLiteral("fail %1").arg(result.status), outcome);
        QCOMPARE(server.requests.size(), outcome.endsWith("ИСТИНА") ? 1 : 0);
    }

    // korvel-cli's worker thread waits while this thread serves: http.prg
    // with @URL@ and @REFUSED@ filled in must print http.out.
    void korvelCliProgram()
    {
        localLoopbackServer server;
        const QByteArray url = server.url(QString()).toUtf8();
        const QByteArray refused = localLoopbackServer().url(QString()).toUtf8();
        QTemporaryDir directory;
        QVERIFY(localTest::fileWrite(directory.filePath("http.prg"),
                                     localTest::fileBytes(KORVEL_NETWORK_PROGRAMS "/http.prg")
                                         .replace("@URL@", url)
                                         .replace("@REFUSED@", refused)));
        QProcess cli;
        cli.setWorkingDirectory(directory.path());
        cli.start(KORVEL_CLI, {"http.prg"});
        QTRY_COMPARE_WITH_TIMEOUT(cli.state(), QProcess::NotRunning, 60000);
        const auto masked = [](const QByteArray &text) { // source lines move as the code changes
            return QString::fromUtf8(text).replace(QRegularExpression(" line: [0-9]+"), " line: *");
        };
        QCOMPARE(masked(cli.readAllStandardOutput().replace(url, "@URL@").replace(refused, "@REFUSED@")),
                 masked(localTest::fileBytes(KORVEL_NETWORK_PROGRAMS "/http.out")));
        QCOMPARE(cli.exitCode(), 1); // the last line of the program fails
        QCOMPARE(server.requests.size(), 3);
    }
};

LOCAL_TEST_MAIN(tst_localNetwork)
#include "tst_localNetwork.moc"
