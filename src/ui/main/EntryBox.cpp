#include "ui/main/EntryBox.h"

#include <QKeyEvent>

namespace tessarine
{

void EntryBox::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT Click();
}

void EntryBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    QLineEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT DblClick();
}

void NumberBox::keyPressEvent(QKeyEvent* event)
{
    const QString typed = event->text();
    const bool isCharacter = !typed.isEmpty() && typed.front().isPrint();
    const bool isDigit = typed.size() == 1 && typed.front() >= u'0' && typed.front() <= u'9';
    if (isCharacter && !isDigit)
        event->accept();
    else
        EntryBox::keyPressEvent(event);
}

}  // namespace tessarine
