#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <filesystem>
#include <functional>

namespace zw {

// The running program's end of the hand-over: a second start with a receipt file sends it here instead of
// opening a window of its own.
class HandOverServer : public QObject
{
public:
    using Handler = std::function<void(const std::filesystem::path&)>;
    HandOverServer(QString name, Handler handler, QObject* parent = nullptr);

    // Listens unless another program answers under the name; the socket a crashed program left is taken over.
    bool claim();

private:
    void serve(class QLocalSocket* socket);

    QString m_name;
    Handler m_handler;
    QLocalServer m_server;
};

// The second start's end: true once the running program has taken the file. False at once when no program
// listens, and after a few seconds when one listens and does not answer.
bool handOver(const QString& serverName, const std::filesystem::path& file);

} // namespace zw
