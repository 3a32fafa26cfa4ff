#include <gmock/gmock.h>

#include <deque>

#include "office/builtin/matching/GroupFilter.h"
#include "platform/CaseFolding.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{
namespace
{

/// A part for a filter: counts how often its text is gathered.
struct Part {
    explicit Part(std::optional<String> text)
        : filter([this, text] {
              ++gathered;
              return text ? std::optional(FoldCaseWidely(StringView(*text))) : std::nullopt;
          })
    {
    }

    int gathered = 0;
    PartFilter filter;
};

bool MayHold(TextFilter& filter, const String& text)
{
    return filter.MayHold(SoughtText(text));
}

TEST(PartFilter, SaysYesInAnyCaseAndNoToWhatIsNotThere)
{
    Part part(u"Fabrikam GmbH");

    EXPECT_TRUE(MayHold(part.filter, u"FABRIKAM"));
    EXPECT_FALSE(MayHold(part.filter, u"Contoso"));
    EXPECT_TRUE(MayHold(part.filter, u"gmbh"));
    EXPECT_TRUE(MayHold(part.filter, u"h"));
    EXPECT_FALSE(MayHold(part.filter, u"z"));
    EXPECT_FALSE(MayHold(part.filter, u"Fabrikam Inc"));
}

TEST(PartFilter, GathersOnceWhenFirstAsked)
{
    Part part(u"Fabrikam");
    EXPECT_FALSE(part.filter.HasGathered());

    MayHold(part.filter, u"a");
    MayHold(part.filter, u"b");

    EXPECT_TRUE(part.filter.HasGathered());
    EXPECT_EQ(part.gathered, 1);
}

TEST(PartFilter, GathersNothingForATextWithControlCharacters)
{
    Part part(u"Fabrikam");

    EXPECT_TRUE(MayHold(part.filter, u"Contoso\rLtd"));
    EXPECT_EQ(part.gathered, 0);
}

TEST(PartFilter, DeclinesAPartWhoseTextCannotBeTold)
{
    Part part(std::nullopt);

    EXPECT_TRUE(MayHold(part.filter, u"Contoso"));
    EXPECT_TRUE(MayHold(part.filter, u"Fabrikam"));
    EXPECT_EQ(part.gathered, 1);
}

TEST(PartFilter, DeclinesFromAnEditOn)
{
    Part part(u"Fabrikam");
    ASSERT_FALSE(MayHold(part.filter, u"Contoso"));

    part.filter.Decline();

    EXPECT_TRUE(MayHold(part.filter, u"Contoso"));
    EXPECT_EQ(part.filter.Text(), nullptr);
}

TEST(PartFilter, NeverGathersAPartThatWasEditedBefore)
{
    Part part(u"Fabrikam");

    part.filter.Decline();

    EXPECT_TRUE(MayHold(part.filter, u"Contoso"));
    EXPECT_EQ(part.gathered, 0);
}

TEST(PartFilter, PassesOnTheFailureOfReadingAPartOnce)
{
    PartFilter filter([]() -> std::optional<String> { throw Failure(FailureNumber::FileCorrupt, u"damaged"); });

    EXPECT_THROW(MayHold(filter, u"Contoso"), Failure);
    EXPECT_TRUE(MayHold(filter, u"Contoso"));
}

TEST(PartFilter, TellsTextsOfTheSameLengthApart)
{
    Part part(u"abc");

    EXPECT_TRUE(MayHold(part.filter, u"abc"));
    EXPECT_FALSE(MayHold(part.filter, u"abd"));
    EXPECT_TRUE(MayHold(part.filter, u"ABC"));
}

/// Parts and the filter in front of them all.
class Group
{
public:
    explicit Group(const std::vector<std::optional<String>>& texts)
    {
        std::vector<PartFilter*> filters;
        for (const auto& text : texts)
            filters.push_back(&parts.emplace_back(text).filter);
        filter.emplace(std::move(filters));
    }

    std::deque<Part> parts;  // whose elements stay where they are
    std::optional<GroupFilter> filter;
};

TEST(GroupFilter, SaysYesWhenOnePartDoes)
{
    Group group({u"Fabrikam", u"Contoso"});

    for (int pair = 0; pair < 2; ++pair) {
        EXPECT_TRUE(MayHold(*group.filter, u"fabrikam"));
        EXPECT_TRUE(MayHold(*group.filter, u"CONTOSO"));
        EXPECT_FALSE(MayHold(*group.filter, u"Woodgrove"));
        EXPECT_FALSE(MayHold(*group.filter, u"Conkam"));
        EXPECT_FALSE(MayHold(*group.filter, u"kamCon"));
        EXPECT_TRUE(MayHold(*group.filter, u"a"));
        EXPECT_FALSE(MayHold(*group.filter, u"z"));
    }
}

TEST(GroupFilter, GathersNoFurtherThanTheFirstTextNeeds)
{
    Group group({u"a", u"Fabrikam", u"b"});

    EXPECT_TRUE(MayHold(*group.filter, u"Fabrikam"));

    EXPECT_FALSE(group.filter->HasGathered());
    EXPECT_EQ(group.parts[1].gathered, 1);
    EXPECT_EQ(group.parts[2].gathered, 0);
}

TEST(GroupFilter, GathersEachPartOnceForAllTexts)
{
    Group group({u"a", u"b"});

    for (const char16_t* const text : {u"Fabrikam", u"Contoso", u"Fabrikam", u"Woodgrove"})
        EXPECT_FALSE(MayHold(*group.filter, text));

    EXPECT_TRUE(group.filter->HasGathered());
    EXPECT_EQ(group.parts[0].gathered, 1);
    EXPECT_EQ(group.parts[1].gathered, 1);
}

TEST(GroupFilter, SaysYesFromTheEditOfAPartOn)
{
    Group group({u"a", u"b"});
    ASSERT_FALSE(MayHold(*group.filter, u"Fabrikam"));
    ASSERT_FALSE(MayHold(*group.filter, u"Contoso"));

    group.parts[1].filter.Decline();

    EXPECT_TRUE(MayHold(*group.filter, u"Contoso"));
    EXPECT_FALSE(MayHold(group.parts[0].filter, u"Contoso"));
}

TEST(GroupFilter, OfNoPartsDeniesEverything)
{
    Group group({});

    EXPECT_FALSE(MayHold(*group.filter, u"Fabrikam"));
    EXPECT_FALSE(MayHold(*group.filter, u"a\rb"));
    EXPECT_TRUE(group.filter->HasGathered());
}

}  // namespace
}  // namespace tessarine::builtin
