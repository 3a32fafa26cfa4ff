#pragma once

#include <functional>

#include <QStyledItemDelegate>

class QKeyEvent;

namespace tessarine
{

/// The editor of the grid's typed cells: a line edit that opens on the cell's text.
class ItemEditor : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Sees each key before the editor: true when it has been dealt with and must not reach the editor. May be empty.
    std::function<bool(const QKeyEvent& key)> KeyDown;

    /// Leaves a text that is being typed alone: the row may change in other ways meanwhile.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

    /// Gives the model the text of an editor that ends, unless it is the one that the model has.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

    /// Hands key presses to KeyDown first.
    bool eventFilter(QObject* editor, QEvent* event) override;

Q_SIGNALS:
    /// An edit has ended with another text, which the model holds by then. Not raised for an edit that changes nothing.
    void TextChanged(const QModelIndex& index) const;
};

}  // namespace tessarine
