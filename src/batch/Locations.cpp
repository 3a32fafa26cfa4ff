#include "batch/Locations.h"

#include <algorithm>

#include "batch/Refusal.h"
#include "batch/Suggestion.h"
#include "model/SearchLocations.h"

namespace tessarine::batch
{

namespace
{

[[noreturn]] void RefuseLocation(std::string_view name)
{
    std::vector<std::string_view> known{"all"};
    for (const SearchLocation& location : SearchLocations)
        known.push_back(location.name);
    const std::string hint = DidYouMean(name, known);
    Refuse("--in: there is no location \"" + std::string(name) + "\"" + hint + (hint.empty() ? "; the" : " The") +
           " names are " + LocationNames() + ", or all");
}

void SwitchOnOne(OptionSetting& setting, std::string_view name)
{
    if (!SwitchOnPlace(setting, name))
        RefuseLocation(name);
}

}  // namespace

bool SwitchOnPlace(OptionSetting& setting, std::string_view name)
{
    bool isKnown = name == "all";
    for (const SearchLocation& location : SearchLocations) {
        if (name == "all" || name == location.name) {
            setting.*location.isOn = true;
            isKnown = true;
        }
    }
    return isKnown;
}

void SwitchOn(OptionSetting& setting, std::string_view names)
{
    for (;;) {
        const std::size_t comma = names.find(',');
        // An empty name between two commas is refused like any unknown one.
        SwitchOnOne(setting, names.substr(0, comma));
        if (comma == std::string_view::npos)
            return;
        names.remove_prefix(comma + 1);
    }
}

bool HasLocation(const OptionSetting& setting)
{
    return std::ranges::any_of(SearchLocations, [&](const auto& row) { return setting.*row.isOn; });
}

std::vector<std::string> LocationsOf(const OptionSetting& setting)
{
    std::vector<std::string> names;
    for (const SearchLocation& location : SearchLocations)
        if (setting.*location.isOn)
            names.emplace_back(location.name);
    return names;
}

std::string LocationNames()
{
    std::string names;
    for (const SearchLocation& location : SearchLocations) {
        if (!names.empty())
            names += ", ";
        names += location.name;
    }
    return names;
}

}  // namespace tessarine::batch
