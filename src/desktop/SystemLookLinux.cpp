#include <QApplication>

#include "desktop/OutlinedStyle.h"
#include "desktop/SystemLook.h"

namespace tessarine
{

// Qt's plugins for the desktops see to it.
void PrepareSystemLook() {}

void ApplySystemLook()
{
    QApplication::setStyle(new OutlinedStyle);  // the application owns it
}

}  // namespace tessarine
