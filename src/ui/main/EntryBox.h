#pragma once

#include <QLineEdit>

namespace tessarine
{

/// A text box of one line that tells of clicks, and leaves files that are dropped on it to its window.
class EntryBox : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

Q_SIGNALS:
    /// The left button was pressed and released over the box; each half of a double click counts.
    void Click();

    /// The left button was clicked twice in a row. The word below the pointer is selected by then.
    void DblClick();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;  ///< Takes texts; files are for the window.
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

/// A text box for a count. Of what is typed, digits alone pass, whether they come from keys or from an input method;
/// the keys that edit work as everywhere. Pasted text passes whole, so that the box may hold something that is no
/// number.
class NumberBox : public EntryBox
{
    Q_OBJECT

public:
    using EntryBox::EntryBox;

protected:
    void keyPressEvent(QKeyEvent* event) override;             ///< Takes keys for other characters and drops them.
    void inputMethodEvent(QInputMethodEvent* event) override;  ///< Drops a text unless it is all digits.
};

}  // namespace tessarine
