#include "shell/QtFileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

#include "i18n/QtText.h"
#include "shell/WindowPlace.h"

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

namespace
{

/// "csv" of "Tables (*.csv)"; empty where a filter has several patterns, or one for all files.
QString OnlyExtensionOf(const QString& filter)
{
    static const QRegularExpression onePattern(QStringLiteral("\\(\\*\\.([^*? )]+)\\)$"));
    return onePattern.match(filter).captured(1);
}

/// Names without an extension get that of the filter that the user has chosen last. Qt itself exchanges the extension
/// of the name that is there.
void FollowFilter(QFileDialog& window)
{
    QObject::connect(&window, &QFileDialog::filterSelected, &window, [&window] {
        // Qt's own dialog hides the patterns here, a system's doesn't.
        const QString selected = window.selectedNameFilter();
        for (const QString& filter : window.nameFilters())
            if (filter == selected || filter.startsWith(selected + " ("))
                if (const QString extension = OnlyExtensionOf(filter); !extension.isEmpty())
                    window.setDefaultSuffix(extension);
    });
}

}  // namespace

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
    if (dialog.FollowsFilter)
        FollowFilter(window);
    if (!dialog.FileName.empty()) {
        const QFileInfo proposed(ToQt(dialog.FileName));
        window.setDirectory(proposed.absolutePath());
        window.selectFile(proposed.fileName());
    }
    window.resize(FittingSize(window, window.size()));
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty())
        return std::nullopt;
    return QDir::toNativeSeparators(window.selectedFiles().constFirst());  // Qt has "/" on every system
}

}  // namespace tessarine
