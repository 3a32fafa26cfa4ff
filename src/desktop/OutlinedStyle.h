#pragma once

#include <QProxyStyle>

namespace tessarine
{

/// The desktop's style, with what it leaves unseen:
///
/// - outlines around check boxes and option buttons on a dark desktop, where Qt's own style draws them darker than the
///   background; on a light one nothing is added
/// - the focus: it is drawn from the start and not only after the first key, and around lists, which otherwise show it
///   by their current row alone, and not at all while they are empty
class OutlinedStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Outlines for a style by its name; for the desktop's when it is empty.
    explicit OutlinedStyle(const QString& style = {}) : QProxyStyle(style) {}

    /// Has the desktop's style draw, and puts the outline over what it has drawn.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

    /// The same for the focus around a list.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;  ///< Has a window show its focus from the start.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tessarine
