#pragma once

#include <QDialog>

namespace tessarine
{

/// Says what the program is. Shown modally; its texts are English in every language. Esc and Enter close it as cmdQuit
/// does.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr);

    void cmdQuit_Click();

private:
    void BuildControls();
};

}  // namespace tessarine
