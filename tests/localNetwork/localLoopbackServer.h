// An HTTP server on 127.0.0.1 for the network tests, served by the event loop
// of the thread that waits for the reply. By path: /echo answers
// "METHOD|content type|content length|body" of the request, /status/NNN that
// status with "status NNN", /nul "abc", a NUL and "def", /cyrillic "Ответ".
#ifndef LOCALLOOPBACKSERVER_H
#define LOCALLOOPBACKSERVER_H

#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

class localLoopbackServer : public QObject {
public:
    QList<QByteArray> requests;

    localLoopbackServer()
    {
        server.listen(QHostAddress::LocalHost);
        connect(&server, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *socket = server.nextPendingConnection();
            auto received = std::make_shared<QByteArray>();
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
                received->append(socket->readAll());
                // Only a POST sends a body: a GET may announce a length it never sends.
                const int end = received->indexOf("\r\n\r\n");
                const int length = received->startsWith("POST") ? header(*received, "Content-Length").toInt() : 0;
                if (end < 0 || received->size() - end - 4 < length)
                    return;
                requests << *received;
                socket->write(response(*received, end));
                socket->disconnectFromHost();
            });
        });
    }
    QString url(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(server.serverPort()).arg(path);
    }

    static QByteArray header(const QByteArray &request, const QByteArray &name)
    {
        for (const QByteArray &line : request.left(request.indexOf("\r\n\r\n")).split('\n'))
            if (line.toLower().startsWith(name.toLower() + ':'))
                return line.mid(name.size() + 1).trimmed();
        return QByteArray();
    }

private:
    QTcpServer server;

    static QByteArray response(const QByteArray &request, int end)
    {
        const QList<QByteArray> words = request.left(request.indexOf(' ', request.indexOf(' ') + 1)).split(' ');
        const QByteArray path = words.value(1);
        QByteArray status = "200 OK";
        QByteArray body;
        if (path == "/echo")
            body = words[0] + '|' + header(request, "Content-Type") + '|' + header(request, "Content-Length") + '|'
                + request.mid(end + 4);
        else if (path.startsWith("/status/"))
            body = "status " + (status = path.mid(8));
        else if (path == "/nul")
            body = QByteArray("abc\0def", 7);
        else
            body = QStringLiteral("Ответ").toUtf8();
        return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size())
            + "\r\nConnection: close\r\n\r\n" + body;
    }
};

#endif
