#include <filesystem>

#include "DeckOnDisk.h"

// On Windows a deck that is open can't be deleted; it may be renamed (SaveTest.cpp).

namespace tessarine::test
{
namespace
{

TEST(DeckThatVanished, WithItsFolderFailsItsSave)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"Fabrikam")));
    const String path = deck.Folder().Write(u"gone/deck.pptx", deck.Bytes());
    const auto presentation = deck.Open(path);
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");
    std::filesystem::remove_all(ToUtf8(deck.Folder().PathOf(u"gone")));

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }), FailsWith(FailureNumber::SystemPathNotFound, "gone"));
}

TEST(DeckThatVanished, FailsItsSave)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"Fabrikam")));
    const auto presentation = deck.Open();
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");
    std::filesystem::remove(ToUtf8(deck.Path()));

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }),
                FailsWith(FailureNumber::SystemFileNotFound, ToUtf8(deck.Path())));
}

}  // namespace
}  // namespace tessarine::test
