#include "ui/run/GreyText.h"

namespace tessarine
{

QColor GreyText(const QPalette& palette)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor back = palette.color(QPalette::Base);
    const auto between = [](int ofText, int ofBack) { return (2 * ofText + ofBack) / 3; };
    return {between(text.red(), back.red()), between(text.green(), back.green()), between(text.blue(), back.blue())};
}

}  // namespace tessarine
