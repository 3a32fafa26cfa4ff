#include "i18n/LanguageOfControls.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QToolBar>

#include "app/LanguageText.h"
#include "i18n/LanguageOfQt.h"
#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

/// The controls of one window and their texts.
class Controls
{
public:
    Controls(QWidget& window, const String& section) : window_(window), section_(section) {}

    template <class Control>
    void ApplyCaptionAndTip() const
    {
        ForEach<Control>([this](Control& control) {
            control.setText(Text(control, ".caption"));
            control.setToolTip(Text(control, ".ToolTipText"));
        });
    }

    template <class Control>
    void ApplyTip() const
    {
        ForEach<Control>([this](Control& control) { control.setToolTip(Text(control, ".ToolTipText")); });
    }

    void ApplyFrames() const
    {
        ForEach<QGroupBox>([this](QGroupBox& frame) { frame.setTitle(Text(frame, ".Caption")); });
    }

    void ApplyToolBars() const
    {
        ForEach<QToolBar>([this](QToolBar& bar) {
            bar.setToolTip(Text(bar, ".ToolTipText"));
            int number = 0;
            for (QAction* button : bar.actions())
                button->setToolTip(Text(bar, ".Buttons(" + QString::number(++number) + ").ToolTipText"));
        });
    }

    void ApplyMenus() const
    {
        for (const QMenuBar* bar : window_.findChildren<QMenuBar*>())
            ApplyMenu(bar->actions());
    }

private:
    /// The controls of this window, not of one that it owns, that have a name of ours; Qt's own parts have none, or one
    /// of theirs.
    template <class Control, class Apply>
    void ForEach(Apply apply) const
    {
        for (Control* control : window_.findChildren<Control*>())
            if (control->window() == &window_ && !control->objectName().isEmpty() &&
                !control->objectName().startsWith("qt_"))
                apply(*control);
    }

    void ApplyMenu(const QList<QAction*>& items) const
    {
        for (QAction* item : items) {
            // Recent files show their paths, for which no language has a text.
            if (item->objectName().isEmpty() || item->objectName().startsWith("mnuDefRF"))
                continue;
            const QString caption = Text(*item, ".caption");
            // The language file says which items are separators: those with the caption "-".
            item->setSeparator(caption == u"-");
            item->setText(item->isSeparator() ? QString() : caption);
            if (item->menu() != nullptr)
                ApplyMenu(item->menu()->actions());
        }
    }

    QString Text(const QObject& control, const QString& property) const
    {
        return ToQt(GetLngString(section_, FromQt(control.objectName() + property)));
    }

    QWidget& window_;
    String section_;
};

}  // namespace

void ApplyLanguage(QWidget& window, const String& section, ControlTips tips)
{
    UseLanguageOfQt();
    const Controls controls(window, section);
    controls.ApplyCaptionAndTip<QLabel>();
    controls.ApplyCaptionAndTip<QPushButton>();
    controls.ApplyCaptionAndTip<QRadioButton>();
    controls.ApplyCaptionAndTip<QCheckBox>();
    controls.ApplyTip<QComboBox>();
    controls.ApplyTip<QTableView>();
    if (tips == ControlTips::TextAndListBoxes) {
        controls.ApplyTip<QLineEdit>();
        controls.ApplyTip<QListWidget>();
    }
    controls.ApplyFrames();
    controls.ApplyToolBars();
    controls.ApplyMenus();
}

}  // namespace tessarine
