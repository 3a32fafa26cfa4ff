#include "ui/run/FilterBar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include "ui/run/ElidedLabel.h"

namespace tessarine
{

FilterBar::FilterBar(int number, bool hasPairs, QWidget* parent)
    : QWidget(parent), txtFilter(new QLineEdit(this)), lblShown(new ElidedLabel(this))
{
    txtFilter->setObjectName(QString("txtFilter(%1)").arg(number));
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setMinimumWidth(fontMetrics().averageCharWidth() * 14);  // enough for a word
    lblShown->setTextFormat(Qt::PlainText);
    // Its figures must not widen the window.
    lblShown->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblShown->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(txtFilter, 2);
    if (hasPairs) {
        chkOnlyWithHits = new QCheckBox(this);
        chkOnlyWithHits->setObjectName("chkOnlyWithHits");
        row->addWidget(chkOnlyWithHits);
        connect(chkOnlyWithHits, &QCheckBox::toggled, this, &FilterBar::OnlyWithHitsChanged);
    }
    row->addWidget(lblShown, 3);
    connect(txtFilter, &QLineEdit::textEdited, this, &FilterBar::TextEdited);
}

void FilterBar::PutTexts(const RunTexts& texts)
{
    const QString& text = texts(u"txtFilter.EmptyText");
    txtFilter->setPlaceholderText(text);
    txtFilter->setAccessibleName(text);
    txtFilter->setToolTip(texts(u"txtFilter.ToolTipText"));
}

QString FilterBar::Text() const
{
    return txtFilter->text();
}

void FilterBar::PutText(const QString& text)
{
    txtFilter->setText(text);
}

bool FilterBar::IsOnlyWithHits() const
{
    return chkOnlyWithHits != nullptr && chkOnlyWithHits->isChecked();
}

void FilterBar::PutTotals(const QString& text)
{
    lblShown->setText(text);
}

void FilterBar::FocusText()
{
    txtFilter->setFocus(Qt::ShortcutFocusReason);
    txtFilter->selectAll();
}

QList<QWidget*> FilterBar::TabOrder() const
{
    if (chkOnlyWithHits == nullptr)
        return {txtFilter};
    return {txtFilter, chkOnlyWithHits};
}

}  // namespace tessarine
