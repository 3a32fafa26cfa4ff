#include "desktop/DarkColours.h"

namespace tessarine
{

QPalette DarkColours()
{
    const QColor window(0x2a, 0x2d, 0x32);
    const QColor text(0xe4, 0xe6, 0xea);
    const QColor faint(0x86, 0x8c, 0x96);
    QPalette colours(window);
    colours.setColor(QPalette::Window, window);
    colours.setColor(QPalette::Button, QColor(0x35, 0x39, 0x40));
    colours.setColor(QPalette::Base, QColor(0x20, 0x23, 0x26));
    colours.setColor(QPalette::AlternateBase, QColor(0x28, 0x2c, 0x33));
    colours.setColor(QPalette::Highlight, QColor(0x3b, 0x78, 0xc9));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    colours.setColor(QPalette::ToolTipBase, window);
    colours.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        colours.setColor(role, text);
        colours.setColor(QPalette::Disabled, role, faint);
    }
    return colours;
}

}  // namespace tessarine
