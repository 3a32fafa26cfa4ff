#pragma once

#include <QLabel>

namespace tessarine
{

/// One line of plain text that is cut in the middle when there is no room for all of it, with "…" in place of what is
/// left out, so that a long path does not widen the window. `text()` is always the whole text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override;  ///< Draws as much as fits.
};

/// The place of a label in a layout, which the text has no part in: a text that changes with every file would else lay
/// out the whole window each time, which takes longer than to draw it.
class LabelStrip : public QWidget
{
    Q_OBJECT

public:
    /// Takes the label over as its child, and keeps it as large as itself.
    explicit LabelStrip(QLabel* label, QWidget* parent = nullptr);

    /// As high as a line of the label's text; any width will do.
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;  ///< Passes the size on to the label.

private:
    QLabel* label_;
};

}  // namespace tessarine
