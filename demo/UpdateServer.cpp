#include "demo/UpdateServer.h"

#include <QTcpSocket>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

void answer(QTcpSocket& socket)
{
    const QByteArray body =
        R"({"update_available": true, "latest_version": "3.0", )"
        R"("release_notes": "Profiles open twice as fast, and the table prints in colour."})";
    socket.write(
        "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: " +
        QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket.disconnectFromHost();
}

} // namespace

UpdateServer::UpdateServer()
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
        QTcpSocket* socket = m_server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            if (socket->peek(socket->bytesAvailable()).contains("\r\n\r\n"))
                answer(*socket);
        });
    });
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("the demo's update service cannot listen: %s", qPrintable(m_server.errorString()));
}

UpdateService UpdateServer::service() const
{
    UpdateService loopback = UpdateService::ofThisBuild();
    loopback.baseUrl = u"http://127.0.0.1:%1"_s.arg(m_server.serverPort());
    return loopback;
}

} // namespace orvanlite::demo
