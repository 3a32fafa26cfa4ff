#include "Themes.h"

#include <QApplication>
#include <QStyle>

#include "desktop/DarkColours.h"

namespace tessarine
{

QPalette LightTheme()
{
    return QApplication::style()->standardPalette();
}

QPalette DarkTheme()
{
    return DarkColours();
}

}  // namespace tessarine
