#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>

#include "platform/Failure.h"
#include "report/FileReport.h"
#include "ui/run/SharedTexts.h"

namespace tessarine
{

/// The hits of one pair in one location of a file that are not kept.
struct HitsLeftOut {
    std::int32_t pair = 0;  ///< Position in the run's list, from 1.
    Location location = Location::Slides;
    std::int64_t count = 0;
};

/// What a run did with its files.
struct KindOfRun {
    bool replaces = false;
    bool counts = true;  ///< Off when the run told the first hit of each text alone.
};

/// What is kept of a file that a run is done with.
struct StoredFile {
    FileReport report;                 ///< With the hits that are kept.
    std::vector<HitsLeftOut> leftOut;  ///< What adds up to the report's `hitsLeftOut`, pair by pair.
    KindOfRun run;
};

/// A file as one block of bytes for the process that makes it. The pairs' texts stand in `texts`, as they are the same
/// in every file of a run; a block says little more of a pair than its counts.
QByteArray BlockOf(StoredFile file, SharedTexts& texts);

/// `DeviceIO`: what is stored can't be read.
Failure CannotReadBack();

/// The file of a block that BlockOf made with the same `texts`. Raises `DeviceIO` for bytes that are no such block.
StoredFile FromBlock(const QByteArray& block, const SharedTexts& texts);

}  // namespace tessarine
