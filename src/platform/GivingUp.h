#pragma once

/// The way out of a file that a run does not come to the end of: a person gives it up, and the calls that the run makes
/// for it fail from then on. As one thread does everything, a person can do so wherever a call delivers events.
namespace tessarine
{

/// The file that a run is at is given up.
void GiveUpFile();

/// It is not, or not any more: another file is next, or the run wants to put this one away.
void ForgetGivingUp();

bool IsFileGivenUp();

/// Raises `GivenUp` while the file is given up. What could change or save it calls this, and what may take long.
void RaiseIfGivenUp();

/// The same in a call of which a run may make very many, after events were delivered: at every hundredth time, as
/// looking for them costs more than a short call.
void DeliverEventsInCall();

}  // namespace tessarine
