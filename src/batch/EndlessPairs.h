#pragma once

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// Refuses (Refusal.h) a pair when replacing `find` by `with` never ends (engine/EndlessReplacement.h).
void CheckEnds(StringView find, StringView with, const OptionSetting& setting);

}  // namespace tessarine::batch
