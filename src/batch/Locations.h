#pragma once

#include <string>
#include <string_view>

#include "model/OptionSetting.h"

namespace tessarine::batch
{

/// Switches on the locations that `names` lists: names of SearchLocations separated by commas, or "all". Raises failure
/// 5 with a text that tells the valid names when one is unknown.
void SwitchOn(OptionSetting& setting, std::string_view names);

/// Whether any location is switched on.
bool HasLocation(const OptionSetting& setting);

/// The names of all locations in the order of SearchLocations, with ", " between them.
std::string LocationNames();

}  // namespace tessarine::batch
