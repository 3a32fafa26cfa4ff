#pragma once

#include "platform/Failure.h"

namespace tessarine::batch
{

/// What went wrong, for people: the innermost text of a failure whose texts nest ("Error 70 (Error 70 (Permission
/// denied) in procedure Slides at …) in procedure ProcessFile at …" gives "Permission denied"). A text that does not
/// nest comes back as it is; a failure without any text gives "Error " and its number.
String ReasonOf(const Failure& failure);

}  // namespace tessarine::batch
