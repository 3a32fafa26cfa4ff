#include "engine/EndlessReplacement.h"

#include <gtest/gtest.h>

#include "platform/CaseFolding.h"

namespace tessarine
{
namespace
{

OptionSetting InSlides(bool wholeWord = false, bool matchCase = true)
{
    OptionSetting setting;
    setting.InSlides = true;
    setting.MatchWholeWord = wholeWord;
    setting.MatchCase = matchCase;
    return setting;
}

bool StandsAlone(const String& text, std::size_t at, std::size_t length)
{
    const bool before = at > 0 && IsWordCharacter(text[at - 1]);
    const bool after = at + length < text.size() && IsWordCharacter(text[at + length]);
    return !before && !after;
}

/// The walk that a replace run makes over a shape's text: true when it is still going after many more steps than any
/// walk that ends can take.
bool RunsForever(String text, const String& find, const String& with, bool wholeWord)
{
    std::size_t from = 0;
    for (std::size_t step = 0; step < 60; ++step) {
        std::size_t at = text.find(find, from);
        while (at != String::npos && wholeWord && !StandsAlone(text, at, find.size()))
            at = text.find(find, at + 1);
        if (at == String::npos)
            return false;
        text.replace(at, find.size(), with);
        from = at + 1;
    }
    return true;
}

/// All texts of up to `length` letters.
std::vector<String> TextsOver(StringView letters, std::size_t length)
{
    std::vector<String> texts{u""};
    for (std::size_t first = 0; first < texts.size() && texts[first].size() < length; ++first) {
        for (const char16_t letter : letters)
            texts.push_back(texts[first] + letter);
    }
    return texts;
}

/// Compares the decision with the walk itself, over every text, search text and replacement of small lengths.
void CompareWithTheWalk(StringView letters, bool wholeWord)
{
    const auto texts = TextsOver(letters, 6);
    int endless = 0;
    for (const String& find : TextsOver(letters, 3)) {
        if (find.empty())
            continue;
        for (const String& with : TextsOver(letters, 4)) {
            bool seen = false;
            for (const String& text : texts)
                seen = seen || RunsForever(text, find, with, wholeWord);
            EXPECT_EQ(NeverEnds(find, with, InSlides(wholeWord)), seen) << ToUtf8(find) << " by " << ToUtf8(with);
            endless += seen ? 1 : 0;
        }
    }
    EXPECT_GT(endless, 10);
}

TEST(EndlessReplacement, IsExactlyWhatTheWalkOverATextShows)
{
    CompareWithTheWalk(u"ab", false);
}

TEST(EndlessReplacement, IsExactlyWhatTheWalkShowsForWholeWords)
{
    CompareWithTheWalk(u"a ", true);
}

TEST(EndlessReplacement, NeedsTheTextAfterTheStartOfItsReplacement)
{
    EXPECT_FALSE(NeverEnds(u"cat", u"cats", InSlides()));
    EXPECT_TRUE(NeverEnds(u"cat", u"a cat", InSlides()));
    EXPECT_FALSE(NeverEnds(u"aa", u"ba", InSlides()));
    EXPECT_TRUE(NeverEnds(u"aa", u"aaa", InSlides()));
    EXPECT_FALSE(NeverEnds(u"cat", u"", InSlides()));
}

TEST(EndlessReplacement, FollowsTheCaseRule)
{
    EXPECT_TRUE(NeverEnds(u"cat", u"a CAT", InSlides(false, false)));
    EXPECT_FALSE(NeverEnds(u"cat", u"a CAT", InSlides(false, true)));
}

TEST(EndlessReplacement, NeedsTheTextToStandAloneForWholeWords)
{
    EXPECT_TRUE(NeverEnds(u"cat", u"a cat", InSlides(true)));
    EXPECT_FALSE(NeverEnds(u"cat", u"concat", InSlides(true)));
    EXPECT_FALSE(NeverEnds(u"cat", u"a cats", InSlides(true)));
    EXPECT_TRUE(NeverEnds(u"cat", u"a-cat", InSlides(true)));
    EXPECT_FALSE(NeverEnds(u"cat", u"\U0001D400cat", InSlides(true)));  // a letter of two units
}

TEST(EndlessReplacement, SeesLineEndsAsTheParagraphBreaksThatTheyBecome)
{
    EXPECT_TRUE(NeverEnds(u"\r", u"x\n", InSlides()));
    EXPECT_TRUE(NeverEnds(u"a\rb", u"xa\r\nb", InSlides()));
    EXPECT_FALSE(NeverEnds(u"\n", u"x\n", InSlides()));
}

TEST(EndlessReplacement, DoesNotHappenInPlainValues)
{
    OptionSetting setting;
    setting.InHyperlinkAddresses = true;
    setting.InFooter = true;
    setting.InHeader = true;
    setting.InBuiltinProperty = true;
    setting.InCustomProperties = true;
    setting.InLinks = true;
    EXPECT_FALSE(NeverEnds(u"example.org", u"www.example.org", setting));

    for (const auto location :
         {&OptionSetting::InSlides, &OptionSetting::InShapesAndTextboxes, &OptionSetting::InNotes,
          &OptionSetting::InSlideMasterPerSlide, &OptionSetting::InSlideMasterPerPresentation,
          &OptionSetting::InTitleMaster, &OptionSetting::InHandoutMaster, &OptionSetting::InNotesMaster}) {
        OptionSetting with = setting;
        with.*location = true;
        EXPECT_TRUE(NeverEnds(u"example.org", u"www.example.org", with));
    }
}

}  // namespace
}  // namespace tessarine
