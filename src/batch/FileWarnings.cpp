#include "batch/FileWarnings.h"

#include <utility>

namespace tessarine::batch
{

// The path that comes with a warning is not looked at: a link's target has another one than the file of the report.
FileWarnings::FileWarnings()
    : before_(SetWarningReceiver([this](const String&, const String& text) { texts_.push_back(text); }))
{
}

FileWarnings::~FileWarnings()
{
    SetWarningReceiver(std::move(before_));
}

std::vector<String> FileWarnings::Take()
{
    return std::exchange(texts_, {});
}

}  // namespace tessarine::batch
