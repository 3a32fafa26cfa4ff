#pragma once

#include <QWidget>

#include "ui/run/RunTexts.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace tessarine
{

/// What stands above a result tree: the box that filters its files, for a tree with pairs the check box that hides
/// those without hits, and what the files shown add up to.
class FilterBar : public QWidget
{
    Q_OBJECT

public:
    /// The box is named by the tree's number: "txtFilter(0)". `hasPairs` adds "chkOnlyWithHits". The label has no name,
    /// because its text comes from PutTotals alone.
    FilterBar(int number, bool hasPairs, QWidget* parent = nullptr);

    void PutTexts(const RunTexts& texts);  ///< Those that no language file reaches by a control's name.

    QString Text() const;
    void PutText(const QString& text);  ///< Raises no TextEdited.
    bool IsOnlyWithHits() const;        ///< False without the check box.
    void PutTotals(const QString& text);

    void FocusText();  ///< To the box, with its text selected.
    QList<QWidget*> TabOrder() const;

Q_SIGNALS:
    void TextEdited(const QString& text);  ///< By the user.
    void OnlyWithHitsChanged();

private:
    QLineEdit* txtFilter;
    QCheckBox* chkOnlyWithHits = nullptr;
    QLabel* lblShown;
};

}  // namespace tessarine
