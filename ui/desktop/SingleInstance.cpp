#include "ui/desktop/SingleInstance.h"

#include <QLocalSocket>
#include <memory>
#include <string>

#include "app/HandOver.h"

namespace zw {
namespace {

// A running program answers from its event loop, which a modal window keeps running; a hang gives up.
constexpr int kAnswerMilliseconds = 10000;

bool answers(const QString& name)
{
    QLocalSocket probe;
    probe.connectToServer(name);
    return probe.waitForConnected(1000);
}

} // namespace

HandOverServer::HandOverServer(QString name, Handler handler, QObject* parent)
    : QObject(parent), m_name(std::move(name)), m_handler(std::move(handler))
{
    // Only this user may hand files to the program.
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection())
            serve(socket);
    });
}

bool HandOverServer::claim()
{
    // Listening would put a new socket over the running program's, so ask first.
    if (answers(m_name))
        return false;
    QLocalServer::removeServer(m_name);
    return m_server.listen(m_name);
}

void HandOverServer::serve(QLocalSocket* socket)
{
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    auto buffer = std::make_shared<std::string>();
    connect(socket, &QLocalSocket::readyRead, this, [this, socket, buffer] {
        const QByteArray bytes = socket->readAll();
        buffer->append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        while (auto file = takeHandOverMessage(*buffer)) {
            // The answer goes first: opening may show the error window, and the second start must not wait on it.
            socket->write(kHandOverTaken.data(), static_cast<qint64>(kHandOverTaken.size()));
            socket->flush();
            QMetaObject::invokeMethod(this, [this, opened = *file] { m_handler(opened); }, Qt::QueuedConnection);
        }
    });
}

bool handOver(const QString& serverName, const std::filesystem::path& file)
{
    QLocalSocket socket;
    socket.connectToServer(serverName);
    if (!socket.waitForConnected(1000))
        return false;
    const std::string message = handOverMessage(file);
    socket.write(message.data(), static_cast<qint64>(message.size()));
    // A short message is often written at once, and waiting for nothing to be written reads as a failure.
    if (socket.bytesToWrite() > 0 && !socket.waitForBytesWritten(kAnswerMilliseconds))
        return false;
    QByteArray answer;
    while (answer.size() < static_cast<qsizetype>(kHandOverTaken.size()) && socket.waitForReadyRead(kAnswerMilliseconds))
        answer += socket.readAll();
    return answer.startsWith(kHandOverTaken.data());
}

} // namespace zw
