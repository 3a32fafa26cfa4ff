#include "ui/main/TabPage.h"

#include <QEvent>
#include <QScreen>

namespace tessarine
{

TabPage::TabPage(QWidget* frame, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);  // its controls have the focus
    setWidget(frame);             // which watches the frame with this object's eventFilter
    viewport()->setAutoFillBackground(false);
    frame->setAutoFillBackground(false);
}

QSize TabPage::minimumSizeHint() const
{
    // Menus, tool bar, tabs, start buttons and status line stand around a page, and at times a notice of several lines:
    // without room for that one too the window would grow over the edge of the screen when it comes.
    const QSize around(fontMetrics().height() * 4, fontMetrics().height() * 22);
    const QSize room = (screen()->availableSize() - around).expandedTo({0, 0});
    return widget()->minimumSizeHint().boundedTo(room);
}

QSize TabPage::sizeHint() const
{
    return widget()->sizeHint();
}

bool TabPage::eventFilter(QObject* watched, QEvent* event)
{
    // Another language, or a line that appears, asks for other room.
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace tessarine
