#pragma once

#include <QDialog>

namespace tessarine
{

/// Tells the user how to get a PowerPoint going again that waits with a box of its own. Shown modally; its texts are
/// English in every language. OK and Escape close it.
///
/// Intended: cmdRestart has no action, and no run shows the window by itself. Nothing watches over PowerPoint while it
/// works, so that a run can't tell one that waits from one that is busy.
class frmIntervention : public QDialog
{
    Q_OBJECT

public:
    explicit frmIntervention(QWidget* parent = nullptr);

    void cmdOk_Click();  ///< Closes the window; the run goes on.

private:
    void BuildControls();
};

}  // namespace tessarine
