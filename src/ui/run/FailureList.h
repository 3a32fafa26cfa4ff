#pragma once

#include <QTreeWidget>

#include "platform/String.h"
#include "ui/run/RunTexts.h"

class QAction;

namespace tessarine
{

/// The failures of a run, one line each: the file, and the reason beside it. The context menu opens the file or its
/// folder and copies the line; a double click and Enter open the file.
class FailureList : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FailureList(QWidget* parent = nullptr);  ///< Named "lstFailures".

    /// A failure of a file; of the run as a whole when `path` is empty. The reason is shown without the path, which
    /// stands beside it.
    void Add(const String& path, const String& reason);

    int Count() const { return topLevelItemCount(); }
    int ShownCount() const;  ///< As far as the filter shows them.

    /// Shows the files whose name holds this text: see NodeFilter::name.
    void PutFilter(const QString& name);

    void PutTexts(const RunTexts& texts);  ///< The heading, the menu, and what those hear who don't see the list.

Q_SIGNALS:
    void OpenRequested(const String& path);
    void OpenFolderRequested(const String& path);  ///< Of the file with this path.
    void FileChosen(const String& path);           ///< Its line is the current one now.

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildMenu();
    void ShareWidth();
    void Copy() const;
    String CurrentPath() const;  // empty without a line, and for the line of the run

    QString filter_;
    int widestReason_ = 0;  // of all that were ever here
    QAction* mnuOpenFailed = nullptr;
    QAction* mnuOpenFolder = nullptr;
    QAction* mnuCopyFailure = nullptr;
};

}  // namespace tessarine
