#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace tessarine
{

/// An event: receivers are called in place, one after the other, on the thread that raises it.
template <class... Arguments>
class Event
{
public:
    using Receiver = std::function<void(Arguments...)>;

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
