#pragma once

#include <QWidget>

class QLineEdit;

namespace tessarine
{

/// A pair of arrow buttons bound to a text box: they, the arrow keys and the wheel change the number in it in steps of
/// 1 from 0 to 9,999,999. A text that is no number counts as 0.
class UpDown : public QWidget
{
    Q_OBJECT

public:
    explicit UpDown(QLineEdit& box);

    bool eventFilter(QObject* box, QEvent* event) override;

private:
    void AddButton(Qt::ArrowType arrow, int step);
    void Step(int by);

    QLineEdit& box_;
};

}  // namespace tessarine
