#pragma once

#include <QDialog>

namespace tessarine
{

/// Says what the program is: name, version, purpose. Shown modally; its texts are English in every language and can be
/// selected, so that a version can be copied. Esc and Enter close it as cmdQuit does.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr);

    void cmdQuit_Click();  ///< Closes the window.

private:
    void BuildControls();
};

}  // namespace tessarine
