#include "batch/LineAtTheEnd.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "batch/LineText.h"

namespace tessarine::batch
{

std::string LineAtTheEnd(const std::vector<String>& inHand)
{
    if (inHand.empty())
        return "tessarine-batch: ended at once\n";
    std::vector<std::string> names;
    for (const String& path : inHand)
        names.push_back(Escaped(path));
    return fmt::format("tessarine-batch: ended at once in the middle of {}, {} as it was or changed completely\n",
                       fmt::join(names, ", "), inHand.size() == 1 ? "which is" : "each of which is");
}

}  // namespace tessarine::batch
