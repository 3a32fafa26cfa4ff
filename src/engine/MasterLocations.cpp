#include "engine/SearchFunctions.h"

#include <unordered_set>

#include "engine/SearchPlace.h"
#include "engine/ShapeRule.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

using Types = ShapeRule::Types;
using TextFrame = ShapeRule::TextFrame;
using Between = ShapeRule::Between;

constexpr Types allTypes = Types::AutoShapeTextBoxAndPlaceholder;
constexpr ShapeRule notesMasterRule{allTypes, TextFrame::OneOrMinusOne, Between::DeliverEvents};
constexpr ShapeRule handoutMasterRule{allTypes, TextFrame::AnythingButZero, Between::DeliverEvents};
constexpr ShapeRule titleMasterRule{allTypes, TextFrame::AnythingButZero, Between::Yield};
constexpr ShapeRule perSlideRule{allTypes, TextFrame::AnythingButZero, Between::Yield};
constexpr ShapeRule perPresentationRule{allTypes, TextFrame::OneOrMinusOne, Between::Yield};

/// The names of the designs that a walk over the slides has met.
class DesignNames
{
public:
    /// False when the name has been met. At the start the list holds one empty entry, so that a first design without a
    /// name counts as met; the first name takes that entry's place. Kept, because it decides which masters old jobs
    /// change.
    bool Add(const String& name)
    {
        if (names_.contains(name))
            return false;
        if (nextIndex_ == 0)
            names_.clear();
        names_.insert(name);
        nextIndex_ = CheckedSum(nextIndex_, 1);
        return true;
    }

private:
    std::unordered_set<String> names_{String()};
    std::int16_t nextIndex_ = 0;
};

}  // namespace

std::int32_t SearchFunctions::SlidesMasterPerSlide()
{
    return RaiseOn(u"SlidesMasterPerSlide", u"SlidesMasterPerSlide ", SearchPlace, [&] {
        mCounter = 0;
        std::int32_t total = 0;
        DesignNames designNames;
        const auto walk = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        while ((CurrentSlide = walk->Next())) {
            const String name = NotNull(CurrentSlide->Design())->Name();
            if (designNames.Add(name))
                SearchShapes(NotNull(NotNull(CurrentSlide->Design())->SlideMaster())->Shapes(), perSlideRule,
                             {u"a slide master", 0, name}, total);
        }
        return total;
    });
}

std::int32_t SearchFunctions::SlidesMasterPerPresentation()
{
    return RaiseOn(u"SlidesMasterPerPresentation", u"SlidesMasterPerPresentation ", SearchPlace, [&] {
        mCounter = 0;
        std::int32_t total = 0;
        const auto walk = NotNull(NotNull(xPresentation)->Designs())->NewEnum();
        while (const auto design = walk->Next())
            SearchShapes(NotNull(design->SlideMaster())->Shapes(), perPresentationRule,
                         {u"a slide master", 0, NameForHits(*design)}, total);
        return total;
    });
}

std::int32_t SearchFunctions::TitleMaster()
{
    return RaiseOn(u"TitleMaster", u"TitleMaster ", SearchPlace, [&] {
        std::int32_t total = 0;
        const auto walk = NotNull(NotNull(xPresentation)->Designs())->NewEnum();
        while (const auto design = walk->Next()) {
            if (design->HasTitleMaster() != powerpoint::msoFalse)
                SearchShapes(NotNull(design->TitleMaster())->Shapes(), titleMasterRule,
                             {u"a title master", 0, NameForHits(*design)}, total);
        }
        return total;
    });
}

std::int32_t SearchFunctions::NotesMaster()
{
    return RaiseOn(u"NotesMaster", u"NotesMaster ", SearchPlace, [&] {
        std::int32_t total = 0;
        SearchShapes(NotNull(NotNull(xPresentation)->NotesMaster())->Shapes(), notesMasterRule, {u"the notes master"},
                     total);
        SearchHeaderAndFooterOfNotesMaster(total);
        return total;
    });
}

std::int32_t SearchFunctions::HandoutMaster()
{
    return RaiseOn(u"HandoutMaster", u"HandoutMaster", SearchPlace, [&] {
        std::int32_t total = 0;
        SearchShapes(NotNull(NotNull(xPresentation)->HandoutMaster())->Shapes(), handoutMasterRule,
                     {u"the handout master"}, total);
        // Header and footer are those of the notes master, so they are left to NotesMaster when that is searched too;
        // the handout master's own are never read. The help describes it so.
        if (!NotNull(NotNull(mItem)->OptionSetting)->InNotesMaster)
            SearchHeaderAndFooterOfNotesMaster(total);
        return total;
    });
}

void SearchFunctions::SearchHeaderAndFooterOfNotesMaster(std::int32_t& total)
{
    const auto headersFooters = NotNull(NotNull(NotNull(xPresentation)->NotesMaster())->HeadersFooters());
    std::int32_t count = 0;
    const auto search = [&](powerpoint::HeaderFooter& headerFooter, HitPlace::HeaderFooter kind) {
        const String value = headerFooter.Text();
        const String text = FindandReplace(count, mItem, value, true);
        // Written back whether anything was found or not, so that one that refuses the write is noticed.
        if (!mIsFindOnly)
            headerFooter.PutText(text);
        if (count != -1)
            total = CheckedSum(total, count);
        const auto place = [&] {
            HitPlace here = PlaceOfPair();
            here.headerFooter = kind;
            return here;
        };
        TellValueHits(value, text, place, [&] { return headerFooter.Text(); });
    };
    search(*NotNull(headersFooters->Header()), HitPlace::HeaderFooter::Header);
    search(*NotNull(headersFooters->Footer()), HitPlace::HeaderFooter::Footer);
}

}  // namespace tessarine
