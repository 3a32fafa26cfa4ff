#include "desktop/OutlinedStyle.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>

namespace tessarine
{

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRound = element == PE_IndicatorRadioButton;
    // Of 0 to 255. On a lighter ground the style's own frame can be seen well enough.
    constexpr int middle = 128;
    if ((!isRound && element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck) ||
        option->palette.color(QPalette::Window).lightness() >= middle)
        return;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(option->palette.color(QPalette::PlaceholderText));
    painter->setBrush(Qt::NoBrush);
    // Half a pixel inside, so that the line covers whole pixels and stays sharp.
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    constexpr qreal corner = 2;
    if (isRound)
        painter->drawEllipse(outline);
    else
        painter->drawRoundedRect(outline, corner, corner);
    painter->restore();
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element != CE_ShapedFrame || qobject_cast<const QAbstractItemView*>(widget) == nullptr || !widget->hasFocus())
        return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void OutlinedStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (widget->isWindow())
        widget->installEventFilter(this);
}

bool OutlinedStyle::eventFilter(QObject* watched, QEvent* event)
{
    // Qt takes the attribute away from each window that it shows.
    if (event->type() == QEvent::Show)
        static_cast<QWidget*>(watched)->setAttribute(Qt::WA_KeyboardFocusChange);
    return QProxyStyle::eventFilter(watched, event);
}

}  // namespace tessarine
