#include "ui/main/Frame.h"

namespace tessarine
{

void Frame::paintEvent(QPaintEvent* event)
{
    if (!title().isEmpty())
        QGroupBox::paintEvent(event);
}

}  // namespace tessarine
