#pragma once

#include <QString>

#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// Which nodes of a result tree are shown.
struct NodeFilter {
    /// Files whose name holds this text, in capitals or not; with a "/" or "\" in it, files whose path does. All when
    /// it is empty.
    QString name;

    /// Pairs without hits are left out. Lines stay.
    bool onlyPairsWithHits = false;

    bool ShowsFile(const ResultNodes& nodes, ResultNodes::Position file) const;
    bool ShowsItem(const ResultNodes& nodes, ResultNodes::Position file, ResultNodes::Position item) const;

    bool operator==(const NodeFilter&) const = default;
};

}  // namespace tessarine
