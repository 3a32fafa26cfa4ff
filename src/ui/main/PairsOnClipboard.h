#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "model/FindAndReplaceItem.h"

class QMimeData;

/// Pairs on the clipboard: as a table of two columns for spreadsheets, and whole for this program.
namespace tessarine
{

struct ClipboardPair {
    String FindWhat;
    String ReplaceWith;
    std::optional<OptionSetting> setting;  ///< Where the clipboard tells it.
};

/// The caller owns what comes back; the clipboard takes it.
QMimeData* PairsForClipboard(const std::vector<std::shared_ptr<FindAndReplaceItem>>& pairs);

/// The pairs of rows from here, with their settings, or of a table: its first column is what to find, its second what
/// takes its place; further ones, and rows without a text, are left out. The headings of a list file are no pair, and
/// with all of them (model/ListColumns.h) its switches are the pairs' settings.
std::vector<ClipboardPair> PairsFromClipboard(const QMimeData& data);

}  // namespace tessarine
