#include <QPointer>

#include "engine/CounterStatuses.h"
#include "engine/Hit.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "ui/main/frmMain.h"
#include "ui/run/frmIntervention.h"

namespace tessarine
{

void frmMain::mProject_BeforFileProcess(const String& vFilepath)
{
    LogAndReturn({u"mProject_BeforFileProcess", place}, [&] { runWatch_.FileBegins(vFilepath); });
}

void frmMain::mProject_AfterFileProcess(const std::shared_ptr<CounterStatuses>& vStatus)
{
    runWatch_.TakeResult(vStatus, *mProject);
    const auto tree = LogAndReturn({u"mProject_AfterFileProcess", place}, [&] { return runWatch_.Step(vStatus); });
    // Failures from here on travel to the run and end it, so that no result is lost without a word.
    if (tree)
        runWatch_.Show(*tree, *vStatus, *mProject);
}

void frmMain::mProject_ManualInterventionRequired()
{
    LogAndReturn({u"mProject_ManualInterventionRequired", place}, [this] { frmIntervention(this).exec(); });
}

void frmMain::mProject_ProcessCancel()
{
    LogAndReturn({u"mProject_ProcessCancel", place}, [this] { runWatch_.Cancelled(*mProject); });
}

void frmMain::ReceiveEvents()
{
    // The project outlives this window and keeps its receivers.
    const QPointer<frmMain> self(this);
    mProject->BeforFileProcess += [self](const String& vFilepath) {
        if (self)
            self->mProject_BeforFileProcess(vFilepath);
    };
    mProject->AfterFileProcess += [self](const std::shared_ptr<CounterStatuses>& vStatus) {
        if (self)
            self->mProject_AfterFileProcess(vStatus);
    };
    mProject->ManualInterventionRequired += [self] {
        if (self)
            self->mProject_ManualInterventionRequired();
    };
    mProject->ProcessCancel += [self] {
        if (self)
            self->mProject_ProcessCancel();
    };
    mProject->PairBegins = [self](std::int32_t number, const FindAndReplaceItem& pair) {
        if (self)
            self->runWatch_.PairBegins(number, pair);
    };
    mProject->HitFound = [self](const Hit& hit) {
        if (self)
            self->runWatch_.HitFound(hit);
    };
    mProject->WantsWholeHit = [self] { return self && self->runWatch_.WantsWholeHit(); };
    mProject->BackupMade = [self](const String& path, const String& backup, const CopiedContent& content) {
        if (self)
            self->runWatch_.BackupMade(path, backup, content);
    };
    mProject->FailurePassedOver = [self](const String&, const Failure& failure) {
        if (self)
            self->runWatch_.FailurePassedOver(failure);
    };
}

}  // namespace tessarine
