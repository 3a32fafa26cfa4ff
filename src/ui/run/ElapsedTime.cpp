#include "ui/run/ElapsedTime.h"

#include <cstdlib>

namespace tessarine
{

namespace
{

int SecondOfDay(QTime time)
{
    constexpr int perSecond = 1000;
    return time.msecsSinceStartOfDay() / perSecond;
}

}  // namespace

QString ElapsedTimeText(QTime start, QTime now)
{
    const int seconds = std::abs(SecondOfDay(now) - SecondOfDay(start));
    return "Total Elapsed Time : " + QTime(0, 0).addSecs(seconds).toString("HH:mm:ss");
}

}  // namespace tessarine
