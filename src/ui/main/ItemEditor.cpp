#include "ui/main/ItemEditor.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace tessarine
{

void ItemEditor::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // Comes again whenever the cell's data change; a text that is being typed must not be lost by that.
    if (!qobject_cast<QLineEdit*>(editor)->isModified())
        QStyledItemDelegate::setEditorData(editor, index);
}

void ItemEditor::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const QString text = qobject_cast<QLineEdit*>(editor)->text();
    if (text == index.data(Qt::EditRole).toString())
        // A cell that was only opened and left does not mark the job.
        return;
    if (model->setData(index, text, Qt::EditRole))
        Q_EMIT TextChanged(index);
}

bool ItemEditor::eventFilter(QObject* editor, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && KeyDown && KeyDown(*static_cast<QKeyEvent*>(event)))
        return true;
    return QStyledItemDelegate::eventFilter(editor, event);
}

}  // namespace tessarine
