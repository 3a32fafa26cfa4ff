#pragma once

#include <memory>

#include "app/Main.h"
#include "model/Excel.h"

namespace tessarine
{

/// The engines that this system has.
DesktopEngines SystemEngines();

/// What opens and writes list files here.
std::shared_ptr<excel::Provider> SystemExcel();

}  // namespace tessarine
