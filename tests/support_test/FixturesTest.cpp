#include "support/Fixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "support/PackageCompare.h"

namespace tessarine::test::fixtures
{
namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string CompoundFileStart = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

/// The name of a stream as a compound file's directory holds it.
std::string DirectoryName(std::string_view name)
{
    std::string units;
    for (const char c : name)
        units.append(1, c).append(1, '\0');
    return units;
}

class ReadableDeck : public testing::TestWithParam<NamedDeck>
{
};

TEST_P(ReadableDeck, OpensAndMentionsFabrikam)
{
    const PackageReader package = GetParam().deck;

    std::string all;
    for (const PackageEntry& entry : package.Entries())
        all += entry.bytes;

    EXPECT_THAT(package.SlideParts(), testing::Not(IsEmpty()));
    EXPECT_NO_THROW(TextsOf(package, static_cast<int>(package.SlideParts().size())));
    EXPECT_THAT(all, HasSubstr("abrikam"));
    EXPECT_TRUE(SameBytes(package, GetParam().deck));
}

TEST_P(ReadableDeck, IsValidUnlessItsPointIsAFault)
{
    const std::vector<std::string> faults = ValidityFaults(GetParam().deck);

    if (GetParam().name == "NullRelationships")
        EXPECT_THAT(faults, testing::AllOf(SizeIs(3), testing::Each(HasSubstr("NULL"))));
    else if (GetParam().name == "DuplicateSlide")
        EXPECT_THAT(faults, testing::ElementsAre("a name stands twice in the directory"));
    else
        EXPECT_THAT(faults, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ReadableDeck, testing::ValuesIn(ReadableDecks()),
                         [](const auto& each) { return each.param.name; });

TEST(Fixtures, TellTheirStory)
{
    EXPECT_THAT(TextsOf(Runs(), 1), Contains(u"Fabrikam GmbH "));
    EXPECT_THAT(RunsOf(Runs(), 1), SizeIs(6));
    EXPECT_TRUE(TextOf(Breaks(), 1, 2).starts_with(u"Fab\vrikam\r\r\tFabrikam\t\rSlide 1 of Fabrikam on 5/6/2024"));
    EXPECT_THAT(TextsOf(DuplicateSlide(), 1), testing::ElementsAre(u"Fabrikam"));
    EXPECT_THAT(TextsOf(RenamedMainPart(), 1), testing::ElementsAre(u"Fabrikam"));
    EXPECT_THAT(TextsOf(Footers(), 3), Contains(u"Fabrikam 2025"));
    EXPECT_THAT(LinksOf(Links(), 2), SizeIs(12));
    EXPECT_THAT(OleLinksOf(Ole(), 1), SizeIs(2));
    EXPECT_EQ(CustomProperty(CustomProperties(), u"Revision"), (CustomValue{"i4", u"3"}));
    EXPECT_EQ(AppProperty(AllProperties(), "TotalTime"), u"12");
}

TEST(Fixtures, OfCompoundFilesHaveTheStreamsOfTheirKind)
{
    for (const std::string& bytes : {EncryptedAgile(), EncryptedStandard()}) {
        EXPECT_THAT(bytes, StartsWith(CompoundFileStart));
        EXPECT_THAT(bytes, HasSubstr(DirectoryName("EncryptionInfo")));
        EXPECT_THAT(bytes, HasSubstr(DirectoryName("EncryptedPackage")));
        EXPECT_THAT(bytes, HasSubstr(DirectoryName("\x06"
                                                   "DataSpaces")));
    }
    EXPECT_THAT(LegacyPresentation(), HasSubstr(DirectoryName("PowerPoint Document")));
    EXPECT_THAT(OtherCompoundFile(), testing::Not(HasSubstr(DirectoryName("PowerPoint Document"))));
}

TEST(Fixtures, OfBrokenPackagesAreBrokenInTheirWay)
{
    for (const std::string& bytes : {TruncatedPackage(), PackageWithWrongCrc(), EmptyFile(), TextFile()})
        EXPECT_THROW(PackageReader{bytes}, std::runtime_error);
    EXPECT_THROW(TextsOf(PackageWithMissingSlide(), 2), std::runtime_error);
    EXPECT_THROW(TextsOf(PackageWithBrokenXml(), 1), std::runtime_error);
    EXPECT_THAT(ValidityFaults(Workbook()), IsEmpty());
}

TEST(Fixtures, StandInTheirListsOnce)
{
    std::set<std::string> names;
    for (const NamedDeck& each : ReadableDecks())
        EXPECT_TRUE(names.insert(each.name).second) << each.name;
    for (const NamedFile& each : UnreadableFiles())
        EXPECT_TRUE(names.insert(each.name).second) << each.name;
}

}  // namespace
}  // namespace tessarine::test::fixtures
