#pragma once

#include <QLabel>

namespace tessarine
{

/// One line of plain text that gives way in the middle when there is no room for all of it, so that a long path does
/// not widen the window.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessarine
