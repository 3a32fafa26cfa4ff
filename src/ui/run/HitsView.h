#pragma once

#include <QListView>

#include "ui/run/HitsModel.h"

class QAction;

namespace tessarine
{

/// The list of hits: Enter and a double click ask to open the file of a hit, Ctrl+C and the context menu copy it as a
/// line of text.
class HitsView : public QListView
{
    Q_OBJECT

public:
    explicit HitsView(const char* name, QWidget* parent = nullptr);  ///< `name` becomes the objectName.

    HitsModel& Hits() { return hits_; }

    void PutEmptyText(const QString& text);  ///< What stands in a list without rows.
    void PutMenuCaptions(const QString& openHit, const QString& copyHit);

    void CopyHit();  ///< The current row's text to the clipboard; nothing without one.

Q_SIGNALS:
    void OpenRequested(const String& path);  ///< Of the file that a row belongs to.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void BuildMenu();  // with the key that copies
    void Open(const QModelIndex& index);

    HitsModel hits_;
    QString emptyText_;
    QAction* mnuOpenHit = nullptr;
    QAction* mnuCopyHit = nullptr;
};

}  // namespace tessarine
