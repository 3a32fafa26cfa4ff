#pragma once

#include <QProxyStyle>

namespace tessarine
{

/// The desktop's style, with outlines around check boxes and option buttons that can be seen on a dark desktop: Qt's
/// own style draws them darker than the background, whatever that is. On a light desktop nothing is added.
class OutlinedStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Outlines for a style by its name; for the desktop's when it is empty.
    explicit OutlinedStyle(const QString& style = {}) : QProxyStyle(style) {}

    /// Has the desktop's style draw, and puts the outline over what it has drawn.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace tessarine
