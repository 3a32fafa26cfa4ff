#include "batch/ProgressText.h"

#include <algorithm>

#include <fmt/format.h>

#include "report/RunTimes.h"

namespace tessarine::batch
{

std::string ProgressText(const ProgressOfRun& progress)
{
    const std::int64_t files = std::max<std::int64_t>(progress.files, 1);
    std::string text = fmt::format("[{}/{}] {}%", progress.done + 1, progress.files, progress.done * 100 / files);
    if (progress.failed > 0)
        text += fmt::format(", {} failed", progress.failed);
    if (progress.done >= 3 && progress.seconds >= 2) {
        // Rounded up: "0:00 left" would be there while a file is still to come.
        const std::int64_t left =
            (progress.seconds * (progress.files - progress.done) + progress.done - 1) / progress.done;
        text += ", " + ToUtf8(DurationText(left)) + " left";
    }
    return text;
}

}  // namespace tessarine::batch
