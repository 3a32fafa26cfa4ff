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

    /// A line edit that takes texts of any length.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// A text as a cell shows it: on one line, with a sign for each line break, and no more of it than a row of a large
    /// screen can show.
    QString displayText(const QVariant& value, const QLocale& locale) const override;

    /// Shows the tip of a cell; that of a typed text only where the cell does not show the text whole.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Leaves a text that is being typed alone, and the selection in one that is the cell's: the row may change in
    /// other ways meanwhile.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

    /// Gives the model the text of an editor that ends, unless it is the one that the model has.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

    /// Hands key presses to KeyDown first.
    bool eventFilter(QObject* editor, QEvent* event) override;

protected:
    /// A sign keeps its colours in a selected row, whose tint would hide it.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

Q_SIGNALS:
    /// An edit has ended with another text than `before`; the model holds it by then. Not raised for an edit that
    /// changes nothing.
    void TextChanged(const QModelIndex& index, const QString& before) const;
};

}  // namespace tessarine
