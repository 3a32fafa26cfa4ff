#pragma once

#include <cstdint>

namespace tessarine
{

/// The search options of one find/replace pair. A fresh one searches nowhere.
struct OptionSetting {
    /// Kind of search; only 0 ("Normal Search") exists. Shown, never read by the engine, kept for further kinds.
    std::int32_t SearchMethod = 0;
    bool PromptOnReplace = false;  ///< Held and shown; no prompt is ever made.
    bool MatchWholeWord = false;   ///< A hit that touches a letter does not count.
    bool MatchCase = false;        ///< Off, capital and small letters are the same.

    // One switch for each row of SearchLocations, which names and describes them.
    bool InTitleMaster = false;
    bool InSlides = false;
    bool InSlideMasterPerSlide = false;
    bool InSlideMasterPerPresentation = false;
    bool InShapesAndTextboxes = false;
    bool InNotesMaster = false;
    bool InNotes = false;
    bool InLinks = false;
    bool InHyperlinkAddresses = false;
    bool InHeader = false;
    bool InHandoutMaster = false;
    bool InFooter = false;
    bool InCustomProperties = false;
    bool InBuiltinProperty = false;

    bool operator==(const OptionSetting&) const = default;
};

}  // namespace tessarine
