#include "ui/main/ItemEditor.h"

#include <limits>

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QToolTip>

#include "ui/main/CellText.h"

namespace tessarine
{

QWidget* ItemEditor::createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
    qobject_cast<QLineEdit*>(editor)->setMaxLength(std::numeric_limits<int>::max());  // 32,767 of itself
    return editor;
}

QString ItemEditor::displayText(const QVariant& value, const QLocale& /*locale*/) const
{
    return OnOneLine(value.toString());
}

bool ItemEditor::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                           const QModelIndex& index)
{
    const bool isTyped = (index.flags() & Qt::ItemIsEditable) != 0;
    const QString text = index.data().toString();
    const bool isMarked = !index.data(Qt::DecorationRole).isNull();  // the tip tells why
    if (event->type() == QEvent::ToolTip && isTyped && !isMarked && text == OnOneLine(text) &&
        sizeHint(option, index).width() <= option.rect.width())
        QToolTip::hideText();
    else
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    return true;
}

void ItemEditor::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->icon.isNull())
        return;
    const QPixmap sign = option->icon.pixmap(option->decorationSize, option->widget->devicePixelRatioF());
    option->icon = QIcon(sign);
    option->icon.addPixmap(sign, QIcon::Selected);
}

void ItemEditor::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // Comes again whenever the row changes, be it that the pointer moves over it. A text that is being typed must not
    // be lost by that, and putting the same one again would take the selection away.
    const auto& edit = *qobject_cast<QLineEdit*>(editor);
    if (!edit.isModified() && edit.text() != index.data(Qt::EditRole).toString())
        QStyledItemDelegate::setEditorData(editor, index);
}

void ItemEditor::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const QString text = qobject_cast<QLineEdit*>(editor)->text();
    const QString before = index.data(Qt::EditRole).toString();
    if (text == before)
        // A cell that was only opened and left does not mark the job.
        return;
    if (model->setData(index, text, Qt::EditRole))
        Q_EMIT TextChanged(index, before);
}

bool ItemEditor::eventFilter(QObject* editor, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && KeyDown && KeyDown(*static_cast<QKeyEvent*>(event)))
        return true;
    return QStyledItemDelegate::eventFilter(editor, event);
}

}  // namespace tessarine
