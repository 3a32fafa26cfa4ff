#include "ui/main/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>

#include "ui/main/Controls.h"

namespace tessarine
{

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      txtFindPair(Named<QLineEdit>("txtFindPair")),
      cmdFindPrevious(Named<QPushButton>("cmdFindPrevious")),
      cmdFindNext(Named<QPushButton>("cmdFindNext")),
      cmdFindClose(Named<QPushButton>("cmdFindClose")),
      lblFindResult(Named<QLabel>("lblFindResult"))
{
    setObjectName("findBar");
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(txtFindPair, 1);
    for (QPushButton* button : {cmdFindPrevious, cmdFindNext}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    lblFindResult->setTextFormat(Qt::PlainText);
    row->addWidget(lblFindResult, 1);
    cmdFindClose->setAutoDefault(false);
    row->addWidget(cmdFindClose);

    connect(txtFindPair, &QLineEdit::textEdited, this, &FindBar::TextEdited);
    connect(cmdFindPrevious, &QPushButton::clicked, this, &FindBar::Previous);
    connect(cmdFindNext, &QPushButton::clicked, this, &FindBar::Next);
    connect(cmdFindClose, &QPushButton::clicked, this, &FindBar::Close);
    hide();
}

void FindBar::Open()
{
    show();
    txtFindPair->setFocus(Qt::ShortcutFocusReason);
    txtFindPair->selectAll();
    // On a small screen the page scrolls, and the bar may lie below what is seen of it. It has its place when the
    // layout is done.
    QTimer::singleShot(0, this, &FindBar::ScrollIntoSight);
}

void FindBar::ScrollIntoSight()
{
    for (QWidget* around = parentWidget(); around != nullptr; around = around->parentWidget())
        if (auto* const page = qobject_cast<QScrollArea*>(around))
            page->ensureWidgetVisible(txtFindPair, 0, height() / 2);
}

QString FindBar::Text() const
{
    return txtFindPair->text();
}

void FindBar::PutResult(const QString& text)
{
    lblFindResult->setText(text);
}

void FindBar::PutPlaceholder(const QString& text)
{
    txtFindPair->setPlaceholderText(text);
    txtFindPair->setAccessibleName(text);
}

QList<QWidget*> FindBar::TabOrder() const
{
    return {txtFindPair, cmdFindPrevious, cmdFindNext, cmdFindClose};
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        Close();
    else if (isEnter && event->modifiers().testFlag(Qt::ShiftModifier))
        Q_EMIT Previous();
    else if (isEnter)
        Q_EMIT Next();
    else
        QWidget::keyPressEvent(event);
}

void FindBar::Close()
{
    hide();
    Q_EMIT Closed();
}

}  // namespace tessarine
