#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "engine/ShapeRule.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"

namespace tessarine
{

namespace
{

constexpr ShapeRule slidesRule{ShapeRule::Types::Placeholder, ShapeRule::TextFrame::OneOrMinusOne,
                               ShapeRule::Between::Yield};
constexpr ShapeRule shapesAndTextboxesRule{ShapeRule::Types::AutoShapeAndTextBox, ShapeRule::TextFrame::OneOrMinusOne,
                                           ShapeRule::Between::Yield};
constexpr ShapeRule notesRule{ShapeRule::Types::AutoShapeTextBoxAndPlaceholder, ShapeRule::TextFrame::OneOrMinusOne,
                              ShapeRule::Between::Yield};

}  // namespace

std::int32_t SearchFunctions::SearchShapesOfSlides(const ShapeRule& rule)
{
    std::int32_t total = 0;
    const auto slides = NotNull(NotNull(xPresentation)->Slides());
    if (!mCPUUsage && !slides->MayHoldText(NotNull(mItem)->FindWhat)) {
        DeliverPendingEvents();
        return total;
    }
    const auto walk = slides->NewEnum();
    std::int32_t number = 0;
    while ((CurrentSlide = walk->Next()))
        SearchShapes(CurrentSlide->Shapes(), rule, {u"slide", ++number}, total);
    return total;
}

std::int32_t SearchFunctions::Slides()
{
    return RaiseOn(u"Slides", u"Slides", SearchPlace, [&] {
        mCounter = 0;
        return SearchShapesOfSlides(slidesRule);
    });
}

std::int32_t SearchFunctions::ShapeAndTextboxes()
{
    return RaiseOn(u"ShapeAndTextboxes", u"ShapeAndTextboxes ", SearchPlace,
                   [&] { return SearchShapesOfSlides(shapesAndTextboxesRule); });
}

std::int32_t SearchFunctions::Notes()
{
    return RaiseOn(u"Notes", u"Notes ", SearchPlace, [&] {
        std::int32_t total = 0;
        if (!mCPUUsage && !NotNull(xPresentation)->NotesMayHoldText(NotNull(mItem)->FindWhat)) {
            DeliverPendingEvents();
            return total;
        }
        const auto walk = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        std::int32_t number = 0;
        while ((CurrentSlide = walk->Next()))
            SearchShapes(NotNull(CurrentSlide->NotesPage())->Shapes(), notesRule, {u"notes of slide", ++number}, total);
        return total;
    });
}

std::int32_t SearchFunctions::Hyperlinks()
{
    return RaiseOn(u"Hyperlinks", u"Hyperlinks", SearchPlace, [&] {
        mCounter = 0;
        std::int32_t total = 0;
        const auto slides = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        std::int32_t slide = 0;
        while ((CurrentSlide = slides->Next())) {
            ++slide;
            const auto hyperlinks = NotNull(CurrentSlide->Hyperlinks())->NewEnum();
            std::int32_t number = 0;
            while (const auto hyperlink = hyperlinks->Next()) {
                ++number;
                const String value = hyperlink->Address();
                const String address = FindandReplace(mCounter, mItem, value, true);
                // Written back whether anything was found or not, so that a link that refuses the write is noticed.
                if (!mIsFindOnly)
                    hyperlink->PutAddress(address);
                if (mCounter != -1)
                    total = CheckedSum(total, mCounter);
                const auto place = [&] {
                    HitPlace here = PlaceOnSlide(slide);
                    here.hyperlink = number;
                    return here;
                };
                TellValueHits(value, address, place, [&] { return hyperlink->Address(); });
                Yield();
            }
        }
        return total;
    });
}

// Nothing to search: a slide has no header. Those of notes and handouts are part of their masters' locations.
std::int32_t SearchFunctions::Header()
{
    return 0;
}

}  // namespace tessarine
