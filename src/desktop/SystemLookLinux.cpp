#include "desktop/SystemLook.h"

namespace tessarine
{

// Qt's plugins for the desktops see to all of it.
void PrepareSystemLook() {}

QString StyleOfSystem()
{
    return {};
}

}  // namespace tessarine
