#pragma once

#include <memory>

#include "model/Excel.h"

namespace tessarine
{

/// What opens and writes list files here.
std::shared_ptr<excel::Provider> SystemExcel();

}  // namespace tessarine
