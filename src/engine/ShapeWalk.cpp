#include "engine/SearchFunctions.h"

#include <string>

#include "engine/ShapeRule.h"
#include "engine/TextHits.h"
#include "log/Treatments.h"
#include "log/Warnings.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"

namespace tessarine
{

void SearchFunctions::SearchShapes(const std::shared_ptr<powerpoint::Shapes>& shapes, const ShapeRule& rule, Page page,
                                   std::int32_t& total)
{
    // Where nothing can be found there is nothing to wait for either: one delivery of events stands for the walk. A run
    // that is to spare the processor keeps its pace.
    if (!mCPUUsage && !NotNull(shapes)->MayHoldText(NotNull(mItem)->FindWhat)) {
        DeliverPendingEvents();
        return;
    }
    const auto walk = NotNull(shapes)->NewEnum();
    std::int32_t number = 0;
    while ((CurrentShape = walk->Next())) {
        ++number;
        if (rule.AcceptsType(CurrentShape->Type()) && rule.AcceptsTextFrame(CurrentShape->HasTextFrame())) {
            const auto text = NotNull(CurrentShape->TextFrame())->TextRange();
            std::optional<TextHits> hits;
            if (HitFound)
                hits.emplace(TextHits::Port{
                    [this](const Hit& hit) { TellHit(hit); }, [this] { return IsNextHitWhole(); },
                    [&] { return PlaceOfShape(page, number); }, [this] { return PlaceOfPair(); }, HitContext});
            const std::int32_t count = SearchText(text.get(), hits ? &*hits : nullptr);
            total = CheckedSum(total, count);
            if (textFailure_)
                WarnOfShape(page, number,
                            (mIsFindOnly ? u"its text could not be searched: "
                                         : u"its text could not be changed completely: ") +
                                textFailure_->Reason());
            else if (count > 0 && LeavesNeighbours(*text))
                WarnOfShape(page, number, u"still holds the text, which stood there twice in a row; run it again");
        }
        if (rule.between == ShapeRule::Between::Yield)
            Yield();
        else
            DeliverPendingEvents();
    }
}

bool SearchFunctions::LeavesNeighbours(powerpoint::TextRange& text) const
{
    bool isFound = false;
    // Nothing else leaves an occurrence that was there: the walk goes on one character after the start of a new text.
    if (!mIsFindOnly && NotNull(mItem)->ReplaceWith.empty())
        Skip([&] { isFound = text.IsKnownToHold(mItem->FindWhat, MatchCaseFlag, WholeWordsFlag); });
    return isFound;
}

void SearchFunctions::WarnOfShape(Page page, std::int32_t shape, const String& what) const
{
    String where(page.name);
    if (page.slide > 0)
        where += u' ' + NumeralOf(page.slide);
    where += u", shape " + NumeralOf(shape);
    // A page that fails may fail to tell the name, too.
    String name;
    Skip([&] { name = NotNull(CurrentShape)->Name(); });
    if (!name.empty())
        where += u' ' + QuotedName(name);
    Warn(path_, where + u": " + what);
}

}  // namespace tessarine
