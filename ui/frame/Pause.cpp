#include "ui/frame/Pause.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace zw {

void pause(double seconds)
{
    QElapsedTimer timer;
    timer.start();
    const auto limit = static_cast<qint64>(seconds * 1000);
    while (timer.elapsed() < limit) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
}

} // namespace zw
