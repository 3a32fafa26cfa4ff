#include <gmock/gmock.h>

#include "BinaryOnDisk.h"

/// Addresses of links and sources of linked objects in binary presentations, some with the text that is sought and some
/// without.
namespace tessarine::test::ppt
{
namespace
{

using testing::ElementsAre;
using testing::IsSupersetOf;

/// A title and two linked objects, one of which names a cat.
BinaryDeck OfTwoSources()
{
    return BinaryDeck().Slide(Title(u"a cat"), LinkedOle(u"C:\\cat.xlsx", u"Sheet1!R1C1"),
                              LinkedOle(u"C:\\other.xlsx", u"Sheet1!R1C1"));
}

TEST(BinaryAddresses, WithoutTheTextComeBackAsTheyWere)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(AutoShape(1, u"a").Click(LinkTo(u"http://cat.example/?a=b&c=%20#d")),
                                       AutoShape(1, u"b").Click(LinkToFile(u"C:\\cats and dogs.doc")))
                                .Slide(AutoShape(1, u"c").Click(LinkToSlide(1))));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::HyperlinkAddresses, u"lion", u"tiger"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryAddresses, WithoutTheTextAddNothingToOthers)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(AutoShape(1, u"a").Click(LinkTo(u"http://none.example/")),
                                       AutoShape(1, u"b").Click(LinkTo(u"http://cat.example/cat")))
                                .Slide(AutoShape(1, u"c").Click(LinkTo(u"http://nothing.example/"))));

    EXPECT_EQ(deck.Replace(Location::HyperlinkAddresses, u"cat", u"dog"), 2);

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://none.example/", "http://dog.example/dog"));
    EXPECT_THAT(AddressesOf(*deck.Open(), 2), ElementsAre("http://nothing.example/"));
}

TEST(BinaryAddresses, ThatShareATargetAreEachReplaced)
{
    const Link link = LinkTo(u"http://cat.example/").Shared();
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(AutoShape(1, u"a").Click(link), AutoShape(1, u"b").Click(link))
                                .Slide(TextBox(u"c").Click(link)));

    EXPECT_EQ(deck.Replace(Location::HyperlinkAddresses, u"cat", u"wild cat"), 3);

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://wild cat.example/", "http://wild cat.example/"));
    EXPECT_THAT(AddressesOf(*deck.Open(), 2), ElementsAre("http://wild cat.example/"));
}

TEST(BinarySources, AreFoundAndLeftAlone)
{
    const BinaryOnDisk deck(OfTwoSources());
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Find(Location::Links, u"cat"), 1);
    EXPECT_EQ(deck.Find(Location::Links, u"sheet1"), 2);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinarySources, WithoutTheTextComeBackAndLetTheFileBeSaved)
{
    const BinaryOnDisk deck(OfTwoSources());

    const BinaryOutcome outcome = deck.Process({{u"a cat", u"a dog", {Location::Slides, Location::Links}}});

    EXPECT_EQ(outcome.failure.number, 0);
    EXPECT_EQ(outcome.Count(Location::Slides), 1);
    EXPECT_EQ(outcome.Count(Location::Links), 0);
    EXPECT_THAT(deck.Texts(),
                IsSupersetOf({"slide 1 shape 1 (14): a dog", "slide 1 shape 2 source: C:\\cat.xlsx!Sheet1!R1C1",
                              "slide 1 shape 3 source: C:\\other.xlsx!Sheet1!R1C1"}));
}

TEST(BinarySources, WithTheTextEndTheFileWhichStaysAsItWas)
{
    const BinaryOnDisk deck(OfTwoSources());
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", {Location::Slides, Location::Links}}});

    EXPECT_THAT(outcome.failure, FailsWith(FailureNumber::Unspecified, "can't be changed in a binary presentation"));
    EXPECT_THAT(outcome.failure.text, testing::HasSubstr("in procedure olelinks at Line No. "));
    EXPECT_EQ(outcome.results, nullptr);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinarySources, OfEmbeddedObjectsAndLinkedPicturesAreNone)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(EmbeddedOle(u"cat.8"), LinkedPicture(u"C:\\cat.png"),
                                               Movie(u"C:\\cat.avi"), Title(u"a cat")));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::Links, u"cat", u"dog"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

}  // namespace
}  // namespace tessarine::test::ppt
