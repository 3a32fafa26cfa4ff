#pragma once

#include <QLineEdit>

namespace tessarine
{

/// A text box that tells of clicks.
class EntryBox : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

Q_SIGNALS:
    void Click();
    void DblClick();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

/// A text box for a count: of what is typed, digits alone pass, by whatever way it comes. Pasted text passes whole.
class NumberBox : public EntryBox
{
    Q_OBJECT

public:
    using EntryBox::EntryBox;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
};

}  // namespace tessarine
