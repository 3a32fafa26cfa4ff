#pragma once

#include <string_view>

namespace tessarine::batch
{

/// The first twelve digits of the commit that the program was built from. Empty when the sources came without one.
/// The build writes its source (cmake/Commit.cmake).
std::string_view Commit();

}  // namespace tessarine::batch
