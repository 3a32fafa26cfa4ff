#include "model/ItemText.h"

#include "model/SearchLocations.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

struct Flag {
    StringView text;
    bool OptionSetting::*isOn;
};

// "Header" twice is intended, and so is every wording that differs from the location list's.
constexpr Flag locations[] = {
    {u"Slides", &OptionSetting::InSlides},
    {u"Hyperlink Addresses", &OptionSetting::InHyperlinkAddresses},
    {u"Shape And Textboxes", &OptionSetting::InShapesAndTextboxes},
    {u"Header", &OptionSetting::InHeader},
    {u"Footer", &OptionSetting::InFooter},
    {u"Header", &OptionSetting::InHeader},
    {u"Built In Properties", &OptionSetting::InBuiltinProperty},
    {u"Custom Properties", &OptionSetting::InCustomProperties},
    {u"Notes", &OptionSetting::InNotes},
    {u"Links(OLE And DDE)", &OptionSetting::InLinks},
    {u"Slides Master(Per Slide)", &OptionSetting::InSlideMasterPerSlide},
    {u"Slides Master(Per Presentation)", &OptionSetting::InSlideMasterPerPresentation},
    {u"Title Master", &OptionSetting::InTitleMaster},
    {u"Handout Master", &OptionSetting::InHandoutMaster},
    {u"Notes Master", &OptionSetting::InNotesMaster},
};

constexpr Flag options[] = {
    {u"Match Case", &OptionSetting::MatchCase},
    {u"Match Whole Word", &OptionSetting::MatchWholeWord},
    {u"Prompt On Replace", &OptionSetting::PromptOnReplace},
};

template <std::size_t count>
String TextsThatAreOn(const Flag (&flags)[count], const OptionSetting& setting)
{
    String text;
    for (const Flag& flag : flags)
        if (setting.*flag.isOn)
            text.append(text.empty() ? u"" : u",").append(flag.text);
    return text;
}

}  // namespace

String CreateLocationString(const FindAndReplaceItem& item)
{
    return TextsThatAreOn(locations, *NotNull(item.OptionSetting));
}

String CreateOptionStrin(const FindAndReplaceItem& item)
{
    return TextsThatAreOn(options, *NotNull(item.OptionSetting));
}

String CreateSearchType(const FindAndReplaceItem& item)
{
    return SearchMethodText(NotNull(item.OptionSetting)->SearchMethod);
}

}  // namespace tessarine
