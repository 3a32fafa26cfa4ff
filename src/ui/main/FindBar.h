#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tessarine
{

/// The bar below the grid that looks for a text in the list: a box, buttons for the next and the previous row, and what
/// came of it. Hidden until it is opened; Esc closes it, Enter goes to the next row, with Shift to the previous one.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    void Open();  ///< Shows the bar; its text is selected and has the focus.
    QString Text() const;
    void PutResult(const QString& text);
    void PutPlaceholder(const QString& text);  ///< In the box while it is empty, and its name for screen readers.
    QList<QWidget*> TabOrder() const;

Q_SIGNALS:
    void TextEdited();  ///< By the user.
    void Next();
    void Previous();
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ScrollIntoSight();
    void Close();

    QLineEdit* txtFindPair;
    QPushButton* cmdFindPrevious;
    QPushButton* cmdFindNext;
    QPushButton* cmdFindClose;
    QLabel* lblFindResult;
};

}  // namespace tessarine
