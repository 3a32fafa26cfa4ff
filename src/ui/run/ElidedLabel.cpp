#include "ui/run/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace tessarine
{

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // In the middle, so that the folder at the front and the file's name at the end can both be read.
    const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(), line,
                          foregroundRole());
}

LabelStrip::LabelStrip(QLabel* label, QWidget* parent) : QWidget(parent), label_(label)
{
    label->setParent(this);
    // Without a width of its own: a long path must not widen the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize LabelStrip::sizeHint() const
{
    return {0, label_->fontMetrics().height() + 2 * label_->margin()};
}

void LabelStrip::resizeEvent(QResizeEvent*)
{
    label_->setGeometry(rect());
}

}  // namespace tessarine
