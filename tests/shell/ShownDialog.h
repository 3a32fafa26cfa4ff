#pragma once

#include <functional>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessarine
{

/// Acts on the dialog that comes up next, which must then be closed.
inline void WhenShown(std::function<void(QFileDialog&)> act)
{
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            WhenShown(act);  // not up yet
        else
            act(*dialog);
    });
}

/// Presses the button that takes the choice; a dialog that stays open then is cancelled.
inline void Confirm(QFileDialog& dialog)
{
    const auto& buttons = *dialog.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : buttons.buttons())
        if (buttons.buttonRole(button) == QDialogButtonBox::AcceptRole)
            QTest::mouseClick(button, Qt::LeftButton);
    if (dialog.isVisible())
        dialog.reject();
}

}  // namespace tessarine
