#pragma once

#include <functional>

#include <QString>
#include <QTime>

namespace tessarine
{

/// "Total Elapsed Time : " and the distance of two times of day as hours, minutes and seconds ("HH:mm:ss"), the same in
/// every language. Fractions of a second are cut off both times first.
///
/// Intended: across midnight that is not the time that has passed, because the two are times of day without a date.
QString ElapsedTimeText(QTime start, QTime now);

/// The seconds from one time of day to another, across midnight, too. Fractions of a second are cut off both first.
int SecondsBetween(QTime start, QTime now);

/// Seconds as hours, minutes and seconds ("HH:mm:ss").
QString TimeText(int seconds);

/// Tells the time of day.
using TimeOfDayPort = std::function<QTime()>;

/// Puts another clock in the place of the system's, and gives the one before. An empty one brings the system's back.
TimeOfDayPort SetTimeOfDay(TimeOfDayPort port);

/// The time of day by the clock in force.
QTime TimeOfDay();

}  // namespace tessarine
