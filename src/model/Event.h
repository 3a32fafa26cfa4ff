#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace tessarine
{

/// An event: receivers are called in place, in the order in which they were added, on the thread that raises it. A
/// failure of one ends the raising, so that later receivers are not told; it goes on to whoever raised the event.
template <class... Arguments>
class Event
{
public:
    using Receiver = std::function<void(Arguments...)>;

    /// Adds a receiver. It must not add another one while it is called, and can't be taken away.
    void operator+=(Receiver receiver) { receivers_.push_back(std::move(receiver)); }

    void Raise(Arguments... arguments) const
    {
        for (const Receiver& receiver : receivers_)
            receiver(arguments...);
    }

private:
    std::vector<Receiver> receivers_;
};

}  // namespace tessarine
