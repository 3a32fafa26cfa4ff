#pragma once

#include <cstdint>

#include "platform/Failure.h"

namespace tessarine::windows
{

/// The number that Visual Basic's `Err.Number` shows for a failed call, which is what the layers above are written
/// against. `hresult` is what the call gave, or what the server put into its exception.
///
/// - The codes by which a server is known to have died in the call: `RemoteCallFailed`.
/// - All others that tell that the server, or the object in it, has gone: `ServerGone`.
/// - Codes of the control facility, 0x800A....: their low half, so that Excel's 0x800A03EC is 1004.
/// - Everything else as it is.
std::int32_t NumberOf(long hresult);

/// Whether the server has only put the call off: it shows a message box, say. Such a call is made again.
bool IsBusy(long hresult);

/// The failure of a call that brought no text of its own. `member` is what was called ("Shape.Type"); it becomes the
/// source, and part of the text where the system's words are general.
Failure FailureOfCall(long hresult, const String& member);

/// The failure of a call whose server told in its own words what went wrong. An empty text is replaced by the system's.
Failure FailureOfServer(long hresult, const String& text, const String& member);

/// `CannotCreateObject`, whatever the system gives as reason; the text has its code.
Failure CannotCreate(long hresult);

}  // namespace tessarine::windows
