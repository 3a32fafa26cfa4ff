#pragma once

#include <functional>

#include <QStyledItemDelegate>

class QKeyEvent;

namespace tessarine
{

/// The editor of the grid's typed cells.
class ItemEditor : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Sees each key before the editor: true when it has been dealt with.
    std::function<bool(const QKeyEvent& key)> KeyDown;

    /// Leaves a text that is being typed alone: the row may change in other ways meanwhile.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    bool eventFilter(QObject* editor, QEvent* event) override;

Q_SIGNALS:
    /// An edit has ended with another text, which the model holds. An edit that changes nothing is none.
    void TextChanged(const QModelIndex& index) const;
};

}  // namespace tessarine
