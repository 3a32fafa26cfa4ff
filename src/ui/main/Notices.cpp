#include "app/GlobalState.h"
#include "app/Main.h"
#include "files/Files.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "report/WithoutPath.h"
#include "shell/OpenDoc.h"
#include "ui/main/frmMain.h"
#include "ui/main/NoticeStrip.h"
#include "ui/main/NoticeTexts.h"

// What goes wrong without a message of its own, as the strip at the top of the window tells it. The commands take the
// steps that they always have; the notices come after them.

namespace tessarine
{

namespace
{

/// Why the last load of a project failed.
QString LoadReason(const std::optional<ProjectFault>& fault, const std::optional<Failure>& failure, const String& path)
{
    if (fault)
        return ReasonOf(*fault);
    return failure ? ReasonOf(*failure, path) : ReasonOf(ProjectFault::OtherKind);
}

/// Why the last save of a project failed: one without a failure has told that its folder is missing.
QString SaveReason(const std::optional<Failure>& failure, const String& path)
{
    if (failure && failure->number == FailureNumber::Overflow)
        return NoticeText(u"TooManyPairs");
    return failure ? ReasonOf(*failure, path) : NoticeText(u"FolderMissing");
}

}  // namespace

/// Whether the last save of the project left the file behind that it was to write.
bool frmMain::HasSaved(const String& path) const
{
    return !CurrentProject->FileFailure && FileExists(path);
}

void frmMain::NoteSave(const String& path)
{
    if (HasSaved(path)) {
        fraNotice->Over(NoticeCause::Save);
        return;
    }
    // No file has the job, so it is not to be closed without a question.
    PutIsModifed(true);
    const auto failure = CurrentProject->FileFailure;
    fraNotice->Tell(NoticeCause::Save, failure.has_value(),
                    [=] { return NoticeText(u"NotSaved", {.i = SaveReason(failure, path), .s = ToQt(path)}); });
}

void frmMain::NoteDefaultProject()
{
    const String path = DefaultProjectPath();
    if (HasSaved(path)) {
        fraNotice->Over(NoticeCause::Kept);
        return;
    }
    const auto failure = CurrentProject->FileFailure;
    fraNotice->Tell(NoticeCause::Kept, failure.has_value(),
                    [=] { return NoticeText(u"NotKept", {.s = SaveReason(failure, path)}); });
}

void frmMain::NoteLoad(const String& path, bool isLoaded)
{
    if (isLoaded) {
        // Another job is in force: what was told of the one before is past.
        for (const NoticeCause cause : {NoticeCause::Open, NoticeCause::Start, NoticeCause::Save})
            fraNotice->Over(cause);
        return;
    }
    const auto fault = CurrentProject->LoadFault;
    const auto failure = CurrentProject->FileFailure;
    fraNotice->Tell(NoticeCause::Open, failure.has_value(),
                    [=] { return NoticeText(u"NotOpened", {.i = LoadReason(fault, failure, path), .s = ToQt(path)}); });
}

void frmMain::NoteStart()
{
    const auto fault = CurrentProject->LoadFault;
    const auto failure = CurrentProject->FileFailure;
    if (failure)
        fraNotice->Tell(NoticeCause::Start, true, [=] {
            return NoticeText(u"NotRestored", {.s = LoadReason(fault, failure, DefaultProjectPath())});
        });
}

void frmMain::NoteImport(const FindAndReplaceItems& list, const String& path, bool isAccepted)
{
    const auto fault = FaultOf(list);
    if (!fault) {
        fraNotice->Over(NoticeCause::Import);
        return;
    }
    const String key = isAccepted ? u"ImportedInPart" : u"NotImported";
    fraNotice->Tell(NoticeCause::Import, list.FileFailure.has_value(),
                    [=] { return NoticeText(key, {.i = ReasonOf(*fault, path), .s = ToQt(path)}); });
}

void frmMain::NoteExport(const FindAndReplaceItems& list, const String& path)
{
    if (!list.FileFailure) {
        fraNotice->Over(NoticeCause::Export);
        return;
    }
    const auto fault = FaultOf(list);
    fraNotice->Tell(NoticeCause::Export, true,
                    [=] { return NoticeText(u"NotExported", {.i = ReasonOf(*fault, path), .s = ToQt(path)}); });
}

void frmMain::NoteFileSet()
{
    if (const auto& unread = CurrentProject->UnreadFolders; unread.empty())
        fraNotice->Over(NoticeCause::Folder);
    else
        fraNotice->Tell(NoticeCause::Folder, true, [count = unread.size(), first = unread.front()] {
            return NoticeText(u"FoldersNotRead", {.d = static_cast<std::int64_t>(count),
                                                  .i = ToQt(WithoutPath(first.reason, first.path)),
                                                  .s = ToQt(first.path)});
        });
    NoteFileList(CurrentProject->options->FileToProcessFilepath);
}

void frmMain::NoteFileList(const String& path)
{
    if (const auto failure = CurrentProject->UnreadList)
        fraNotice->Tell(NoticeCause::Lines, true,
                        [=] { return NoticeText(u"ListNotRead", {.i = ReasonOf(*failure, path), .s = ToQt(path)}); });
    else if (const std::int32_t hidden = CurrentProject->HiddenByLineFeeds; hidden > 0)
        fraNotice->Tell(NoticeCause::Lines, false,
                        [=] { return NoticeText(u"LineFeeds", {.d = hidden, .s = ToQt(path)}); });
    else
        fraNotice->Over(NoticeCause::Lines);
}

void frmMain::cmdErrorLog_Click()
{
    LogAndReturn({u"cmdErrorLog_Click", place}, [] { OpenOrTell(ErrorLogPath()); });
}

}  // namespace tessarine
