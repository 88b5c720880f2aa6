// A small HTTP server on 127.0.0.1 for the network tests, served by the event
// loop of the thread that made it (the one that waits for the reply). It
// answers by path:
//   /echo          200, "METHOD|content type|content length|body" of the request
//   /status/NNN    status NNN with the body "status NNN"
//   /nul           200, "abc", a NUL byte, "def"
//   /cyrillic      200, "Ответ сервера" in UTF-8
// and keeps every request's raw bytes.
#ifndef LOCALLOOPBACKSERVER_H
#define LOCALLOOPBACKSERVER_H

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <vector>

class localLoopbackServer : public QObject {
public:
    struct request {
        QByteArray method;
        QByteArray path;
        QByteArray head;
        QByteArray body;

        // The value of a header line, "" when the request has none.
        QByteArray header(const QByteArray &name) const
        {
            for (const QByteArray &line : head.split('\n')) {
                const int colon = line.indexOf(':');
                if (colon > 0 && line.left(colon).trimmed().toLower() == name.toLower())
                    return line.mid(colon + 1).trimmed();
            }
            return QByteArray();
        }
    };
    std::vector<request> requests;

    localLoopbackServer()
    {
        server.listen(QHostAddress(QHostAddress::LocalHost), 0);
        connect(&server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *socket = server.nextPendingConnection())
                serve(socket);
        });
    }
    quint16 port() const { return server.serverPort(); }
    QString url(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path);
    }

private:
    QTcpServer server;

    void serve(QTcpSocket *socket)
    {
        QByteArray *received = new QByteArray;
        QTimer *idle = new QTimer(socket);
        idle->setSingleShot(true);
        idle->setInterval(200);
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QObject::destroyed, [received] { delete received; });
        auto answer = [this, socket, received, idle] {
            idle->stop();
            if (received->isEmpty())
                return;
            socket->write(response(parse(*received)));
            received->clear();
            socket->disconnectFromHost();
        };
        connect(idle, &QTimer::timeout, socket, answer);
        connect(socket, &QTcpSocket::readyRead, socket, [socket, received, idle, answer] {
            received->append(socket->readAll());
            const int end = received->indexOf("\r\n\r\n");
            if (end < 0)
                return;
            // The length a client announces need not be what it sends, so a
            // short body is answered once nothing more arrives.
            request probe = parse(*received);
            const QByteArray length = probe.header("Content-Length");
            if (length.isEmpty() || probe.body.size() >= length.toInt())
                answer();
            else
                idle->start();
        });
    }

    static request parse(const QByteArray &bytes)
    {
        request parsed;
        const int end = bytes.indexOf("\r\n\r\n");
        parsed.head = bytes.left(end);
        parsed.body = bytes.mid(end + 4);
        const QList<QByteArray> line = parsed.head.left(parsed.head.indexOf("\r\n")).split(' ');
        parsed.method = line.value(0);
        parsed.path = line.value(1);
        return parsed;
    }

    QByteArray response(const request &parsed)
    {
        requests.push_back(parsed);
        QByteArray status = "200 OK";
        QByteArray body;
        if (parsed.path == "/echo") {
            body = parsed.method + '|' + parsed.header("Content-Type") + '|' + parsed.header("Content-Length") + '|'
                   + parsed.body;
        } else if (parsed.path.startsWith("/status/")) {
            status = parsed.path.mid(8) + " Status";
            body = "status " + parsed.path.mid(8);
        } else if (parsed.path == "/nul") {
            body = QByteArray("abc\0def", 7);
        } else if (parsed.path == "/cyrillic") {
            body = QStringLiteral("Ответ сервера").toUtf8();
        } else {
            status = "404 Not Found";
        }
        return "HTTP/1.1 " + status + "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: "
               + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
    }
};

#endif
