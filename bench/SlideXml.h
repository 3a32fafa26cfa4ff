#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace tessarine::bench
{

/// The text that the benchmarks find and replace, and a replacement of another length.
inline constexpr char16_t SoughtText[] = u"Fabrikam";
inline constexpr char16_t NewText[] = u"Contoso Ltd";

/// True for the slides, counted from 1, that hold the sought text: every third, as when a company's name stands on
/// the title and here and there in a deck.
constexpr bool SlideHasHits(int slide)
{
    return slide % 3 == 1;
}

/// True for the slides that have a notes page, three of five; of these pages those with SlideHasHits have a hit too.
constexpr bool SlideHasNotes(int slide)
{
    return slide % 5 != 2 && slide % 5 != 4;
}

/// Writes slides and notes pages like those that people make: the same seed gives the same bytes.
///
/// The shape follows 45 published decks of five slides or more, 1165 slides and 702 notes pages:
///   - bytes of a slide part: first quartile 2.7 KB, median 6.6 KB, third quartile 14 KB; packed median 1.3 KB
///   - paragraphs on a slide: first decile 2, median 8, ninth decile 24; 40 characters each
///   - 24 % of the paragraphs are split into runs, 1.9 runs a paragraph on average
///   - bytes of a notes page: median 2.9 KB
/// 30 % of the hits lie across two runs, as editing and spell-checking leave them.
class SlideXml
{
public:
    explicit SlideXml(std::uint64_t seed);

    std::string Slide(bool withHits);
    std::string NotesPage(int slide, bool withHits);

private:
    std::uint64_t Below(std::uint64_t bound) { return random_() % bound; }

    std::string Words(std::uint64_t count);
    void AppendParagraph(std::string& xml, const std::string& properties, const std::string& runProperties,
                         bool withHit);
    void AppendRun(std::string& xml, const std::string& runProperties, const std::string& text);
    void AppendHit(std::string& xml, const std::string& runProperties);
    void AppendShape(std::string& xml, const std::string& name, const std::string& placeholder,
                     std::uint64_t paragraphs, std::uint64_t hits);

    std::mt19937_64 random_;
    std::vector<std::string> vocabulary_;
    int nextShapeId_ = 0;
};

}  // namespace tessarine::bench
