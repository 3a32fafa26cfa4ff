#include "batch/ReportedRun.h"

#include <algorithm>
#include <utility>

#include "engine/CounterStatuses.h"
#include "model/Project.h"
#include "platform/Treatments.h"

namespace tessarine::batch
{

namespace
{

/// Lets a run save what it changes for as long as it lives. A run that ends early would leave the project that way.
class SavingWhile
{
public:
    SavingWhile(Project& project, bool saves) : project_(project) { project_.options->IsFindOnly = !saves; }
    ~SavingWhile() { project_.options->IsFindOnly = true; }
    SavingWhile(const SavingWhile&) = delete;
    SavingWhile& operator=(const SavingWhile&) = delete;

private:
    Project& project_;
};

}  // namespace

ReportedRun::ReportedRun(Project& project, Mode mode, Sink sink)
    : project_(project), mode_(mode), sink_(std::move(sink))
{
    // An event has no way to take a receiver back.
    const std::weak_ptr<void> alive = alive_;
    project_.BeforFileProcess += [this, alive](const String& path) {
        if (!alive.expired())
            OnBefore(path);
    };
    project_.AfterFileProcess += [this, alive](const std::shared_ptr<CounterStatuses>& result) {
        if (!alive.expired())
            OnAfter(result);
    };
    project_.ProcessCancel += [this, alive] {
        if (!alive.expired())
            OnCancel();
    };
    project_.FailurePassedOver = [this](const String&, const Failure& failure) { OnPassedOver(failure); };
}

ReportedRun::~ReportedRun()
{
    project_.FailurePassedOver = {};
}

std::size_t ReportedRun::Run(const std::vector<JobFile>& files)
{
    files_ = &files;
    ReportRefused();
    while (reported_ < files.size() && !cancelled_)
        TakeTurn();
    return files.size() - reported_;
}

void ReportedRun::TakeTurn()
{
    std::vector<std::size_t> turn;
    for (std::size_t at = reported_; at < files_->size() && turn.size() < FilesPerTurn; ++at) {
        if ((*files_)[at].refusal.empty())
            turn.push_back(at);
    }

    const std::size_t before = reported_;
    SearchThrough(turn);
    // A run that reaches no file at all would reach none the next time either.
    if (reported_ == before && !cancelled_)
        FailAllLeft(ReasonForCurrent());
}

void ReportedRun::SearchThrough(const std::vector<std::size_t>& turn)
{
    turn_ = &turn;
    position_ = 0;
    current_.reset();
    beginsAnew_ = false;
    passedOver_.reset();
    ended_.reset();
    results_ = {};
    project_.IsProcessCancel = false;
    project_.FilesToProcess.clear();
    for (const std::size_t at : turn)
        project_.FilesToProcess.push_back((*files_)[at].path);

    const SavingWhile saving(project_, mode_ == Mode::Replace);
    try {
        project_.Search(List);
    } catch (...) {
        ended_ = CurrentFailure();
        LogFailure({u"SearchThrough", u"Class ReportedRun"}, *ended_);
        project_.UnloadPowerPoint();  // the end steps of the run were left out
    }
    if (current_)
        ReportCurrent(FailedFile((*files_)[*current_].path, ReasonForCurrent()));
    project_.IsProcessCancel = false;
}

void ReportedRun::OnBefore(const String& path)
{
    if (beginsAnew_)
        return;  // our own cancel: the file belongs to the next turn
    if (current_)
        ReportCurrent(FailedFile((*files_)[*current_].path, ReasonForCurrent()));

    const auto named = std::find_if(turn_->begin() + position_, turn_->end(),
                                    [&](std::size_t at) { return (*files_)[at].path == path; });
    if (named == turn_->end())
        return;
    for (; turn_->begin() + position_ != named; ++position_)  // the run went past them without a word
        ReportCurrent(FailedFile((*files_)[(*turn_)[static_cast<std::size_t>(position_)]].path, ReasonForCurrent()));

    current_ = *named;
    ++position_;
    passedOver_.reset();
    if (CancelRequested && CancelRequested())
        project_.IsProcessCancel = true;
    else if (Started)
        Started(path);
}

void ReportedRun::OnAfter(const std::shared_ptr<CounterStatuses>& result)
{
    if (!current_)
        return;  // the set-up failed: the run raises this event without having named a file

    const bool lost = !results_.Take(result);
    if (lost || passedOver_) {
        beginsAnew_ = true;
        project_.IsProcessCancel = true;
    }
    const String& path = (*files_)[*current_].path;
    ReportCurrent(lost ? FailedFile(path, ReasonForCurrent()) : ReportOf(path, *result));
}

void ReportedRun::OnCancel()
{
    current_.reset();
    cancelled_ = !beginsAnew_;
}

void ReportedRun::OnPassedOver(const Failure& failure)
{
    if (!passedOver_)
        passedOver_ = failure;  // the first one is the cause, the others follow from it
}

void ReportedRun::ReportCurrent(const FileReport& report)
{
    current_.reset();
    ++reported_;
    sink_(report);
    ReportRefused();
}

void ReportedRun::ReportRefused()
{
    for (; reported_ < files_->size() && !(*files_)[reported_].refusal.empty(); ++reported_)
        sink_(FailedFile((*files_)[reported_].path, (*files_)[reported_].refusal));
}

void ReportedRun::FailAllLeft(const String& reason)
{
    for (; reported_ < files_->size(); ++reported_) {
        const JobFile& file = (*files_)[reported_];
        sink_(FailedFile(file.path, file.refusal.empty() ? reason : file.refusal));
    }
}

String ReportedRun::ReasonForCurrent() const
{
    if (passedOver_)
        return passedOver_->Reason();
    if (ended_)
        return ended_->Reason();
    return u"The file could not be processed.";
}

}  // namespace tessarine::batch
