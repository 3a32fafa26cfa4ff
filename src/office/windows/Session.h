#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "office/windows/ComHeaders.h"
#include "office/windows/ComThread.h"
#include "platform/String.h"

namespace tessarine::windows
{

/// What all objects of one provider share: the thread that their calls are made on, and the numbers that their members
/// go by. Asking for a number is a call to the server, so each is asked for once; a member's number never changes.
///
/// Whoever holds an object holds its session.
class Session : public std::enable_shared_from_this<Session>
{
public:
    ComThread& Thread() { return thread_; }

    /// Takes over a reference. It is let go of on the thread, without waiting for it.
    template <class Interface>
    std::shared_ptr<Interface> Hold(Interface* object)
    {
        return {object, [session = shared_from_this()](Interface* held) {
                    if (held)
                        session->thread_.Post([held] { held->Release(); });
                }};
    }

    /// The number of a member of objects of a kind; raises what the server answers for a name that it doesn't know. On
    /// the thread alone.
    DISPID IdOf(IDispatch& object, const String& kind, const String& member);

    /// Whether the names of shapes are asked for. Warnings alone don't do that: a run that tells nobody of hits makes
    /// no call that it could do without.
    bool asksForNames = false;

private:
    std::map<std::pair<String, String>, DISPID> ids_;  // used on the thread alone
    ComThread thread_;                                 // last: it ends before what its jobs use
};

}  // namespace tessarine::windows
