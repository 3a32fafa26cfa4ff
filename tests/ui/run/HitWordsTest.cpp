#include "ui/run/HitWords.h"

#include <gmock/gmock.h>

#include "app/ChosenLanguage.h"
#include "app/GlobalState.h"
#include "ui/run/SampleHits.h"

namespace tessarine
{
namespace
{

class HitWordsTest : public testing::Test
{
protected:
    static std::string Place(const Hit& hit) { return PlaceWords(RunTexts(), hit).toStdString(); }

    static std::string Place(HitPlace place, std::int32_t paragraph = 0)
    {
        return Place(At(HitOnSlide(1, {}, u"cat", {}), std::move(place), paragraph));
    }

    const ChosenLanguage language_{FromUtf8(TESSARINE_PROGRAM_FOLDER), u"English.lng"};
};

TEST_F(HitWordsTest, NamesSlideShapeAndParagraph)
{
    EXPECT_EQ(Place(HitOnSlide(1, {}, u"cat", {})), "Slide 3 “Plan”, shape “Text 1”, paragraph 2");
}

TEST_F(HitWordsTest, LeavesOutWhatTheHitDoesNotTell)
{
    EXPECT_EQ(Place(HitPlace{.slide = 3}), "Slide 3");
    EXPECT_EQ(Place(HitPlace{.slide = 3, .shape = 2}, 1), "Slide 3, shape 2, paragraph 1");
    EXPECT_EQ(Place(HitPlace{}), "Slide");
}

TEST_F(HitWordsTest, HasAPlaceForEachLocation)
{
    using L = Location;
    using Kind = HitPlace::HeaderFooter;
    EXPECT_EQ(Place({.location = L::HyperlinkAddresses, .slide = 2, .hyperlink = 5}), "Slide 2, hyperlink 5");
    EXPECT_EQ(Place({.location = L::ShapesAndTextboxes, .slide = 2, .shape = 1}, 1), "Slide 2, shape 1, paragraph 1");
    EXPECT_EQ(Place({.location = L::Header, .slide = 2, .headerFooter = Kind::Header}), "Slide 2, header");
    EXPECT_EQ(Place({.location = L::Footer, .slide = 2, .headerFooter = Kind::Footer}), "Slide 2, footer");
    EXPECT_EQ(Place({.location = L::BuiltinProperies, .property = u"Title"}), "Property “Title”");
    EXPECT_EQ(Place({.location = L::CustomProperties, .property = u"Client"}), "Custom property “Client”");
    EXPECT_EQ(Place({.location = L::Notes, .slide = 2, .slideTitle = u"Plan"}, 3),
              "Notes of slide 2 “Plan”, paragraph 3");
    EXPECT_EQ(Place({.location = L::Links, .slide = 2, .shapeName = u"Chart"}),
              "Slide 2, shape “Chart”, source of the link");
    EXPECT_EQ(Place({.location = L::SlideMasterPerSlide, .design = u"Office"}), "Slide master “Office”");
    EXPECT_EQ(Place({.location = L::SlideMasterPerPresentation, .design = u"Office"}), "Slide master “Office”");
    EXPECT_EQ(Place({.location = L::TitleMaster}), "Title master");
    EXPECT_EQ(Place({.location = L::HandoutMaster}), "Handout master");
    EXPECT_EQ(Place({.location = L::NotesMaster, .headerFooter = Kind::Header}), "Notes master, header");
}

TEST_F(HitWordsTest, SpeaksTheLanguageInForce)
{
    CurrentLanguageFile = u"German.lng";
    EXPECT_EQ(Place(HitOnSlide(1, {}, u"cat", {})), "Folie 3 „Plan“, Form „Text 1“, Absatz 2");

    CurrentLanguageFile = u"Chinese(Big5).lng";
    EXPECT_EQ(Place(HitOnSlide(1, {}, u"cat", {})), "投影片 3「Plan」，圖案「Text 1」，段落 2");
}

TEST_F(HitWordsTest, TellsThePlaceWithoutALanguageFile)
{
    CurrentLanguageFile = u".lng";

    EXPECT_EQ(Place(HitOnSlide(1, {}, u"cat", {})), "3 Plan  Text 1 2");
}

TEST_F(HitWordsTest, TakesNoPlaceholderFromANameInTheFile)
{
    EXPECT_EQ(Place(HitPlace{.slide = 3, .slideTitle = u"100%s %d %i"}, 2), "Slide 3 “100%s %d %i”, paragraph 2");
}

TEST_F(HitWordsTest, CutsALongTitleBetweenCharacters)
{
    const std::string place = Place(HitPlace{.slide = 3, .slideTitle = String(59, u'a') + u"\U0001F600 end"});

    EXPECT_EQ(place, "Slide 3 “" + std::string(59, 'a') + "…”");
}

TEST_F(HitWordsTest, RemarksOnHitsThatAreNotCountedOrNotChanged)
{
    const RunTexts texts;
    Hit hit = HitOnSlide(1, {}, u"cat", {});
    EXPECT_EQ(RemarkWords(texts, hit, false), "");
    EXPECT_EQ(RemarkWords(texts, hit, true), "could not be changed");

    hit.isCounted = false;
    EXPECT_EQ(RemarkWords(texts, hit, false), "not counted");
    EXPECT_EQ(RemarkWords(texts, hit, true), "not counted, could not be changed");
    EXPECT_EQ(RemarkWords(texts, Replaced(hit, u"dog"), true), "not counted");
}

}  // namespace
}  // namespace tessarine
