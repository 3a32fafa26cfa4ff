#include "ui/run/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace tessarine
{

QSize ElidedLabel::minimumSizeHint() const
{
    constexpr int letters = 12;
    return {fontMetrics().averageCharWidth() * letters, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(), line,
                          foregroundRole());
}

}  // namespace tessarine
