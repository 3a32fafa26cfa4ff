#pragma once

#include <QString>
#include <QStringView>

#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// Whether a file's name holds a text, in capitals or not; with a "/" or "\" in the text, whether the path does. True
/// for an empty text.
bool NameMatches(QStringView path, const QString& text);

/// Which nodes of a result tree are shown.
struct NodeFilter {
    /// Files that match this text (NameMatches).
    QString name;

    /// Pairs without hits are left out. Lines stay.
    bool onlyPairsWithHits = false;

    bool ShowsFile(const ResultNodes& nodes, ResultNodes::Position file) const;
    bool ShowsItem(const ResultNodes& nodes, ResultNodes::Position file, ResultNodes::Position item) const;

    bool operator==(const NodeFilter&) const = default;
};

}  // namespace tessarine
