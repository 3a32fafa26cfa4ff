#include "batch/ReportedRun.h"

#include <utility>

#include "engine/CounterStatuses.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "report/WithoutPath.h"

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

std::size_t BytesOf(const HitPlace& place)
{
    return sizeof(HitPlace) + sizeof(char16_t) * (place.slideTitle.size() + place.design.size() +
                                                  place.property.size() + place.shapeName.size());
}

/// What a hit takes that is kept, without its place, which others share.
std::size_t BytesOf(const Hit& hit)
{
    const std::size_t becomes = hit.becomes ? hit.becomes->size() : 0;
    return sizeof(Hit) + sizeof(char16_t) * (hit.before.size() + hit.text.size() + hit.after.size() + becomes);
}

}  // namespace

ReportedRun::ReportedRun(Project& project, Mode mode, Sink sink)
    : project_(project), mode_(mode), sink_(std::move(sink))
{
    // An event has no way to take a receiver back.
    const std::weak_ptr<void> alive = alive_;
    project_.BeforFileProcess += [this, alive](const String&) {
        if (!alive.expired())
            OnBefore();
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
    project_.HitFound = {};
    project_.WantsWholeHit = {};
}

std::size_t ReportedRun::Run(const std::vector<JobFile>& files)
{
    files_ = &files;
    reported_ = 0;
    cancelled_ = false;
    if (HitsToKeep > 0) {
        project_.HitFound = [this](const Hit& hit) { OnHit(hit); };
        project_.WantsWholeHit = [this] { return KeepsMoreHits(); };
    }
    ReportRefused();
    while (reported_ < files.size() && !cancelled_) {
        TakeTurn();
        ReportRefused();  // some are left when the report of a file before them raised
    }
    return files.size() - reported_;
}

void ReportedRun::TakeTurn()
{
    turn_.clear();
    for (std::size_t at = reported_; at < files_->size() && turn_.size() < FilesPerTurn; ++at) {
        if ((*files_)[at].refusal.empty())
            turn_.push_back(at);
    }

    const std::size_t before = reported_;
    SearchThrough();
    // A run that reaches no file at all would reach none the next time either.
    if (reported_ == before && !cancelled_)
        FailUpTo(files_->size());
}

void ReportedRun::SearchThrough()
{
    current_.reset();
    beginsAnew_ = false;
    passedOver_.reset();
    ended_.reset();
    results_ = {};
    project_.IsProcessCancel = false;
    project_.FilesToProcess.clear();
    for (const std::size_t at : turn_)
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
        FailUpTo(*current_ + 1);
    project_.IsProcessCancel = false;
}

void ReportedRun::OnBefore()
{
    const std::optional<std::size_t> file = FileInRun();
    if (!file)
        return;
    FailUpTo(*file);  // the run went past them without a word
    current_ = file;
    passedOver_.reset();
    hits_.clear();
    hitBytes_ = 0;
    hitsLeftOut_ = 0;
    if ((CancelRequested && CancelRequested()) || (Started && !Started(*file)))
        project_.IsProcessCancel = true;
}

void ReportedRun::OnAfter(const std::shared_ptr<CounterStatuses>& result)
{
    const std::optional<std::size_t> file = FileInRun();
    // The run also raises this event outside of any file, when its set-up or its end fails, and a second time for a
    // file when a receiver failed.
    if (!file || *file < reported_)
        return;
    FailUpTo(*file);

    const bool isLost = !results_.Take(result);
    if (isLost || passedOver_) {
        beginsAnew_ = true;
        project_.IsProcessCancel = true;
    }
    const String& path = (*files_)[*file].path;
    // A run has one fixed text for all that may need a password; the reason itself says what can be done.
    const bool hasReason = passedOver_ && result && result->FileStausAfterProcess == FileStatus::NotProcessed;
    FileReport report = isLost || hasReason ? FailedFile(path, Reason()) : ReportOf(path, *result);
    // What was found before a failure may be half of what is there.
    if (report.status != FileStatus::NotProcessed) {
        report.hits = std::exchange(hits_, {});
        report.hitsLeftOut = hitsLeftOut_;
    }
    ReportNext(std::move(report));
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

void ReportedRun::OnHit(const Hit& hit)
{
    const bool sharesPlace = !hits_.empty() && hits_.back().place == hit.place;
    const std::size_t bytes = BytesOf(hit) + (sharesPlace ? 0 : BytesOf(*hit.place));
    if (KeepsMoreHits() && bytes <= HitBytesToKeep - hitBytes_) {
        hits_.push_back(hit);
        hitBytes_ += bytes;
    } else {
        ++hitsLeftOut_;
    }
}

/// The file that the run is at. None outside of any file, and none under our own cancel: the file at which the run sees
/// the cancel belongs to the next run.
std::optional<std::size_t> ReportedRun::FileInRun() const
{
    const auto position = static_cast<std::size_t>(project_.PositionInRun);
    if (beginsAnew_ || position == 0 || position > turn_.size())
        return {};
    return turn_[position - 1];
}

void ReportedRun::ReportNext(FileReport report)
{
    current_.reset();
    report.number = (*files_)[reported_++].number;
    for (const String& warning : warnings_.Take())
        report.warnings.push_back(WithoutPath(warning, report.path));
    sink_(report);
    ReportRefused();
}

void ReportedRun::ReportRefused()
{
    while (reported_ < files_->size() && !(*files_)[reported_].refusal.empty()) {
        sink_(RefusedFile((*files_)[reported_++]));
    }
}

/// Reports the files before `end` that have no report yet as failed, for the reason why the run has no result now.
void ReportedRun::FailUpTo(std::size_t end)
{
    const String reason = Reason();
    while (reported_ < end)
        ReportNext(FailedFile((*files_)[reported_].path, reason));
}

String ReportedRun::Reason() const
{
    if (passedOver_)
        return passedOver_->Reason();
    if (ended_)
        return ended_->Reason();
    return u"The file could not be processed.";
}

}  // namespace tessarine::batch
