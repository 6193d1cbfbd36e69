#include "desktop/KeyringPasswordStore.h"

#include <QEventLoop>
#include <qt6keychain/keychain.h>

namespace zw {
namespace {

const QString kService = QStringLiteral("Zettelwerk");

// The keyring answers over D-Bus; the caller waits for it as for a modal window, with the event loop running.
void runToEnd(QKeychain::Job& job)
{
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    job.setAutoDelete(false);
    job.setInsecureFallback(false);
    job.start();
    loop.exec();
}

} // namespace

std::optional<std::string> KeyringPasswordStore::read(std::string_view key)
{
    QKeychain::ReadPasswordJob job(kService);
    job.setKey(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
    runToEnd(job);
    if (job.error() != QKeychain::NoError)
        return std::nullopt;
    return job.textData().toStdString();
}

bool KeyringPasswordStore::write(std::string_view key, const std::string& secret)
{
    QKeychain::WritePasswordJob job(kService);
    job.setKey(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
    job.setTextData(QString::fromStdString(secret));
    runToEnd(job);
    return job.error() == QKeychain::NoError;
}

} // namespace zw
