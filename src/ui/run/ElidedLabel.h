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

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The place of a label in a layout, which the text has no part in: a text that changes with every file would else lay
/// out the whole window each time, which takes longer than to draw it.
class LabelStrip : public QWidget
{
    Q_OBJECT

public:
    explicit LabelStrip(QLabel* label, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* label_;
};

}  // namespace tessarine
