#pragma once

#include <array>
#include <cstddef>

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{

/// The 14 places of a presentation that a pair can be looked for in. Their order is that of the location list's rows,
/// of the counts in a result and of every report; ProcessFile searches them in an order of its own.
enum class Location : std::size_t {
    Slides,
    HyperlinkAddresses,
    ShapesAndTextboxes,
    Header,
    Footer,
    BuiltinProperies,
    CustomProperties,
    Notes,
    Links,
    SlideMasterPerSlide,
    SlideMasterPerPresentation,
    TitleMaster,
    HandoutMaster,
    NotesMaster,
};

/// What a replacement leaves in a location.
enum class ReplacedText {
    IsSearchedAgain,  ///< Text of a shape: the walk goes on inside the inserted text, so a pair may never end.
    IsDone,           ///< A plain value: found and replaced once as a whole.
};

/// All that is known of one location but how it is searched.
struct SearchLocation {
    Location location;          ///< The number of the row.
    bool OptionSetting::*isOn;  ///< The pair's switch.
    const char16_t* key;        ///< Of the switch in project files, and its column in list files.
    const char* name;           ///< On the command line and in reports.
    ReplacedText replacedText;  ///< Tells whether a pair can run forever here.
    const char16_t* caption;    ///< In the location list, odd letters included.
    const char16_t* inGrid;     ///< In the grid's column of locations.
    const char16_t* inResults;  ///< In the results of a run: all before the count or one of the two words.

    const char16_t* found = u"Found";         ///< In place of a count above 0, in a run that does not count.
    const char16_t* notFound = u"Not Found";  ///< In place of a count of 0.
};

/// One row for each Location, in its order. A place is spelled differently in the list, the grid and the results
/// ("Texboxes", "FOund", a blank before the bracket or none): these are the texts that users and their logs know. What
/// a further location needs beside its row here, the compiler or a test asks for (docs/architecture.md, Recipes).
inline constexpr std::array<SearchLocation, 14> SearchLocations{{
    {Location::Slides, &OptionSetting::InSlides, u"InSlides", "slides", ReplacedText::IsSearchedAgain, u"Slides",
     u"Slides", u"Slides ("},
    {Location::HyperlinkAddresses, &OptionSetting::InHyperlinkAddresses, u"InHyperlinkAddresses", "hyperlinks",
     ReplacedText::IsDone, u"Hyperlink Addresses", u"Hyperlink Addresses", u"Hyperlinks Addresses (", u"FOund",
     u"Not FOund"},
    {Location::ShapesAndTextboxes, &OptionSetting::InShapesAndTextboxes, u"InShapesAndTextboxes", "shapes",
     ReplacedText::IsSearchedAgain, u"Shapes and Texboxes", u"Shape And Textboxes", u"Shapes And Textboxes ("},
    {Location::Header, &OptionSetting::InHeader, u"InHeader", "header", ReplacedText::IsDone, u"Header", u"Header",
     u"Header ("},
    {Location::Footer, &OptionSetting::InFooter, u"InFooter", "footer", ReplacedText::IsDone, u"Footer", u"Footer",
     u"Footer ("},
    {Location::BuiltinProperies, &OptionSetting::InBuiltinProperty, u"InBuiltinProperty", "builtin-properties",
     ReplacedText::IsDone, u"Built In Properties", u"Built In Properties", u"Builtin Properties("},
    {Location::CustomProperties, &OptionSetting::InCustomProperties, u"InCustomProperties", "custom-properties",
     ReplacedText::IsDone, u"Custom Properties", u"Custom Properties", u"Custom Properties("},
    {Location::Notes, &OptionSetting::InNotes, u"InNotes", "notes", ReplacedText::IsSearchedAgain, u"Notes", u"Notes",
     u"Notes("},
    {Location::Links, &OptionSetting::InLinks, u"InLinks", "links", ReplacedText::IsDone, u"Links(OLE and DDE)",
     u"Links(OLE And DDE)", u"OLE And DDE Links("},
    {Location::SlideMasterPerSlide, &OptionSetting::InSlideMasterPerSlide, u"InSlideMasterPerSlide", "master-per-slide",
     ReplacedText::IsSearchedAgain, u"Slide Master(Per Slide)", u"Slides Master(Per Slide)",
     u"Slide Master Per Slide("},
    {Location::SlideMasterPerPresentation, &OptionSetting::InSlideMasterPerPresentation,
     u"InSlideMasterPerPresentation", "master-per-presentation", ReplacedText::IsSearchedAgain,
     u"Slide Master(Per Presentation)", u"Slides Master(Per Presentation)", u"Slide Master Per Presentation ("},
    {Location::TitleMaster, &OptionSetting::InTitleMaster, u"InTitleMaster", "title-master",
     ReplacedText::IsSearchedAgain, u"Title Master", u"Title Master", u"Title Master("},
    {Location::HandoutMaster, &OptionSetting::InHandoutMaster, u"InHandoutMaster", "handout-master",
     ReplacedText::IsSearchedAgain, u"Handout Master", u"Handout Master", u"Handout Master("},
    {Location::NotesMaster, &OptionSetting::InNotesMaster, u"InNotesMaster", "notes-master",
     ReplacedText::IsSearchedAgain, u"Notes Master", u"Notes Master", u"Notes Master("},
}};

/// The row of a location.
constexpr const SearchLocation& RowOf(Location location)
{
    return SearchLocations[static_cast<std::size_t>(location)];
}

/// What the search type column shows for a SearchMethod: "Normal Search" for 0, nothing for anything else.
String SearchMethodText(std::int32_t searchMethod);

}  // namespace tessarine
