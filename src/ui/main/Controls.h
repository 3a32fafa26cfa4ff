#pragma once

#include <utility>

#include <QPushButton>
#include <QString>

#include "icons/Icons.h"

/// Making of controls under their names. Parents come with the layouts that the controls are put into.
namespace tessarine
{

/// A control of a class under its name. `arguments` are those of the class's constructor, without the parent.
template <class Control, class... Arguments>
Control* Named(const char* name, Arguments&&... arguments)
{
    auto* const control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(name);
    return control;
}

/// The same for a member of an array of controls, whose name is "name(index)".
template <class Control, class... Arguments>
Control* NamedMember(const char* name, int index, Arguments&&... arguments)
{
    auto* const control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(QStringLiteral("%1(%2)").arg(QString::fromLatin1(name)).arg(index));
    return control;
}

/// A button that shows a picture in place of a caption.
inline QPushButton* NamedPictureButton(const char* name, const char* icon)
{
    auto* const button = Named<QPushButton>(name, Icon(icon), QString());
    button->setAutoDefault(false);
    return button;
}

}  // namespace tessarine
