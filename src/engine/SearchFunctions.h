#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "engine/CounterStatuses.h"
#include "engine/Hit.h"
#include "model/FindAndReplaceItems.h"
#include "model/PowerPoint.h"
#include "platform/Failure.h"
#include "platform/String.h"

namespace tessarine
{

class TextHits;
struct ShapeRule;

/// Looks for pairs in one open presentation, location by location. One engine serves all files of a run.
///
/// Three treatments of failures:
/// - The matchers (SearchFunction, FindandReplace, ReplaceWord, ReplaceWord1) and UpdateISO9001Version log one line and
///   give what their comment says.
/// - The locations and ProcessFile raise the same number again, with their own name as source and the common text as
///   description, so that the texts nest.
/// - Footer and BuiltinProperties pass over failures from a point on, which their comments tell.
///
/// A null reference met on the way is the failure ObjectNotSet, a total beyond 32 bits Overflow. The walks keep their
/// place in members: no operation may be entered while another one runs, also not from an event that Yield delivers.
class SearchFunctions
{
public:
    std::shared_ptr<powerpoint::Presentation> xPresentation;  ///< The open presentation. Set by the run for each file.
    std::shared_ptr<FindAndReplaceItem> mItem;                ///< The pair looked for. ProcessFile moves it.
    std::shared_ptr<FindAndReplaceItems> mItems;              ///< The pairs that ProcessFile walks. Set by the run.
    std::int32_t mCounter = 0;                                ///< Scratch counter of some locations.
    bool mIsFindOnly = false;                                 ///< Copy of the project's IsFindOnly.
    bool IsRequiredCount = false;  ///< Copy of RequiredFindAndReplaceCount: off, a find stops at the first hit.
    bool mCPUUsage = false;        ///< Copy of CPUUsage: each Yield sleeps.
    bool mIsDryRun = false;        ///< Copy of the project's IsDryRun: a replace run saves nothing.

    /// Copy of the project's PairBegins.
    std::function<void(std::int32_t number, const FindAndReplaceItem& pair)> PairBegins;
    HitReceiver HitFound;                 ///< Copy of the project's HitFound. A failure of it is a warning.
    std::function<bool()> WantsWholeHit;  ///< Copy of the project's WantsWholeHit.
    std::int32_t HitContext = 0;          ///< Copy of the project's HitContext.

    std::shared_ptr<powerpoint::Slide> CurrentSlide;  ///< Where a walk stands; null after its end.
    std::shared_ptr<powerpoint::Shape> CurrentShape;  ///< Where the walk over the shapes stands.
    std::int32_t MatchCaseFlag = 0;   ///< 1 when the pair's MatchCase is on, else 0. Set by ProcessFile.
    std::int32_t WholeWordsFlag = 0;  ///< 1 when the pair's MatchWholeWord is on, else 0. Set by ProcessFile.

    /// Finds, or in a replace run replaces, mItem in a text range and gives the number of occurrences handled. A find
    /// with IsRequiredCount off stops at the first; a replace always goes on to the end, and does not end by itself
    /// when the replacement holds the find text elsewhere than at its start. 0 after a failure; replacements made until
    /// then stay.
    std::int32_t SearchFunction(const std::shared_ptr<powerpoint::TextRange>& textRange);

    /// `vText` with the occurrences of the pair replaced; `vFindCount` becomes their number, -1 for none. Whole words
    /// by WholeWordsFlag, case by the pair. With `vIsReplace` false the find text itself is put in. Empty after a
    /// failure, with `vFindCount` as it was then.
    String FindandReplace(std::int32_t& vFindCount, const std::shared_ptr<FindAndReplaceItem>& vItem,
                          const String& vText, bool vIsReplace);

    /// Replaces whole words: hits that no letter A to Z touches. `Start` is a position from 1 (UTF-16 units), `Count`
    /// the number of replacements to stop at (-1 for all), `Compare` 0 for exact, otherwise without regard to case.
    /// `FindAndReplaceCount` is written only when something was replaced. An empty `Find` gives an empty text; a later
    /// failure the text as far as it had got.
    String ReplaceWord(const String& Source, const String& Find, const String& ReplaceStr, std::int32_t Start,
                       const std::int32_t& Count, const std::int32_t& Compare, std::int32_t& FindAndReplaceCount);

    /// Replaces every occurrence; `Start` and `Count` are ignored. `FindAndReplaceCount` is written only when there is
    /// one, and with IsRequiredCount off it is 1 however many there are. An empty `Find` gives an empty text.
    String ReplaceWord1(const String& Source, const String& Find, const String& ReplaceStr, std::int32_t Start,
                        const std::int32_t& Count, const std::int32_t& Compare, std::int32_t& FindAndReplaceCount);

    // The locations: each searches mItem in xPresentation and gives its count.

    std::int32_t Slides();             ///< Placeholders of the slides.
    std::int32_t Hyperlinks();         ///< Addresses; in a replace run each is written back, found or not.
    std::int32_t ShapeAndTextboxes();  ///< Shapes and text boxes of the slides.
    std::int32_t Header();             ///< Nothing: 0 at once.

    /// Footers of the slides up to the first one that can be read, which is rewritten in a replace run but not counted:
    /// 0 in all ordinary cases. Raises only for the slides and the first slide's footer object.
    std::int32_t Footer();
    std::int32_t Notes();                        ///< Shapes of the notes pages.
    std::int32_t SlidesMasterPerSlide();         ///< Slide masters of the designs in use, each name once.
    std::int32_t SlidesMasterPerPresentation();  ///< Slide masters of all designs.
    std::int32_t TitleMaster();                  ///< Title masters of the designs that have one.
    std::int32_t NotesMaster();                  ///< Shapes, header and footer of the notes master.

    /// Shapes of the handout master; header and footer of the notes master, unless InNotesMaster of the pair is on.
    std::int32_t HandoutMaster();

    /// All built-in properties. From the first property on failures are passed over: one that can't be read repeats the
    /// count of the one before.
    std::int32_t BuiltinProperties();
    std::int32_t CustomProperties();  ///< Finds or replaces by the mode of the pair's own project.
    std::int32_t olelinks();          ///< Sources of linked OLE objects; updates the links after a replacement.

    /// Adds a number to every custom property of a name (case ignored), where both are numeric; otherwise writes the
    /// value back as it was. A failure ends the update.
    void UpdateISO9001Version(const String& vRevisionProperty, const String& vRevisionDocumentPropertyIncrimentedBy);

    /// Takes all pairs through the locations that their options switch on, saves the presentation in a replace run that
    /// is no dry run, and closes it. `path` is for warnings; the other arguments are accepted and not used. A failure
    /// leaves the presentation open and unsaved.
    std::shared_ptr<CounterStatuses> ProcessFile(const String& path, const String& vPassword,
                                                 const std::shared_ptr<OptionSetting>& vOptionSetting);

    /// The step of every loop: delivers pending events, with mCPUUsage on after a sleep of 1 millisecond.
    void Yield();

private:
    /// A page with shapes: what warnings call it, and where the page has one the slide's number and the name of the
    /// design.
    struct Page {
        StringView name;
        std::int32_t slide = 0;
        StringView design = {};
    };

    // one collection, by a location's rule; a shape whose text fails is a warning
    void SearchShapes(const std::shared_ptr<powerpoint::Shapes>& shapes, const ShapeRule& rule, Page page,
                      std::int32_t& total);
    void WarnOfShape(Page page, std::int32_t shape, const String& what) const;
    // whether a deletion has left occurrences, as it does where one follows right after another, and that is known
    bool LeavesNeighbours(powerpoint::TextRange& text) const;
    std::int32_t SearchText(powerpoint::TextRange* textRange, TextHits* hits);  // SearchFunction; null to tell nobody
    std::int32_t SearchShapesOfSlides(const ShapeRule& rule);                   // all slides, by a location's rule
    void SearchHeaderAndFooterOfNotesMaster(std::int32_t& total);
    void ProcessItem(CounterStatus& status, std::int32_t& runningCount);  // one pair through its locations

    void TellHit(const Hit& hit);
    bool IsNextHitWhole() const { return !WantsWholeHit || WantsWholeHit(); }
    HitPlace PlaceOfPair() const;                                // without what only a location knows
    HitPlace PlaceOnSlide(std::int32_t slide) const;             // that is CurrentSlide
    HitPlace PlaceOfShape(Page page, std::int32_t shape) const;  // that is CurrentShape
    HitPlace PlaceOfProperty(powerpoint::DocumentProperty& property) const;
    String NameForHits(powerpoint::Design& design) const;  // empty when nobody is told of hits

    /// Tells the hits of the last FindandReplace, in a plain value that was put back by now: `place` gives where it is,
    /// `put` is what was put there, `read` reads it again.
    template <class Place, class Read>
    void TellValueHits(const String& value, const String& put, Place&& place, Read&& read, bool isCounted = true)
    {
        if (HitFound && !valueHits_.empty())
            TellHitsInValue(value, put, place, read, isCounted);
    }
    void TellHitsInValue(const String& value, const String& put, const std::function<HitPlace()>& place,
                         const std::function<String()>& read, bool isCounted);

    // Of the last FindandReplace: positions from 0, none when nobody is told; units of each; what they become.
    std::vector<std::size_t> valueHits_;
    std::size_t valueHitLength_ = 0;
    String valueReplacement_;
    Location location_ = Location::Slides;  // that is searched
    std::int32_t pairNumber_ = 0;           // of mItem in mItems, from 1

    String path_;                         // of the file that ProcessFile is at
    bool isHitLost_ = false;              // whether the receiver failed for that file, which is told once
    std::optional<Failure> textFailure_;  // of the last SearchFunction
};

}  // namespace tessarine
