#pragma once

#include <QLabel>
#include <QTimer>

namespace tessarine
{

class ItemsModel;

/// A line that names the pairs of the grid whose replacing would never end, by their texts and rows; out of sight while
/// there are none, or the grid is not what a run would take. It follows the grid a moment later.
class EndlessNotice : public QLabel
{
    Q_OBJECT

public:
    EndlessNotice(const ItemsModel& items, QWidget* parent);  ///< Named "lblEndless".

    /// `line` holds "%s" for the pairs, `pair` "%s" for a find text and "%d" for its row.
    void PutTexts(const QString& line, const QString& pair);

    void PutIsGridTaken(bool isGridTaken);  ///< Whether a run would take the pairs of the grid.

private:
    void Follow();  // soon, and not too often
    void Show();
    QString NamedPair(int row) const;

    const ItemsModel& items_;
    QTimer timer_;
    QString line_;
    QString pair_;
    bool isGridTaken_ = true;
};

}  // namespace tessarine
