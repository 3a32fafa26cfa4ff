#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/OptionSetting.h"

namespace tessarine::batch
{

/// Where a call looks that does not say it.
inline constexpr std::string_view defaultPlaces = "slides,shapes,notes";

/// Switches on the location of a name, or all of them for "all". False for a name that is none.
bool SwitchOnPlace(OptionSetting& setting, std::string_view name);

/// Switches on the locations that `names` lists: names of SearchLocations separated by commas, or "all". Refuses
/// (Refusal.h) an unknown name with a text that tells the valid ones.
void SwitchOn(OptionSetting& setting, std::string_view names);

/// Whether any location is switched on.
bool HasLocation(const OptionSetting& setting);

/// The names of the locations that are switched on, in the order of SearchLocations.
std::vector<std::string> LocationsOf(const OptionSetting& setting);

/// The names of all locations in the order of SearchLocations, with ", " between them.
std::string LocationNames();

}  // namespace tessarine::batch
