#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace tessarine
{

/// Delivers Qt's pending events, but not at every call: a run asks for delivery at every shape, and looking for events
/// that often would slow it down. There must be a QApplication.
class EventDelivery
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;  ///< Never goes back.

    /// The least time from one delivery to the next. A window that reacts within it feels immediate.
    static constexpr std::chrono::milliseconds Between{60};

    explicit EventDelivery(Clock clock = std::chrono::steady_clock::now);  ///< Tests bring their own clock.

    /// Delivers what is pending, unless a delivery has begun or ended less than Between ago. What is delivered may call
    /// this in its turn.
    void Deliver();

    /// Delivers what is pending, however soon after the last delivery.
    void DeliverAtOnce();

private:
    Clock clock_;
    std::optional<TimePoint> last_;  // when a delivery began or ended; none before the first
};

}  // namespace tessarine
