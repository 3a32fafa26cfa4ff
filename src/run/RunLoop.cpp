#include "run/RunLoop.h"

#include <memory>
#include <optional>

#include "files/RandomAccessFile.h"
#include "log/ErrorLog.h"
#include "log/Warnings.h"
#include "model/LogPlaces.h"
#include "platform/FolderOf.h"
#include "platform/GivingUp.h"
#include "platform/Messages.h"
#include "run/BackupPaths.h"
#include "run/BinaryDigits.h"
#include "saving/CopyFile.h"
#include "saving/Leftovers.h"

namespace tessarine
{

void Project::Search(const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList,
                     const std::shared_ptr<OptionSetting>& vOptionSettings)
{
    RunFailure.reset();
    try {
        RunLoop(*this, vFindAndReplaceList, vOptionSettings).Run();
    } catch (...) {
        RunFailure = CurrentFailure();
        throw;
    }
}

void Project::Replacement(const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList,
                          const std::shared_ptr<OptionSetting>& vOptionSettings)
{
    LogAndReturn({u"Replacement", ProjectPlace}, [&] {
        NotNull(options)->IsFindOnly = false;
        Search(vFindAndReplaceList, vOptionSettings);
        // Intended: a failure of the run skips this, and the window tells a run that failed by IsFindOnly still being
        // off. A Search after it saves its changes.
        NotNull(options)->IsFindOnly = true;
    });
}

RunLoop::RunLoop(Project& project, const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList,
                 const std::shared_ptr<OptionSetting>& vOptionSettings)
    : project_(project), list_(vFindAndReplaceList), optionSettings_(vOptionSettings)
{
}

void RunLoop::Run()
{
    Step step = Step::SetUp;
    while (step != Step::Done) {
        try {
            step = Perform(step);
        } catch (...) {
            if (mode_ != Mode::General)
                throw;
            // Outside the try block, so that what the handler itself fails with leaves Search.
            step = HandleGenerally(CurrentFailure());
        }
    }
}

RunLoop::Step RunLoop::Perform(Step step)
{
    switch (step) {
        case Step::SetUp:
            return SetUp();
        case Step::Begin:
            return Begin();
        case Step::Open:
            return Open();
        case Step::Process:
            return Process();
        case Step::Restore:
            return Restore();
        case Step::Report:
            return Report();
        case Step::NextFile:
            return NextFile();
        case Step::End:
            return End();
        case Step::Done:
            break;
    }
    return Step::Done;
}

RunLoop::Step RunLoop::SetUp()
{
    SetMousePointer(MousePointer::Hourglass);

    project_.PositionInRun = 0;
    project_.IsReqCount = Options().RequiredFindAndReplaceCount;
    engine_.IsRequiredCount = Options().RequiredFindAndReplaceCount;
    engine_.mCPUUsage = Options().CPUUsage;
    engine_.mIsFindOnly = Options().IsFindOnly;
    engine_.mIsDryRun = project_.IsDryRun;
    engine_.PairBegins = project_.PairBegins;
    engine_.HitFound = project_.HitFound;
    engine_.WantsWholeHit = project_.WantsWholeHit;
    engine_.HitContext = project_.HitContext;

    if (list_) {
        // The pairs come from a list of their own; CustomProperties reads from their project whether to change
        // anything.
        for (const auto& item : list_->NewEnum())
            item->Project = project_.shared_from_this();
        engine_.mItems = list_;
    } else {
        engine_.mItems = project_.FindAndReplaceList;
    }
    // ProcessLongestFindwhatFirst is a stored and shown setting only: items reach the engine in list order, always.

    CreateApplication();
    SetDisplayAlerts();
    // Intended: only here, because the macros of what a restart opens have always followed the application's default.
    Application().PutAutomationSecurity(powerpoint::msoAutomationSecurityForceDisable);

    // Settled for the whole run: receivers of events may change the list meanwhile, and Begin notices a file that is
    // gone.
    bound_ = Checked<std::int16_t>(static_cast<std::int64_t>(project_.FilesToProcess.size()));
    return Step::NextFile;
}

RunLoop::Step RunLoop::Begin()
{
    Statement([&] {
        const auto position = static_cast<std::size_t>(index_) - 1;
        if (position >= project_.FilesToProcess.size())
            throw Failure(FailureNumber::SubscriptOutOfRange, u"Subscript out of range");
        path_ = project_.FilesToProcess[position];
    });
    LetGo();
    loggedFile_.emplace(path_);
    // The receiver hears of a file before the cancel is looked at, so a run may be cancelled from this very event.
    Statement([&] { project_.BeforFileProcess.Raise(path_); });

    if (project_.IsProcessCancel) {
        Statement([&] { project_.ProcessCancel.Raise(); });
        return Step::End;
    }

    if (Saves())
        TidyFolder();
    if (Replaces()) {
        // Before the backup, which would be of a content that another run is about to replace.
        if (const auto refusal = FailureOf([&] { lock_.emplace(path_); })) {
            mode_ = Mode::Captured;
            return SortOpenFailure(*refusal);
        }
    }
    if (Saves()) {
        // The file's own warnings are where people look, whichever file it is about.
        for (const RecoveredFile& file : RecoverFromRunsKilledMeanwhile())
            Warn(path_, file.path == path_ ? file.text : file.path + u": " + file.text);
    }
    // Before the read-only attribute is looked at: a file that is then left alone has a backup all the same.
    if (Options().BackupMode && !IsRehearsal())
        Statement([&] { MakeBackup(); });

    Statement([&] { savedAttributes_ = GetAttributes(path_); });
    Statement([&] { attributeBits_ = DecimalToBinary(NotNull(savedAttributes_)->bits); });
    // The last binary digit is the attribute "read-only".
    const bool isReadOnly = attributeBits_.ends_with(u'1');
    if (isReadOnly && !Options().ProcessReadonlyFiles) {
        ReportUnprocessed(u"Read Only File.");
        return Step::Report;
    }

    if (Options().KeepOriginalFileDate) {
        savedTimes_ = GetFileDateTime(path_);
        if (!savedTimes_.valid)
            Warn(path_, u"its dates can't be read, so they are not kept");
    }
    if (IsRehearsal())
        return Step::Open;
    if (project_.KeepsDatesOfUnchanged && !Options().KeepOriginalFileDate)
        savedTimes_ = GetFileDateTime(path_);
    isSavedUnchanged_ = false;
    if (isReadOnly || (Saves() && Options().KeepOriginalFileDate))
        NoteForNextStart();
    if (isReadOnly)
        Statement([&] { ClearAttributes(path_, *NotNull(savedAttributes_)); });
    return Step::Open;
}

void RunLoop::MakeBackup() const
{
    const String backup = BackupTargetOf(path_);
    CopyTerms terms;
    CopiedContent content;
    if (project_.BackupMade)
        terms.complete = [&](const CopiedContent& copied) { content = copied; };
    CopyFile(path_, backup, terms);
    if (project_.BackupMade)
        project_.BackupMade(path_, backup, content);
}

RunLoop::Step RunLoop::Open()
{
    mode_ = Mode::Captured;
    std::unique_ptr<RandomAccessFile> before;
    if (project_.Opened)
        // Passed over: opening the presentation tells what is wrong with the file.
        Skip([&] { before = std::make_unique<RandomAccessFile>(path_, RandomAccessFile::Use::Saving); });
    const std::optional<Failure> failure = FailureOf([&] {
        engine_.xPresentation = NotNull(Application().Presentations())
                                    ->Open(path_, powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse);
    });
    if (failure)
        return SortOpenFailure(*failure);

    const std::optional<Failure> refusal = FailureOf([&] {
        if (project_.Opened)
            project_.Opened(path_, [&] {
                if (!before || !before->Opened()->IsUnchanged())
                    throw Failure(
                        FailureNumber::SharingViolation,
                        u"The file " + path_ + u" was changed by another program while it was opened; run it again.");
                return before->Id();
            });
    });
    if (!refusal)
        return Step::Process;
    CloseUntouched();
    return SortOpenFailure(*refusal);
}

RunLoop::Step RunLoop::Process()
{
    Statement([&] {
        engine_.UpdateISO9001Version(Options().RevisionDocumentPropertyName,
                                     Options().RevisionDocumentPropertyIncrimentedBy);
    });
    const std::optional<Failure> failure =
        FailureOf([&] { result_ = engine_.ProcessFile(path_, Options().PasswordToOpen, optionSettings_); });
    if (failure && failure->number == FailureNumber::GivenUp)
        PutAwayGivenUp(*failure);
    else if (failure)
        TellPassedOver(*failure);
    isSavedUnchanged_ = Saves() && !failure && result_ && result_->HasNewContent == false;
    return Step::Restore;
}

RunLoop::Step RunLoop::Restore()
{
    mode_ = Mode::None;
    if (!IsRehearsal())
        PutBackDatesAndAttributes();
    // A file whose processing failed has no result of its own: it hands on that of the file before, under its own name.
    // Without one before it the run ends here.
    NotNull(result_)->FileName = path_;
    return Step::Report;
}

RunLoop::Step RunLoop::Report()
{
    // Before the receivers, who may want to open the file.
    LetGo();
    Statement([&] { project_.AfterFileProcess.Raise(result_); });
    // At once: a cancel that was asked for during this file must not come too late for the next one.
    Statement([&] { engine_.mCPUUsage ? YieldWithSleep(Delivery::AtOnce) : DeliverPendingEvents(Delivery::AtOnce); });
    ++processedFileCount_;

    const std::int32_t restartAfter = Options().RestartApplicationAfterFiles;
    // The list as it is now, unlike the bound: a file added by a receiver of an event counts.
    const bool isLast = static_cast<std::size_t>(index_) == project_.FilesToProcess.size();
    if (restartAfter != 0 && processedFileCount_ % restartAfter == 0 && !isLast)
        RestartAsPlanned();
    return Step::NextFile;
}

RunLoop::Step RunLoop::NextFile()
{
    // The general handler may come back here from the end of the loop: the index then stays one past the last file.
    if (index_ <= bound_)
        ++index_;
    const bool isFile = index_ <= bound_;
    project_.PositionInRun = isFile ? index_ : 0;
    return isFile ? Step::Begin : Step::End;
}

RunLoop::Step RunLoop::End()
{
    LetGo();
    Statement([&] { Application().Quit(); });
    project_.application_.reset();
    project_.UnloadPowerPoint();
    // A cancel is for one run; the next one starts afresh.
    project_.IsProcessCancel = false;
    Statement([] { SetMousePointer(MousePointer::Default); });
    return Step::Done;
}

RunLoop::Step RunLoop::HandleGenerally(const Failure& failure)
{
    mode_ = Mode::None;  // The handler serves once: a further failure leaves Search.
    LogFailure({u"Search", ProjectPlace}, failure);
    return SortOpenFailure(failure);
}

RunLoop::Step RunLoop::SortOpenFailure(const Failure& failure)
{
    switch (failure.number) {
        case FailureNumber::ServerGone:
        case FailureNumber::RemoteCallFailed:
            RestartAfterLoss();
            // The same file once more, with the new application. No count ends the tries.
            return Step::Open;
        case FailureNumber::ApplicationDefined:
        case FailureNumber::Unspecified:
            // Intended: the two blanks at the beginning are part of the text that logs and reports have always shown.
            ReportUnprocessed(u"  Wrong Password has been supplied.");
            TellPassedOver(failure);
            return Step::Report;
        case FailureNumber::GivenUp:
            PutAwayGivenUp(failure);
            return Step::Report;
        default:
            // Intended: the result stays null, or the previous file's once more. Receivers count one event for each
            // file, and OwnResults tells them whether its result is the file's own.
            WriteErrorLog(failure.description);
            TellPassedOver(failure);
            return Step::Report;
    }
}

void RunLoop::PutBackDatesAndAttributes()
{
    // The date first: a restored read-only attribute would forbid it.
    const bool keepsDate = Options().KeepOriginalFileDate || (project_.KeepsDatesOfUnchanged && isSavedUnchanged_);
    if (keepsDate && savedTimes_.valid && !SetFileDateTime(path_, savedTimes_))
        Warn(path_, u"its dates could not be put back");
    if (Saves())
        PutBackAttributes();
    else if (savedAttributes_)
        SetAttributes(path_, *savedAttributes_);
}

void RunLoop::CloseUntouched()
{
    Skip([&] { NotNull(engine_.xPresentation)->Close(); });
    engine_.xPresentation.reset();
    // Only Begin of this very file can have cleared them, and nothing was saved that they would stand in the way of.
    if (!IsRehearsal())
        PutBackAttributes();
}

void RunLoop::PutAwayGivenUp(const Failure& failure)
{
    ForgetGivingUp();  // or the close would fail, too
    Skip([&] { NotNull(engine_.xPresentation)->Close(); });
    engine_.xPresentation.reset();
    // A result of its own, unlike any other failure: the person who gave the file up wants to see it among the errors,
    // and the run go on, also where it was the first file.
    ReportUnprocessed(failure.Reason());
    TellPassedOver(failure);
}

void RunLoop::TidyFolder()
{
    const StringView folder = FolderOf(StringView(path_));
    if (project_.tidiedFolders_.emplace(folder).second)
        RemoveLeftovers(folder.empty() ? u"." : folder);
}

void RunLoop::NoteForNextStart()
{
    const std::optional<Failure> failure = FailureOf([&] {
        journal_.Begin(path_, *NotNull(savedAttributes_), Options().KeepOriginalFileDate ? savedTimes_ : FileTimes{});
    });
    // The run goes on: what the journal is for happens to few runs, and the user has asked for this one.
    if (failure)
        Warn(path_, u"its mode and dates won't come back if the run is killed: " + failure->Reason());
}

void RunLoop::PutBackAttributes()
{
    const std::optional<Failure> failure = FailureOf([&] {
        if (savedAttributes_)
            SetAttributes(path_, *savedAttributes_);
    });
    // The file is saved by now, and says so: this must not make it one that failed.
    if (failure)
        Warn(path_, u"its attributes could not be put back: " + failure->Reason());
}

void RunLoop::LetGo()
{
    ForgetGivingUp();  // which came too late for this file, and is not meant for what comes next
    journal_.End();
    lock_.reset();
    loggedFile_.reset();
    savedAttributes_.reset();
}

ProjectOptions& RunLoop::Options() const
{
    return *NotNull(project_.options);
}

powerpoint::Application& RunLoop::Application() const
{
    return *NotNull(project_.application_);
}

void RunLoop::ReportUnprocessed(const String& error)
{
    result_ = std::make_shared<CounterStatuses>();
    result_->FileName = path_;
    result_->FileStausAfterProcess = FileStatus::NotProcessed;
    result_->mError = error;
}

void RunLoop::TellPassedOver(const Failure& failure) const
{
    if (index_ > bound_)
        return;  // after the last file, so the failure doesn't belong to any file
    Skip([&] {
        if (project_.FailurePassedOver)
            project_.FailurePassedOver(path_, failure);
    });
}

}  // namespace tessarine
