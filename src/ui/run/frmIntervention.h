#pragma once

#include <QDialog>

namespace tessarine
{

/// Tells the user how to get a PowerPoint going again that waits behind a box of its own. Shown modally; its texts are
/// English in every language. cmdRestart has no action, and no run shows the window. This is intended.
class frmIntervention : public QDialog
{
    Q_OBJECT

public:
    explicit frmIntervention(QWidget* parent = nullptr);

    void cmdOk_Click();

private:
    void BuildControls();
};

}  // namespace tessarine
