#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

/// A run's search walks a text from the start of the last hit on; what that means for whole texts.
struct Walk {
    const char* name;
    const char* before;
    const char16_t* find;
    const char16_t* with;
    std::int32_t found;     ///< Count of a find run.
    std::int32_t replaced;  ///< Count of a replace run.
    const char16_t* after;
};

void PrintTo(const Walk& walk, std::ostream* out)
{
    *out << walk.name;
}

class TextWalk : public testing::TestWithParam<Walk>
{
};

TEST_P(TextWalk, GoesOnOneUnitAfterTheStartOfAHit)
{
    const TextBoxOnDisk box(P(R(GetParam().before)));

    const std::int32_t found = box.CountAll(GetParam().find);
    const std::int32_t replaced = box.ReplaceAll(GetParam().find, GetParam().with);

    EXPECT_EQ(found, GetParam().found);
    EXPECT_EQ(replaced, GetParam().replaced);
    EXPECT_EQ(box.Text(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Texts, TextWalk,
                         testing::Values(Walk{"OverlappingHitsAreFound", "aaa", u"aa", u"aa", 2, 2, u"aaa"},
                                         Walk{"ReplacedTextIsSearchedAgain", "aaaa", u"aa", u"b", 3, 2, u"bb"},
                                         Walk{"AnOddLetterStays", "aaa", u"aa", u"b", 2, 1, u"ba"},
                                         Walk{"DeletionSkipsANeighbour", "catcat", u"cat", u"", 2, 1, u"cat"},
                                         Walk{"DeletionOfLettersLeavesOne", "aaa", u"a", u"", 3, 2, u"a"},
                                         Walk{"DeletionOfTwoLeavesOne", "aa", u"a", u"", 2, 1, u"a"},
                                         Walk{"DeletionOfTheWholeText", "cat", u"cat", u"", 1, 1, u""},
                                         Walk{"ReplacementThatBeginsWithTheText", "cat cat", u"cat", u"cats", 2, 2,
                                              u"cats cats"},
                                         Walk{"ShorterReplacement", "cat cat cat", u"cat", u"x", 3, 3, u"x x x"},
                                         Walk{"LongerReplacement", "cat cat", u"cat", u"dogs!", 2, 2, u"dogs! dogs!"},
                                         Walk{"HitThatAReplacementMakes", "aab", u"ab", u"b", 1, 1, u"ab"},
                                         Walk{"NoHit", "dog", u"cat", u"x", 0, 0, u"dog"},
                                         Walk{"EmptyText", "cat", u"", u"x", 0, 0, u"cat"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(TextWalkOverRuns, CountsEveryHit)
{
    const TextBoxOnDisk box(P(R("Fab") + R("rikam Fabrik", R"(b="1")")) + P(R("Fabrikam")) +
                            P(R("am Fabri") + R("kam")));

    EXPECT_EQ(box.CountAll(u"Fabrikam"), 3);
    EXPECT_EQ(box.ReplaceAll(u"Fabrikam", u"x"), 3);

    EXPECT_EQ(box.Text(), u"x Fabrik\rx\ram x");
}

TEST(TextWalkOverRuns, OfALaterPairFindsWhatAnEarlierOnePut)
{
    const TextBoxOnDisk box(P(R("Fab") + R("rikam")) + P(R("other")));
    const ProjectOwner project;
    SearchFunctions engine;
    engine.xPresentation = box.File().Open();
    const auto replace = [&](const String& find, const String& with) {
        engine.mItem = project->FindAndReplaceList->Add(find, with, nullptr, project.get());
        return engine.ShapeAndTextboxes();
    };

    EXPECT_EQ(replace(u"litware", u"x"), 0);
    EXPECT_EQ(replace(u"fabrikam", u"Contoso & Sons"), 1);
    EXPECT_EQ(replace(u"contoso & ", u"Lit\nware & "), 1);
    EXPECT_EQ(replace(u"fabrikam", u"x"), 0);
    EXPECT_EQ(replace(u"ware & sons\rOTHER", u"end"), 1);
    engine.xPresentation->Save();

    EXPECT_EQ(box.Text(), u"Lit\rend");
}

TEST(TextWalkOverRuns, RemovesLineBreaksButSkipsNeighbours)
{
    const TextBoxOnDisk box(P(R("a") + Br + Br + R("b") + Br + R("c")));

    EXPECT_EQ(box.ReplaceAll(u"\v", u""), 2);

    EXPECT_EQ(box.Text(), u"a\vbc");
}

}  // namespace
}  // namespace tessarine::test
