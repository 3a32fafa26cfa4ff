#include "support/qt/AccessibleTree.h"

#include <QAccessible>
#include <QMetaEnum>
#include <QWidget>

namespace tessarine
{

namespace
{

bool NeedsAName(const QAccessibleInterface& control)
{
    switch (control.role()) {
        case QAccessible::Button:
        case QAccessible::ButtonMenu:
        case QAccessible::CheckBox:
        case QAccessible::RadioButton:
        case QAccessible::ComboBox:
        case QAccessible::EditableText:
        case QAccessible::SpinBox:
        case QAccessible::ProgressBar:
        case QAccessible::List:
        case QAccessible::ListItem:
        case QAccessible::Table:
        case QAccessible::Tree:
        case QAccessible::TreeItem:
        case QAccessible::MenuItem:
        case QAccessible::PageTab:
        case QAccessible::Link:
        case QAccessible::Graphic:
        case QAccessible::Window:
        case QAccessible::Dialog:
            return true;
        default:
            return control.state().focusable && control.role() != QAccessible::Cell;
    }
}

void Gather(QAccessibleInterface& control, const std::string& around, std::vector<std::string>& unnamed)
{
    const QAccessible::State state = control.state();
    if (state.invisible || !control.isValid())
        return;
    const QString name = control.text(QAccessible::Name);
    const std::string role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(control.role());
    const std::string object = control.object() ? control.object()->objectName().toStdString() : std::string();
    const std::string here = around + "/" + role + " " + (name.isEmpty() ? object : name.toStdString());
    if (name.trimmed().isEmpty() && NeedsAName(control))
        unnamed.push_back(here);
    for (int i = 0; i < control.childCount(); ++i)
        if (QAccessibleInterface* const child = control.child(i))
            Gather(*child, here, unnamed);
}

}  // namespace

std::vector<std::string> UnnamedControls(QWidget& window)
{
    std::vector<std::string> unnamed;
    Gather(*QAccessible::queryAccessibleInterface(&window), {}, unnamed);
    return unnamed;
}

}  // namespace tessarine
