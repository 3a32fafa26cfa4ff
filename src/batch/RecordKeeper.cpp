#include "batch/RecordKeeper.h"

#include "batch/RecordedReports.h"
#include "batch/RunRecord.h"

namespace tessarine::batch
{

bool RecordKeeper::Begins(std::size_t toDo)
{
    return Keeps([&] { record_->Begun(reports_.FileOf(toDo), reports_.ToDo()[toDo].path); });
}

void RecordKeeper::Done(std::size_t toDo, const FileReport& report)
{
    Keeps([&] { record_->Done(reports_.FileOf(toDo), report); });
}

std::optional<Failure> RecordKeeper::failure() const
{
    const std::scoped_lock guard(mutex_);
    return failure_;
}

template <class Keep>
bool RecordKeeper::Keeps(const Keep& keep)
{
    if (!record_)
        return true;
    try {
        keep();
        return true;
    } catch (...) {
        const std::scoped_lock guard(mutex_);
        if (!failure_)
            failure_ = CurrentFailure();
        return false;
    }
}

}  // namespace tessarine::batch
