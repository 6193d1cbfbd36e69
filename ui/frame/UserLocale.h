#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include "app/Clock.h"

namespace zw {

// The few texts that follow the user's own locale (LANG), while everything else the program draws speaks German.

// The desktop's short date with the year in four digits: "25.11.2026", "11/25/2026".
QString userShortDate(const QDate& date);

// The short date and the time with its seconds: "25.11.2026 14:05:09", "11/25/2026 2:05:09 PM".
QString userDateTime(const QDateTime& moment);

// The long date of the mail window's insert menu: the weekday's name in the user's language, ", den " and the
// date, "dddd, dd.mm.yyyy" with every ", " of it so replaced.
QString userLongDate(const QDate& date);

// The clock's moment as a local date and time, and its day.
QDateTime localTime(const Clock& clock);
QDate today(const Clock& clock);

} // namespace zw
