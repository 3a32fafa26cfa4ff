#include "ui/run/ElapsedTime.h"

#include <cstdlib>
#include <utility>

namespace tessarine
{

namespace
{

TimeOfDayPort timeOfDay;

int SecondOfDay(QTime time)
{
    constexpr int perSecond = 1000;
    return time.msecsSinceStartOfDay() / perSecond;
}

}  // namespace

QString ElapsedTimeText(QTime start, QTime now)
{
    // Times of a day alone: a run over midnight shows what its length lacks to 24 hours.
    const int seconds = std::abs(SecondOfDay(now) - SecondOfDay(start));
    return "Total Elapsed Time : " + TimeText(seconds);
}

int SecondsBetween(QTime start, QTime now)
{
    constexpr int perDay = 24 * 60 * 60;
    return (SecondOfDay(now) - SecondOfDay(start) + perDay) % perDay;
}

QString TimeText(int seconds)
{
    return QTime(0, 0).addSecs(seconds).toString("HH:mm:ss");
}

TimeOfDayPort SetTimeOfDay(TimeOfDayPort port)
{
    return std::exchange(timeOfDay, std::move(port));
}

QTime TimeOfDay()
{
    return timeOfDay ? timeOfDay() : QTime::currentTime();
}

}  // namespace tessarine
