#include "ui/run/QtTimer.h"

#include <algorithm>
#include <map>
#include <memory>

#include <QTimer>

namespace tessarine
{

namespace
{

/// No timer ticks more often, whatever interval it has: Windows' own limit. More ticks would only slow a run down.
constexpr std::int32_t shortestInterval = 10;  // milliseconds

/// A timer may be stopped by its own tick, hence deleteLater.
struct DeleteLater {
    void operator()(QTimer* timer) const
    {
        timer->stop();
        timer->deleteLater();
    }
};

struct QtTimers {
    std::map<TimerIdentifier, std::unique_ptr<QTimer, DeleteLater>> running;
    TimerIdentifier last = 0;

    TimerIdentifier Set(TimerIdentifier identifier, std::int32_t interval, const TimerCallback& callback)
    {
        // Numbers are not used twice, so that a late tick never reaches another timer than its own.
        if (!running.contains(identifier))
            identifier = ++last;
        auto& timer = running[identifier];
        timer.reset(new QTimer);
        QObject::connect(timer.get(), &QTimer::timeout, [identifier, callback] { callback(identifier); });
        timer->start(std::max(interval, shortestInterval));
        return identifier;
    }
};

}  // namespace

SystemTimerPort UseQtTimers()
{
    const auto timers = std::make_shared<QtTimers>();
    return SetSystemTimer({[timers](TimerIdentifier identifier, std::int32_t interval, const TimerCallback& callback) {
                               return timers->Set(identifier, interval, callback);
                           },
                           [timers](TimerIdentifier identifier) { timers->running.erase(identifier); }});
}

}  // namespace tessarine
