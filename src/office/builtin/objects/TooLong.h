#pragma once

#include "log/Warnings.h"
#include "office/builtin/objects/OpenFile.h"
#include "platform/Failure.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Puts an address or a source. One that is too long for it (`BadArgument`) leaves what is there and is a warning, not
/// a failure: the other replacements in the file are no worse for it. `place` gives the name of what was left.
template <class Place, class Put>
void PutUnlessTooLong(const OpenFile& file, Place&& place, Put&& put)
{
    try {
        put();
    } catch (const Failure& failure) {
        if (failure.number != FailureNumber::BadArgument)
            throw;
        Warn(file.Path(), place() + u": left as it is. " + failure.Reason());
    }
}

}  // namespace tessarine::builtin
