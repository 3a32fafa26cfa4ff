#include "BinaryDecks.h"

#include <array>
#include <random>
#include <vector>

#include "SlideXml.h"
#include "support/BinaryDeck.h"
#include "support/BinaryRecords.h"

namespace tessarine::bench
{

namespace
{

using namespace test::ppt;

class Writer
{
public:
    explicit Writer(std::uint64_t seed) : random_(seed) {}

    std::uint64_t Below(std::uint64_t end) { return random_() % end; }

    /// A text of so many paragraphs, a quarter of them in several runs, the first with a hit where asked for.
    Text Paragraphs(std::uint64_t count, bool withHit)
    {
        Text text;
        std::vector<int> levels;
        for (std::uint64_t i = 0; i < count; ++i) {
            text.Add(TextRun((i > 0 ? u"\r" : u"") + Words(2 + Below(7))).Size(24));
            if (Below(4) == 0)
                text.Add(TextRun(Words(1) + u" ").Bold().Language(0x0407));
            if (withHit && i == 0) {
                // 30 % of the hits lie across two runs.
                if (Below(10) < 3)
                    text.Add(TextRun(u" Fab").Italic()).Add(TextRun(u"rikam ").Size(20));
                else
                    text.Add(TextRun(u" Fabrikam "));
            }
            levels.push_back(static_cast<int>(Below(3)));
        }
        return text.Levels(std::move(levels));
    }

private:
    String Words(std::uint64_t count)
    {
        static constexpr std::array<const char16_t*, 24> syllables{
            u"re",  u"con",  u"pro", u"mar", u"ti", u"on",  u"ment", u"al", u"er", u"in",  u"ta", u"le",
            u"ver", u"sion", u"qua", u"li",  u"ty", u"bud", u"get",  u"ri", u"sk", u"pla", u"n",  u"ing"};
        String text;
        for (std::uint64_t i = 0; i < count; ++i) {
            if (i > 0)
                text += u' ';
            for (std::uint64_t length = 1 + Below(4); length > 0; --length)
                text += syllables[Below(syllables.size())];
            if (Below(60) == 0)
                text += u" \u00DCbersicht";
            if (Below(200) == 0)
                text += u" \u2013 \u20AC";
        }
        return text;
    }

    std::mt19937_64 random_;
};

std::string Noise(Writer& writer, std::size_t size)
{
    std::string noise(size, '\0');
    for (char& byte : noise)
        byte = static_cast<char>(writer.Below(256));
    return noise;
}

/// What lies in a slide beside its drawing: the nodes of its animation, and one long record, as later versions add
/// them.
SlideRecords FurtherRecords(Writer& writer)
{
    constexpr std::uint32_t timeNode = 0xF144;
    constexpr std::uint32_t timeCondition = 0xF128;
    constexpr std::uint32_t roundTrip = 0x0423;
    std::string nodes;
    for (int i = 0; i < 12; ++i)
        nodes += Container(timeNode, Atom(timeCondition, Noise(writer, 16)) + Atom(timeCondition, Noise(writer, 32)) +
                                         Container(timeNode, Atom(timeCondition, Noise(writer, 8))));
    return {Container(timeNode, nodes) + Atom(roundTrip, Noise(writer, 5'000))};
}

/// A workbook of nine kilobytes.
Shape EmbeddedWorkbook(Writer& writer)
{
    return OleObject(OleKind::Embedded, u"Excel.Sheet.8",
                     test::CompoundBuilder().Stream("Workbook", Noise(writer, 9'000)).Bytes());
}

SlideContent SlideOf(Writer& writer, int number)
{
    const bool withHits = SlideHasHits(number);
    SlideContent slide(Title(writer.Paragraphs(1, withHits)), Body(writer.Paragraphs(5, withHits)));
    for (std::uint64_t boxes = writer.Below(2) * (1 + writer.Below(8)); boxes > 0; --boxes)
        slide.Add(TextBox(writer.Paragraphs(1 + writer.Below(3), false)));
    slide.Add(Picture());
    if (number % 5 == 0)
        slide.Add(EmbeddedWorkbook(writer));
    slide.Add(FurtherRecords(writer));
    if (SlideHasNotes(number))
        slide.Add(NotesPage(writer.Paragraphs(1 + writer.Below(4), withHits)));
    return slide;
}

}  // namespace

void WriteBinaryDeck(const DeckSet& set, std::uint64_t seed, const std::filesystem::path& path)
{
    Writer writer(seed);
    BinaryDeck deck;
    for (int number = 1; number <= set.slides; ++number)
        deck.Slide(SlideOf(writer, number));
    deck.Summary(2, TextValue("Quarterly report")).WriteTo(path);
}

}  // namespace tessarine::bench
