#include "model/OptionSetting.h"

#include <gmock/gmock.h>

#include <set>

#include "model/SearchLocations.h"

namespace tessarine
{

TEST(OptionSetting, HasNoLocationAndNoMatchOptionOnAtFirst)
{
    const OptionSetting options;

    for (const SearchLocation& location : SearchLocations)
        EXPECT_FALSE(options.*location.isOn) << location.name;
    EXPECT_FALSE(options.MatchCase);
    EXPECT_FALSE(options.MatchWholeWord);
    EXPECT_FALSE(options.PromptOnReplace);
    EXPECT_EQ(options.SearchMethod, 0);
}

TEST(SearchMethod, IsShownForTheOnlyKindThatExists)
{
    EXPECT_EQ(SearchMethodText(0), u"Normal Search");
    EXPECT_EQ(SearchMethodText(5), u"");
    EXPECT_EQ(SearchMethodText(-1), u"");
}

TEST(SearchLocations, HaveTheCaptionsOfTheListInItsOrder)
{
    std::vector<String> captions;
    for (const SearchLocation& location : SearchLocations)
        captions.emplace_back(location.caption);

    EXPECT_THAT(captions,
                testing::ElementsAre(u"Slides", u"Hyperlink Addresses", u"Shapes and Texboxes", u"Header", u"Footer",
                                     u"Built In Properties", u"Custom Properties", u"Notes", u"Links(OLE and DDE)",
                                     u"Slide Master(Per Slide)", u"Slide Master(Per Presentation)", u"Title Master",
                                     u"Handout Master", u"Notes Master"));
}

TEST(SearchLocations, EachStandForAFlagOfTheirOwn)
{
    OptionSetting options;
    std::set<const bool*> flags;

    for (const SearchLocation& location : SearchLocations)
        flags.insert(&(options.*location.isOn));

    EXPECT_EQ(flags.size(), 14u);
}

TEST(SearchLocations, StandForTheFlagsOfTheirRows)
{
    EXPECT_EQ(SearchLocations[0].isOn, &OptionSetting::InSlides);
    EXPECT_EQ(SearchLocations[1].isOn, &OptionSetting::InHyperlinkAddresses);
    EXPECT_EQ(SearchLocations[2].isOn, &OptionSetting::InShapesAndTextboxes);
    EXPECT_EQ(SearchLocations[3].isOn, &OptionSetting::InHeader);
    EXPECT_EQ(SearchLocations[4].isOn, &OptionSetting::InFooter);
    EXPECT_EQ(SearchLocations[5].isOn, &OptionSetting::InBuiltinProperty);
    EXPECT_EQ(SearchLocations[6].isOn, &OptionSetting::InCustomProperties);
    EXPECT_EQ(SearchLocations[7].isOn, &OptionSetting::InNotes);
    EXPECT_EQ(SearchLocations[8].isOn, &OptionSetting::InLinks);
    EXPECT_EQ(SearchLocations[9].isOn, &OptionSetting::InSlideMasterPerSlide);
    EXPECT_EQ(SearchLocations[10].isOn, &OptionSetting::InSlideMasterPerPresentation);
    EXPECT_EQ(SearchLocations[11].isOn, &OptionSetting::InTitleMaster);
    EXPECT_EQ(SearchLocations[12].isOn, &OptionSetting::InHandoutMaster);
    EXPECT_EQ(SearchLocations[13].isOn, &OptionSetting::InNotesMaster);
}

}  // namespace tessarine
