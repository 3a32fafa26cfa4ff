#include <QApplication>

#include "desktop/DarkColours.h"
#include "desktop/OutlinedStyle.h"
#include "desktop/SystemLook.h"
#include "platform/WindowsHeaders.h"

#include <commctrl.h>

namespace tessarine
{

namespace
{

/// The user's choice for windows of programs. A desktop of high contrast has colours of its own.
bool IsDark()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0)
        return false;
    DWORD isLight = 1;
    DWORD size = sizeof isLight;
    return RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size) == ERROR_SUCCESS &&
           isLight == 0;
}

}  // namespace

void PrepareSystemLook()
{
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_USEREX_CLASSES};
    InitCommonControlsEx(&controls);
    // 1: title bars follow the desktop. Qt's own dark colours (2) fill empty check boxes.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:darkmode=1");
}

void ApplySystemLook()
{
    const bool isDark = IsDark();
    QApplication::setStyle(new OutlinedStyle(isDark ? QStringLiteral("Fusion") : QString()));  // owned by it
    if (isDark)
        QApplication::setPalette(DarkColours());
}

}  // namespace tessarine
