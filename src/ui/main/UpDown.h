#pragma once

#include <QWidget>

class QLineEdit;

namespace tessarine
{

/// A pair of arrow buttons bound to a text box: they, the arrow keys and the wheel change the number in it in steps of
/// 1 from 0 to 9,999,999. The wheel does so only in a box that has the focus, so that scrolling past one changes
/// nothing. A text that isn't a whole number of 32 bits counts as 0, and no step leads out of the range.
class UpDown : public QWidget
{
    Q_OBJECT

public:
    /// `box` must live for as long as the buttons.
    explicit UpDown(QLineEdit& box);

    /// Takes keys and wheel from the box.
    bool eventFilter(QObject* box, QEvent* event) override;

private:
    void AddButton(Qt::ArrowType arrow, int step);
    void Step(int by);  // within the range; the box has the focus afterwards

    QLineEdit& box_;
};

}  // namespace tessarine
