#include "ui/run/frmIntervention.h"

#include <array>

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "log/Treatments.h"

namespace tessarine
{

namespace
{

/// Intended: odd blanks and letters are kept, so that old descriptions of this window still fit it.
constexpr std::array lines{
    "Microsoft PowerPoint is not responding  to Tessarine's Instructions",
    "1. Press [Alt+Tab] to switch to Microsoft PowerPoint",
    "2. Clear the message box Microsoft PowerPoint is showing ( you may have to drag this                message box "
    "out of the way to see it)",
    "3. Press [Alt+tab] to return to Tessarine",
    "4. Click Ok below",
    "(this Message box will clear automatically if Microsoft PowerPoint starts again)",
};

}  // namespace

frmIntervention::frmIntervention(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmIntervention");
    setWindowTitle("Manual Intervention *May* be required");
    BuildControls();
}

void frmIntervention::BuildControls()
{
    auto* const Frame1 = new QGroupBox(this);
    Frame1->setObjectName("Frame1");
    auto* const texts = new QVBoxLayout(Frame1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto* const label = new QLabel(lines[i], Frame1);
        label->setObjectName(QStringLiteral("Label%1").arg(i + 1));
        texts->addWidget(label);
        if (i == 0) {
            QFont headline = label->font();
            headline.setBold(true);
            label->setFont(headline);
            texts->addSpacing(fontMetrics().height() / 2);
        }
    }

    auto* const buttons = new QDialogButtonBox(this);  // the desktop's own order of the two
    auto* const cmdOk = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    cmdOk->setObjectName("cmdOk");
    cmdOk->setDefault(true);
    // Without a handler, for the reason in the header.
    auto* const cmdRestart = buttons->addButton("Restart Microsofts PowerPoint", QDialogButtonBox::ActionRole);
    cmdRestart->setObjectName("cmdRestart");

    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(Frame1);
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    connect(cmdOk, &QPushButton::clicked, this, &frmIntervention::cmdOk_Click);
}

void frmIntervention::cmdOk_Click()
{
    LogAndReturn({u"cmdOk_Click", u"Form frmIntervention"}, [this] { accept(); });
}

}  // namespace tessarine
