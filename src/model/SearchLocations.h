#pragma once

#include <array>

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{

/// One of the 14 places of a presentation that a pair can be looked for in.
struct SearchLocation {
    const char16_t* caption;  ///< As the location list shows it, odd letters included.
    const char* name;         ///< On the command line and in reports.
    bool OptionSetting::*isOn;
};

/// The locations in the order of the location list's rows, the one order in which windows read and write them.
inline constexpr std::array<SearchLocation, 14> SearchLocations{{
    {u"Slides", "slides", &OptionSetting::InSlides},
    {u"Hyperlink Addresses", "hyperlinks", &OptionSetting::InHyperlinkAddresses},
    {u"Shapes and Texboxes", "shapes", &OptionSetting::InShapesAndTextboxes},
    {u"Header", "header", &OptionSetting::InHeader},
    {u"Footer", "footer", &OptionSetting::InFooter},
    {u"Built In Properties", "builtin-properties", &OptionSetting::InBuiltinProperty},
    {u"Custom Properties", "custom-properties", &OptionSetting::InCustomProperties},
    {u"Notes", "notes", &OptionSetting::InNotes},
    {u"Links(OLE and DDE)", "links", &OptionSetting::InLinks},
    {u"Slide Master(Per Slide)", "master-per-slide", &OptionSetting::InSlideMasterPerSlide},
    {u"Slide Master(Per Presentation)", "master-per-presentation", &OptionSetting::InSlideMasterPerPresentation},
    {u"Title Master", "title-master", &OptionSetting::InTitleMaster},
    {u"Handout Master", "handout-master", &OptionSetting::InHandoutMaster},
    {u"Notes Master", "notes-master", &OptionSetting::InNotesMaster},
}};

/// What the search type column shows for a SearchMethod: "Normal Search" for 0, nothing for anything else.
String SearchMethodText(std::int32_t searchMethod);

}  // namespace tessarine
