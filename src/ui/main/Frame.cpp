#include "ui/main/Frame.h"

namespace tessarine
{

void Frame::paintEvent(QPaintEvent* event)
{
    // Without a title the group only holds its controls together and draws nothing.
    if (!title().isEmpty())
        QGroupBox::paintEvent(event);
}

}  // namespace tessarine
