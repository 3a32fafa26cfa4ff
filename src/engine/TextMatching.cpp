#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "engine/TextRangeWalk.h"
#include "log/Treatments.h"
#include "platform/Messages.h"

namespace tessarine
{

std::int32_t SearchFunctions::SearchFunction(const std::shared_ptr<powerpoint::TextRange>& textRange)
{
    return SearchText(textRange.get(), nullptr);
}

std::int32_t SearchFunctions::SearchText(powerpoint::TextRange* textRange, TextHits* hits)
{
    // A failure gives 0, also when occurrences had been counted before: the log has the failure, and a count that is
    // only partly true would look complete.
    textFailure_.reset();
    const std::int32_t count = LogAndReturn({u"SearchFunction", SearchPlace}, [&] {
        try {
            return mIsFindOnly ? FindInTextRange<std::int32_t>(*this, *NotNull(textRange), hits)
                               : ReplaceInTextRange<std::int32_t>(*this, *NotNull(textRange), hits);
        } catch (...) {
            textFailure_ = CurrentFailure();
            throw;
        }
    });
    // What comes after in a file that is given up would fail as well, call by call.
    if (textFailure_ && textFailure_->number == FailureNumber::GivenUp)
        throw Failure(*textFailure_);
    return count;
}

void SearchFunctions::Yield()
{
    if (mCPUUsage)
        YieldWithSleep();
    else
        DeliverPendingEvents();
}

}  // namespace tessarine
