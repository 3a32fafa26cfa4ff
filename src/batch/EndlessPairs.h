#pragma once

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// Raises 5 with a text for one line when replacing `find` by `with` never ends (engine/EndlessReplacement.h).
void CheckEnds(StringView find, StringView with, const OptionSetting& setting);

}  // namespace tessarine::batch
