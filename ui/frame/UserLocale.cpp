#include "ui/frame/UserLocale.h"

#include <QLocale>

namespace zw {

QString userShortDate(const QDate& date)
{
    const QLocale user = QLocale::system();
    QString format = user.dateFormat(QLocale::ShortFormat);
    if (!format.contains("yyyy"))
        format.replace("yy", "yyyy");
    return user.toString(date, format);
}

QString userDateTime(const QDateTime& moment)
{
    const QLocale user = QLocale::system();
    // The long time form would add the zone's name; the short one lacks the seconds.
    QString time = user.timeFormat(QLocale::ShortFormat);
    if (!time.contains("ss"))
        time.replace("mm", "mm:ss");
    return userShortDate(moment.date()) + " " + user.toString(moment.time(), time);
}

QString userLongDate(const QDate& date)
{
    return QLocale::system().toString(date, "dddd, dd.MM.yyyy").replace(", ", ", den ");
}

QDateTime localTime(const Clock& clock)
{
    return QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(clock.now()));
}

QDate today(const Clock& clock) { return localTime(clock).date(); }

} // namespace zw
