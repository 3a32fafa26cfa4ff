#pragma once

#include <memory>

#include "model/Excel.h"

namespace tessarine
{

/// Excel where it can be created, and `otherwise` where it can't: lists can be imported and exported on every machine.
/// Which of them it is, is asked anew for each list.
std::shared_ptr<excel::Provider> FirstExcel(std::shared_ptr<excel::Provider> excel,
                                            std::shared_ptr<excel::Provider> otherwise);

}  // namespace tessarine
