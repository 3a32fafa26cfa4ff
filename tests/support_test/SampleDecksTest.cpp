#include "support/SampleDecks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/BinaryReader.h"
#include "support/PackageReader.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{
namespace
{

TEST(SampleDecks, AreValidAndAllButOneMentionFabrikam)
{
    int mentions = 0;
    for (const SampleDeck& sample : SampleDecks()) {
        const PackageReader package = sample.deck;
        EXPECT_THAT(ValidityFaults(package), testing::IsEmpty()) << sample.path;
        for (const String& text : TextsOf(package, 1))
            mentions += text.find(u"Fabrikam") != String::npos ? 1 : 0;
    }

    EXPECT_EQ(SampleDecks().size(), 7U);
    EXPECT_EQ(mentions, 6);
}

TEST(SampleDecks, HaveABinaryOneThatMentionsFabrikam)
{
    const auto decks = BinarySampleDecks();

    ASSERT_EQ(decks.size(), 1U);
    const std::string file = decks.front().deck.Bytes();
    EXPECT_THAT(ppt::TextsOf(file, 1), testing::Contains(u"Fabrikam offer, 2003"));
    for (const std::string& slide : ppt::SlidesOf(file))
        EXPECT_THAT(ppt::TextFaults(slide), testing::IsEmpty());
}

TEST(SampleDecks, LieInFoldersWithBlanksAndUmlauts)
{
    const TemporaryFolder temporary;
    const std::filesystem::path folder = std::filesystem::path(ToUtf8(temporary.Path())) / "sample decks";

    WriteSampleDecks(folder);

    EXPECT_TRUE(std::filesystem::exists(folder / "Archive" / "Offer 2003.ppt"));
    EXPECT_TRUE(std::filesystem::exists(folder / u"Kunden und Märkte" / u"Angebot für Müller & Söhne.pptx"));
    EXPECT_EQ(TextOf(PackageReader::FromFile(folder / "Fire drill.pptx"), 1, 1), u"Fire drill");
}

}  // namespace
}  // namespace tessarine::test
