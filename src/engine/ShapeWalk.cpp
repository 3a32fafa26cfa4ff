#include "engine/SearchFunctions.h"

#include "engine/ShapeRule.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"

namespace tessarine
{

void SearchFunctions::SearchShapes(const std::shared_ptr<powerpoint::Shapes>& shapes, const ShapeRule& rule,
                                   std::int32_t& total)
{
    // Where nothing can be found there is nothing to wait for either: one delivery of events stands for the walk. A run
    // that is to spare the processor keeps its pace.
    if (!mCPUUsage && !NotNull(shapes)->MayHoldText(NotNull(mItem)->FindWhat)) {
        DeliverPendingEvents();
        return;
    }
    const auto walk = NotNull(shapes)->NewEnum();
    while ((CurrentShape = walk->Next())) {
        if (rule.AcceptsType(CurrentShape->Type()) && rule.AcceptsTextFrame(CurrentShape->HasTextFrame()))
            total = CheckedSum(total, SearchFunction(NotNull(CurrentShape->TextFrame())->TextRange()));
        if (rule.between == ShapeRule::Between::Yield)
            Yield();
        else
            DeliverPendingEvents();
    }
}

}  // namespace tessarine
