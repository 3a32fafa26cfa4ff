#pragma once

#include <QStyledItemDelegate>

#include "report/HitText.h"

namespace tessarine
{

/// A line of context that fits a width, in pixels. The hit stays in sight: what is around it is cut first, and equally
/// where both sides are long; a hit that is longer than the line is cut in its middle.
HitLine Fitted(const HitLine& line, int width, const QFontMetrics& around, const QFontMetrics& ofHit);

/// Draws a HitRow: its place, and below it the line of context with the hit marked. Old text is struck through, the new
/// one stands after it.
class HitDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Two lines of text, whatever stands in them.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace tessarine
