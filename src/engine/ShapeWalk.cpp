#include "engine/SearchFunctions.h"

#include <string>

#include "engine/ShapeRule.h"
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
            total = CheckedSum(total, SearchFunction(NotNull(CurrentShape->TextFrame())->TextRange()));
            if (textFailure_)
                WarnOfShape(*textFailure_, page, number);
        }
        if (rule.between == ShapeRule::Between::Yield)
            Yield();
        else
            DeliverPendingEvents();
    }
}

void SearchFunctions::WarnOfShape(const Failure& failure, Page page, std::int32_t shape) const
{
    const auto text = [](std::int32_t number) { return u' ' + FromUtf8(std::to_string(number)); };
    String where(page.name);
    if (page.slide > 0)
        where += text(page.slide);
    where += u", shape" + text(shape);
    // A page that fails may fail to tell the name, too.
    String name;
    Skip([&] { name = NotNull(CurrentShape)->Name(); });
    if (!name.empty())
        where += u' ' + QuotedName(name);
    Warn(path_, where + u": its text could not be " + (mIsFindOnly ? u"searched: " : u"changed completely: ") +
                    failure.Reason());
}

}  // namespace tessarine
