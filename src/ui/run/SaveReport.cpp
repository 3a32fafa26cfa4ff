#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QStandardPaths>

#include "app/LanguageText.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/Hourglass.h"
#include "platform/Messages.h"
#include "platform/ProgramInfo.h"
#include "report/RunReportWriter.h"
#include "settings/SettingsStore.h"
#include "shell/CommonDialog.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ReportTexts.h"

namespace tessarine
{

namespace
{

const String folderKey = u"ReportFolder";

QString ReportCaption(const String& key)
{
    return ToQt(GetLngString(u"Report", key));
}

/// The folder of the last report, as long as it is there; at first that of the user's documents.
QString ProposedFolder(const String& section)
{
    const QString last = ToQt(GetSetting(String(ApplicationTitle), section, folderKey));
    if (!last.isEmpty() && QFileInfo(last).isDir())
        return last;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

/// "Search report 2026-03-01.html", in the user's language.
QString ProposedName(const RunFacts& facts)
{
    return ReportCaption(facts.replaces ? u"replaceTitle" : u"findTitle") + u' ' +
           QDate::currentDate().toString(Qt::ISODate) + QStringLiteral(".html");
}

/// Empty when the user has cancelled.
String ChosenPath(const QString& folder, const QString& name)
{
    CommonDialog dialog;
    dialog.DialogTitle = FromQt(ReportCaption(u"Dialog.Title"));
    dialog.Filter = FromQt(ReportCaption(u"Dialog.Page") + QStringLiteral("|*.html|") + ReportCaption(u"Dialog.Table") +
                           QStringLiteral("|*.csv"));
    dialog.DefaultExt = u"html";
    dialog.FollowsFilter = true;
    dialog.Flags = FileDialogFlag::AskBeforeOverwriting;
    dialog.FileName = FromQt(QDir::toNativeSeparators(QDir(folder).filePath(name)));
    if (Skip([&] { dialog.ShowSave(); }) != 0)
        return {};
    return dialog.FileName;
}

}  // namespace

void frmProcessingDocuments::BeginReport(const RunFacts& facts)
{
    runFacts_ = facts;
    cmdSaveReport->setEnabled(false);
}

void frmProcessingDocuments::EndReport(const RunEnd& end)
{
    runEnd_ = end;
    cmdSaveReport->setEnabled(true);
}

void frmProcessingDocuments::cmdSaveReport_Click()
{
    LogAndReturn({u"cmdSaveReport_Click", place}, [this] {
        const String section = FromQt(objectName());
        const String path = ChosenPath(ProposedFolder(section), ProposedName(runFacts_));
        if (path.empty())
            return;
        if (!RunReportKindOf(path)) {
            ShowMessage(FromQt(ReportCaption(u"Dialog.WrongName")), MessageIcon::Exclamation);
            return;
        }
        try {
            SaveReport(path);
        } catch (...) {
            const QString reason = ToQt(CurrentFailure().Reason());
            ShowMessage(FromQt(ReportCaption(u"Dialog.Failed").replace(QLatin1String("%s"), reason)),
                        MessageIcon::Exclamation);
            return;
        }
        // A folder that can't be kept is not worth a word.
        Skip([&] {
            SaveSetting(String(ApplicationTitle), section, folderKey, FromQt(QFileInfo(ToQt(path)).absolutePath()));
        });
    });
}

void frmProcessingDocuments::SaveReport(const String& path) const
{
    const Hourglass hourglass;
    RunReportWriter writer(path, runFacts_, WordsOfReport());
    hits_.ForEachOfRun([&](const FileReport& file) { writer.Add(file); });
    writer.Finish(runEnd_);
}

}  // namespace tessarine
