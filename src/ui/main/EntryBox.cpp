#include "ui/main/EntryBox.h"

#include <algorithm>

#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

namespace tessarine
{

namespace
{

bool AreDigits(const QString& text)
{
    return std::ranges::all_of(text, [](QChar character) { return character >= u'0' && character <= u'9'; });
}

}  // namespace

void EntryBox::dragEnterEvent(QDragEnterEvent* event)
{
    // Files come with their addresses as a text, which nobody wants in a box.
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QLineEdit::dragEnterEvent(event);
}

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
    // Backspace, Enter and the like come with a control character, arrows and function keys with no text.
    const bool isControl = typed.isEmpty() || typed.front() < u' ' || typed.front() == u'\x7f';
    if (isControl || AreDigits(typed))
        EntryBox::keyPressEvent(event);
    else
        event->accept();
}

/// Dead keys and compose sequences come as a finished text.
void NumberBox::inputMethodEvent(QInputMethodEvent* event)
{
    if (AreDigits(event->commitString()))
        EntryBox::inputMethodEvent(event);
    else
        event->accept();
}

}  // namespace tessarine
