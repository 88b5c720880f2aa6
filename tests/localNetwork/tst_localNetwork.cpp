// HTTP calls against a loopback server that the test itself runs: what goes
// out on the wire, what comes back into the list, and the failures.
#include "localLoopbackServer.h"
#include "localTestSupport.h"

#include "localNetwork.h"
#include "localValueList.h"

#include <QNetworkRequest>

#include <memory>

using localTest::q;
using localTest::w;

namespace {

struct listHolder {
    localValueDescription cell;
    localValueList *list = localValueList::newInCell(&cell);

    QString text(const std::u16string &name) const
    {
        const localValueDescription *value = list->valueByKey(name);
        return value == nullptr ? QStringLiteral("<none>") : q(value->toString());
    }
};

// Items of a list as "name=value" pairs, in order.
typedef QList<QPair<QString, QString>> items;

} // namespace

class tst_localNetwork : public QObject {
    Q_OBJECT
    localTest::boxRecorder *boxes = nullptr;

private slots:
    void initTestCase()
    {
        qunsetenv("http_proxy");
        qunsetenv("HTTP_PROXY");
        localTest::globalContext();
        localNetworkInstall();
    }
    void init() { boxes = localTest::boxRecorder::install(); }
    void cleanup() { localServices::install(nullptr); }

    // The method as the server saw it, the headers and body as sent, and the
    // reply as the program reads it.
    void exchange_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<items>("listItems");
        QTest::addColumn<QByteArray>("sentLine");
        QTest::addColumn<QString>("replyText");

        QTest::newRow("GET") << "GET" << "/echo" << items() << QByteArray("GET /echo") << "GET|||";
        QTest::newRow("POST with body and type")
            << "POST" << "/echo" << items{{"contentTypeHeader", "application/json"}, {"requestText", "abc"}}
            << QByteArray("POST /echo") << "POST|application/json|3|abc";
        QTest::newRow("type after body") << "POST" << "/echo"
                                         << items{{"requestText", "{\"a\":1}"}, {"contentTypeHeader", "text/x-a"}}
                                         << QByteArray("POST /echo") << "POST|text/x-a|7|{\"a\":1}";
        QTest::newRow("method trimmed and upper-cased")
            << " \tpost\n " << "/echo" << items{{"requestText", "x"}} << QByteArray("POST /echo") << "POST|application/x-www-form-urlencoded|1|x";
        QTest::newRow("other items ignored") << "get" << "/echo" << items{{"other", "1"}, {"REQUESTTEXT", "no"}}
                                             << QByteArray("GET /echo") << "GET|||";
        QTest::newRow("Cyrillic both ways")
            << "POST" << "/echo" << items{{"requestText", "Привет, мир"}, {"contentTypeHeader", "text/plain; ё"}}
            << QByteArray("POST /echo") << "POST|text/plain; ё|20|Привет, мир";
        QTest::newRow("Cyrillic reply") << "GET" << "/cyrillic" << items() << QByteArray("GET /cyrillic")
                                        << "Ответ сервера";
        QTest::newRow("reply cut at NUL") << "GET" << "/nul" << items() << QByteArray("GET /nul") << "abc";
        QTest::newRow("404 is a reply") << "GET" << "/status/404" << items() << QByteArray("GET /status/404")
                                        << "status 404";
        QTest::newRow("500 is a reply") << "POST" << "/status/500" << items{{"requestText", "b"}}
                                        << QByteArray("POST /status/500") << "status 500";
    }
    void exchange()
    {
        QFETCH(QString, method);
        QFETCH(QString, path);
        QFETCH(items, listItems);
        QFETCH(QByteArray, sentLine);
        QFETCH(QString, replyText);
        localLoopbackServer server;
        listHolder holder;
        for (const auto &item : listItems)
            holder.list->valueSetByPresentation(w(item.second), w(item.first));
        holder.list->valueSetByPresentation(u"kept", u"errorText");

        QVERIFY(localNetwork::requestExecByMethodName(w(method), w(server.url(path)), holder.list));
        QCOMPARE(server.requests.size(), size_t(1));
        QCOMPARE(server.requests[0].method + ' ' + server.requests[0].path, sentLine);
        QCOMPARE(holder.text(u"replyText"), replyText);
        QCOMPARE(holder.text(u"errorText"), QStringLiteral("kept"));
        QVERIFY(boxes->boxes.empty());
    }

    // A body brings the fixed length header into the request, whatever its
    // length; on the wire Qt's HTTP layer sends the body's own length.
    void requestHeaders_data()
    {
        QTest::addColumn<items>("listItems");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QByteArray>("contentLength");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("no list items") << items() << QByteArray() << QByteArray() << QByteArray();
        QTest::newRow("body of 3 bytes") << items{{"requestText", "abc"}} << QByteArray() << QByteArray("15000\r\n")
                                         << QByteArray("abc");
        QTest::newRow("type only") << items{{"contentTypeHeader", "text/ё"}} << QStringLiteral("text/ё").toUtf8()
                                   << QByteArray() << QByteArray();
        QTest::newRow("last body wins") << items{{"requestText", "a"}, {"requestText2", "b"}, {"requestText", "Ёж"}}
                                        << QByteArray() << QByteArray("15000\r\n") << QStringLiteral("Ёж").toUtf8();
    }
    void requestHeaders()
    {
        QFETCH(items, listItems);
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, contentLength);
        QFETCH(QByteArray, body);
        listHolder holder;
        for (const auto &item : listItems) {
            localValueDescription value;
            value.setString(w(item.second));
            holder.list->valueAdd(&value, w(item.first));
        }
        QNetworkRequest request(QUrl("http://127.0.0.1/"));
        QCOMPARE(localNetwork::requestPrepare(request, holder.list), body);
        QCOMPARE(request.rawHeader("Content-Type"), contentType);
        QCOMPARE(request.rawHeader("Content-Length"), contentLength);
    }

    // A reply replaces the first item of that name where it stands.
    void replyReplacesInPlace()
    {
        localLoopbackServer server;
        listHolder holder;
        holder.list->valueSetByPresentation(u"old", u"replyText");
        holder.list->valueSetByPresentation(u"second", u"replyText2");
        QVERIFY(localNetwork::requestExec(localNetwork::methodGET, w(server.url("/cyrillic")), holder.list));
        QCOMPARE(holder.list->size(), size_t(2));
        QCOMPARE(q(*holder.list->presentationByIndex(1)), QStringLiteral("replyText"));
        QCOMPARE(q(holder.list->valueByIndex(1)->toString()), QStringLiteral("Ответ сервера"));
        QVERIFY(localNetwork::requestExec(localNetwork::methodGET, w(server.url("/echo")), nullptr));
    }

    void illegalMethodSendsNothing_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("errorText");
        QTest::newRow("PUT") << "PUT" << "Illegal method name \"PUT\"";
        QTest::newRow("empty") << " " << "Illegal method name \"\"";
        QTest::newRow("carriage return is kept") << "GET\r" << "Illegal method name \"GET\r\"";
        QTest::newRow("Cyrillic upper-cased") << " пост ё" << "Illegal method name \"ПОСТ Ё\"";
    }
    void illegalMethodSendsNothing()
    {
        QFETCH(QString, method);
        QFETCH(QString, errorText);
        localLoopbackServer server;
        listHolder holder;
        holder.list->valueSetByPresentation(u"first", u"errorText");
        QVERIFY(!localNetwork::requestExecByMethodName(w(method), w(server.url("/echo")), holder.list));
        QCOMPARE(holder.list->size(), size_t(1));
        QCOMPARE(holder.text(u"errorText"), errorText);
        QCoreApplication::processEvents();
        QVERIFY(server.requests.empty());
        QVERIFY(boxes->boxes.empty());
        QVERIFY(!localNetwork::requestExecByMethodName(w(method), w(server.url("/echo")), nullptr));
    }

    // Nobody listens: false, the error in the list and in a critical box.
    void refusedPort()
    {
        quint16 port = 0;
        {
            localLoopbackServer closed;
            port = closed.port();
        }
        listHolder holder;
        const QString url = QStringLiteral("http://127.0.0.1:%1/echo").arg(port);
        QVERIFY(!localNetwork::requestExecByMethodName(u"GET", w(url), holder.list));
        const QString error = holder.text(u"errorText");
        QVERIFY2(error.contains(QStringLiteral("refused")), qPrintable(error));
        QCOMPARE(holder.text(u"replyText"), QStringLiteral("<none>"));
        QCOMPARE(boxes->boxes.size(), size_t(1));
        QCOMPARE(boxes->boxes[0].kind, localServices::boxCritical);
        QCOMPARE(q(boxes->boxes[0].title), QStringLiteral("serviceRequestNotFinish()"));
        QCOMPARE(q(boxes->boxes[0].text), error);

        // Headless, the box is printed.
        localServices::install(nullptr);
        localTest::coutCapture output;
        QVERIFY(!localNetwork::requestExec(localNetwork::methodPOST, w(url), nullptr));
        QCOMPARE(output.text(), QStringLiteral("serviceRequestNotFinish()\n") + error + "\n");
    }

    // The global function: its argument checks, then the call.
    void globalFunction_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("one argument") << "\"GET\"" << "fail 31";
        QTest::newRow("four arguments") << "\"GET\", \"u\", CREATEOBJECT(\"VALUELIST\"), 1" << "fail 31";
        QTest::newRow("number method") << "1, \"u\"" << "fail 33";
        QTest::newRow("boolean url") << "\"GET\", TRUE" << "fail 33";
        QTest::newRow("string list") << "\"GET\", \"u\", \"list\"" << "fail 33";
        QTest::newRow("other class") << "\"GET\", \"u\", CREATEOBJECT(\"VALUETABLE\")" << "fail 33";
        QTest::newRow("illegal method") << "\"PUT\", \"URL\"" << "ok 2 ЛОЖЬ";
        QTest::newRow("GET with a list") << "\"get\", \"URL\", CREATEOBJECT(\"VALUELIST\")" << "ok 2 ИСТИНА";
        QTest::newRow("Russian name") << "\"POST\", \"URL\"" << "ok 2 ИСТИНА";
    }
    void globalFunction()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, outcome);
        localLoopbackServer server;
        const QString name = QTest::currentDataTag() == QByteArray("Russian name")
                                 ? QStringLiteral("СетьЗапросВыполнитьСинхронно")
                                 : QStringLiteral("networkRequestExecSync");
        const QString call = name + "(" + QString(arguments).replace("URL", server.url("/echo")) + ")";
        const localTest::evaluation result = localTest::evaluate(call, localTest::globalContext());
        const QString actual = result.done ? QStringLiteral("ok %1 %2").arg(result.type).arg(result.text)
                                           : QStringLiteral("fail %1").arg(result.status);
        QCOMPARE(actual, outcome);
        QCOMPARE(server.requests.size(), size_t(outcome.endsWith("ИСТИНА") ? 1 : 0));
    }
};

LOCAL_TEST_MAIN(tst_localNetwork)
#include "tst_localNetwork.moc"
