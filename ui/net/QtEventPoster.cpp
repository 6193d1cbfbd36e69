#include "ui/net/QtEventPoster.h"

#include <QEventLoop>
#include <QMetaObject>

namespace zw {

void QtEventPoster::post(std::function<void()> event)
{
    QMetaObject::invokeMethod(&m_context, std::move(event), Qt::QueuedConnection);
}

void QtEventPoster::waitWhileLoopTurns(const net::Transfer& transfer)
{
    QEventLoop loop;
    while (!transfer.isFinished())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace zw
