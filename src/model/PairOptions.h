#pragma once

#include <array>

#include "model/OptionSetting.h"

namespace tessarine
{

/// A switch of a pair that is no location.
struct PairOption {
    const char16_t* key;        ///< In project files, and its column in list files.
    const char16_t* inGrid;     ///< In the grid's column of options.
    bool OptionSetting::*isOn;  ///< The pair's switch.
};

/// The switches of a pair that are no locations, in the order of the grid's texts and of the project file.
inline constexpr std::array<PairOption, 3> PairOptions{{
    {u"MatchCase", u"Match Case", &OptionSetting::MatchCase},
    {u"MatchWholeWord", u"Match Whole Word", &OptionSetting::MatchWholeWord},
    {u"PromptOnReplace", u"Prompt On Replace", &OptionSetting::PromptOnReplace},
}};

}  // namespace tessarine
