#pragma once

#include <utility>

#include <QPushButton>
#include <QString>

#include "icons/Icons.h"

/// Making of controls under their names. Parents come with the layouts that the controls are put into.
namespace tessarine
{

template <class Control, class... Arguments>
Control* Named(const char* name, Arguments&&... arguments)
{
    auto* const control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(name);
    return control;
}

/// A member of an array of controls: "name(index)".
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
