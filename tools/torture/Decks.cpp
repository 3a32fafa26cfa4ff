#include "Scene.h"
#include "support/Deck.h"

namespace tessarine::torture
{

namespace
{

test::Deck SpeakingDeck(const std::string& text)
{
    using namespace test;
    const String said = FromUtf8(text);
    return test::Deck()
        .Slide(Title(said), Body(u"About " + said),
               TextBox(Paragraph(TextRun(said.substr(0, 3)).Bold(), TextRun(said.substr(3)))),
               NotesPage(u"Remember " + said + u"."))
        .Slide(Title(u"Figures"), Body(u"Of " + said + u" in this year"))
        .Core("dc:title", u"Review");
}

}  // namespace

std::string DeckBytes(const std::string& text, std::size_t media)
{
    auto deck = SpeakingDeck(text);
    if (media > 0)
        deck.Media("ppt/media/film1.mp4", media, 1);
    return deck.Bytes();
}

const std::vector<DeckPlan>& ManyDecks()
{
    static const std::vector<DeckPlan> decks{
        {"a.pptx", DeckBytes("Fabrikam"), 0644},
        {"b.pptx", DeckBytes("Fabrikam Ltd"), 0444},
        {"c.pptx", DeckBytes("Litware"), 0644},
        {"d.pptm", SpeakingDeck("Fabrikam").Kind(test::DeckKind::Pptm).Macros().Bytes(), 0600},
        {"large.pptx", DeckBytes("Fabrikam", 1'100'000), 0640},
    };
    return decks;
}

const std::vector<DeckPlan>& FewDecks()
{
    static const std::vector<DeckPlan> decks{ManyDecks()[0], ManyDecks()[1]};
    return decks;
}

}  // namespace tessarine::torture
