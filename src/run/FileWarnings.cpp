#include "run/FileWarnings.h"

#include <algorithm>
#include <utility>

namespace tessarine
{

// The path that comes with a warning is not looked at: a link's target has another one than the file of the report.
FileWarnings::FileWarnings()
    : before_(SetWarningReceiver([this](const String&, const String& text) {
          // A shape may be told of by every pair.
          if (std::ranges::find(texts_, text) == texts_.end())
              texts_.push_back(text);
      }))
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

}  // namespace tessarine
