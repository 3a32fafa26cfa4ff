#pragma once

#include <QWidget>

#include "ui/run/HitsModel.h"
#include "ui/run/RunTexts.h"

class QLabel;

namespace tessarine
{

class HitsView;

/// The hits of a node of the result trees: a line that names them, what there is to know of them all, and the list.
class HitsPane : public QWidget
{
    Q_OBJECT

public:
    explicit HitsPane(QWidget* parent = nullptr);

    void PutTexts(const RunTexts& texts);  ///< The language; before anything is shown.

    /// Shows hits. `pair` is the text of the pair that the selection is limited to.
    void Show(HitSelection selection, const String& pair);

    void ShowNone();                       ///< Nothing is selected: asks to select a node.
    void ShowFailure(const String& text);  ///< The hits of what is selected can't be told.

Q_SIGNALS:
    void OpenRequested(const String& path);  ///< A hit's file is to be opened.

private:
    void PutHeading(const QString& text);
    void PutNotice(const QString& text);  // hidden when it is empty
    QString Heading(const String& pair) const;
    QString Notice() const;

    RunTexts texts_;
    QLabel* lblHits = nullptr;
    QLabel* lblHitsNotice = nullptr;
    HitsView* lstHits = nullptr;
};

}  // namespace tessarine
