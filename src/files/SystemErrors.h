#pragma once

#include <string>

namespace tessarine
{

/// The system's words for an error, an errno value. Calls below leave their reasons in errno on Windows, too, where the
/// system's own errors are translated.
std::string ErrorText(int error);

}  // namespace tessarine
