#pragma once

#include <QScrollArea>

namespace tessarine
{

/// A page of the main window's tabs: shows its frame whole wherever the screen has room for that, and scrolls it where
/// it has not. Tab scrolls to the control that it reaches.
class TabPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit TabPage(QWidget* frame, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tessarine
