#include "shell/QtFileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

#include "i18n/QtText.h"

namespace tessarine
{

QStringList QtNameFilters(const String& filter)
{
    const QStringList parts = ToQt(filter).split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i < parts.size(); i += 2) {  // texts and patterns take turns
        if (parts[i].isEmpty())
            continue;
        QString patterns = i + 1 < parts.size() ? parts[i + 1] : QString();
        // Qt separates patterns by blanks.
        patterns.replace(u';', u' ');
        filters << parts[i] + " (" + (patterns.isEmpty() ? QStringLiteral("*") : patterns) + u')';
    }
    return filters;
}

std::optional<QString> ShowQtFileDialog(const CommonDialog& dialog, bool isSave)
{
    QFileDialog window(QApplication::activeWindow(), ToQt(dialog.DialogTitle));
    window.setAcceptMode(isSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool mustExist = !isSave && (dialog.Flags & FileDialogFlag::FileMustExist) != 0;
    window.setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    window.setOption(QFileDialog::DontConfirmOverwrite, (dialog.Flags & FileDialogFlag::AskBeforeOverwriting) == 0);
    window.setOption(QFileDialog::HideNameFilterDetails);  // the texts name their patterns themselves
    window.setNameFilters(QtNameFilters(dialog.Filter));
    // So that the dialog looks for, and asks about, the file that a name without an extension comes to mean.
    window.setDefaultSuffix(ToQt(dialog.DefaultExt));
    if (!dialog.FileName.empty()) {
        const QFileInfo proposed(ToQt(dialog.FileName));
        window.setDirectory(proposed.absolutePath());
        window.selectFile(proposed.fileName());
    }
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty())
        return std::nullopt;
    return QDir::toNativeSeparators(window.selectedFiles().constFirst());  // Qt has "/" on every system
}

}  // namespace tessarine
