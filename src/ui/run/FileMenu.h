#pragma once

#include <array>

#include <QObject>

class QAction;
class QTreeView;

namespace tessarine
{

/// What the context menus of the result trees offer for the file of a node, and for all files of the runs. One set of
/// items for all trees, as only one of them is in front.
class FileMenu : public QObject
{
    Q_OBJECT

public:
    explicit FileMenu(QObject* parent);

    void AddTo(QTreeView& tree);  ///< In front of, and behind, what the tree's menu holds already.
    void PutCaptions();           ///< In the language in force.

    /// What can be done right now; the other items are grey.
    struct Offer {
        bool file = false;       ///< There is a file.
        bool backup = false;     ///< The file's backup can be put back or removed.
        bool anyBackup = false;  ///< There are backups to be put back or removed.
    };
    void Put(const Offer& offer);

    QAction* const mnuOpenFile;
    QAction* const mnuOpenFolder;
    QAction* const mnuCopyPath;
    QAction* const mnuRestoreFile;
    QAction* const mnuRemoveBackup;
    QAction* const mnuRestoreAll;
    QAction* const mnuRemoveAllBackups;

private:
    std::array<QAction*, 3> OfFile() const { return {mnuOpenFile, mnuOpenFolder, mnuCopyPath}; }
    std::array<QAction*, 2> OfBackup() const { return {mnuRestoreFile, mnuRemoveBackup}; }
    std::array<QAction*, 2> OfAllBackups() const { return {mnuRestoreAll, mnuRemoveAllBackups}; }
};

}  // namespace tessarine
