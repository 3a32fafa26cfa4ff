#include "ui/main/UpDown.h"

#include <algorithm>

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace tessarine
{

UpDown::UpDown(QLineEdit& box) : box_(box)
{
    auto* const buttons = new QVBoxLayout(this);
    buttons->setContentsMargins({});
    buttons->setSpacing(0);
    AddButton(Qt::UpArrow, 1);
    AddButton(Qt::DownArrow, -1);
    setFixedHeight(box.sizeHint().height());
    box.installEventFilter(this);
}

void UpDown::AddButton(Qt::ArrowType arrow, int step)
{
    auto* const button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAccessibleName(step > 0 ? QStringLiteral("+") : QStringLiteral("-"));
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);  // the box has the keys
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    // The two share the height of one box, which is less than Qt would give them.
    button->setMinimumHeight(1);
    layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, step] { Step(step); });
}

void UpDown::Step(int by)
{
    constexpr int highest = 9'999'999;
    box_.setText(QString::number(std::clamp(box_.text().toInt() + by, 0, highest)));
    box_.setFocus();  // so that the arrow keys go on where the mouse has begun
}

bool UpDown::eventFilter(QObject* box, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            Step(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    // Without the focus the wheel scrolls, and must not change a number that the pointer passes.
    if (event->type() == QEvent::Wheel && box_.hasFocus() && box_.isEnabled()) {
        Step(static_cast<QWheelEvent*>(event)->angleDelta().y() > 0 ? 1 : -1);
        return true;
    }
    return QWidget::eventFilter(box, event);
}

}  // namespace tessarine
