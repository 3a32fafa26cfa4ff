#pragma once

#include <string>
#include <vector>

class QWidget;

namespace tessarine
{

/// The controls in sight of a window that a screen reader would have no name for, as "role below the names of those
/// around it". Texts and containers need none; what can be operated, looked through or watched does.
std::vector<std::string> UnnamedControls(QWidget& window);

}  // namespace tessarine
