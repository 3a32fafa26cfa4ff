#include <QClipboard>
#include <QGuiApplication>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "platform/FolderOf.h"
#include "shell/OpenDoc.h"
#include "ui/run/FailureList.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultLog.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

void frmProcessingDocuments::cmdCopyLog_Click()
{
    LogAndReturn({u"cmdCopyLog_Click", place}, [this] {
        const QString log = ResultLog(trvChangedFiles->Nodes(), trvNotChangedFiles->Nodes());
        QGuiApplication::clipboard()->clear();
        QGuiApplication::clipboard()->setText(log);
    });
}

void frmProcessingDocuments::cmdCommand_Click(int index)
{
    LogAndReturn({u"cmdCommand_Click", place}, [&] {
        const ProjectOptions& options = *NotNull(NotNull(CurrentProject)->options);
        // Both commands find their files by the project's options; their signatures ask for a path all the same.
        const String path =
            options.TakesListedFiles() ? options.FileToProcessFilepath : options.FileToProcessFolderPath;
        if (index == 0)
            CurrentProject->RemoveBackupFiles(path);
        else if (index == 1)
            CurrentProject->RestoreBackupFiles(path);
    });
}

void frmProcessingDocuments::cmdErrorLog_Click()
{
    LogAndReturn({u"cmdErrorLog_Click", place}, [this] { Open(ErrorLogPath()); });
}

void frmProcessingDocuments::OPenDocument(const ResultNode& node)
{
    LogAndReturn({u"OPenDocument", place}, [&] {
        // Files alone have a key. Pairs and locations open nothing.
        if (!node.Key.empty())
            Open(node.Key);
    });
}

void frmProcessingDocuments::lstHits_DblClick(const String& path)
{
    LogAndReturn({u"lstHits_DblClick", place}, [&] { Open(path); });
}

void frmProcessingDocuments::lstFailures_DblClick(const String& path)
{
    LogAndReturn({u"lstFailures_DblClick", place}, [&] { Open(path); });
}

void frmProcessingDocuments::lstFailures_OpenFolder(const String& path)
{
    LogAndReturn({u"lstFailures_OpenFolder", place}, [&] { Open(String(FolderOf(StringView(path)))); });
}

void frmProcessingDocuments::lstFailures_FileChosen(const String& path)
{
    LogAndReturn({u"lstFailures_FileChosen", place}, [&] { trvErrors->ChooseFile(path); });
}

void frmProcessingDocuments::cmdFailures_Click()
{
    LogAndReturn({u"cmdFailures_Click", place}, [this] {
        SSTab1->setCurrentIndex(3);
        lstFailures->setFocus();
    });
}

void frmProcessingDocuments::Open(const String& path)
{
    OpenOrTell(path);
}

void frmProcessingDocuments::trvChangedFiles_DblClick()
{
    LogAndReturn({u"trvChangedFiles_DblClick", place}, [this] { OpenNodeUnderPointer(*trvChangedFiles); });
}

void frmProcessingDocuments::trvNotChangedFiles_DblClick()
{
    LogAndReturn({u"trvNotChangedFiles_DblClick", place}, [this] { OpenNodeUnderPointer(*trvNotChangedFiles); });
}

void frmProcessingDocuments::trvErrors_DblClick()
{
    LogAndReturn({u"trvErrors_DblClick", place}, [this] { OpenNodeUnderPointer(*trvErrors); });
}

void frmProcessingDocuments::OpenNodeUnderPointer(const ResultTree& tree)
{
    // A double click brings no position along; the last move of the pointer has it.
    if (const auto node = tree.HitTest(lastX_, lastY_))
        OPenDocument(*node);
}

void frmProcessingDocuments::trvChangedFiles_MouseMove(int, int, float X, float Y)
{
    // One position serves the three trees, as only one of them is under the pointer.
    lastX_ = X;
    lastY_ = Y;
}

void frmProcessingDocuments::trvNotChangedFiles_MouseMove(int, int, float X, float Y)
{
    lastX_ = X;
    lastY_ = Y;
}

void frmProcessingDocuments::trvErrors_MouseMove(int, int, float X, float Y)
{
    lastX_ = X;
    lastY_ = Y;
}

}  // namespace tessarine
