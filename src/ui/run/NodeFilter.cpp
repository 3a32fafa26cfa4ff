#include "ui/run/NodeFilter.h"

#include <algorithm>

namespace tessarine
{

bool NameMatches(QStringView path, const QString& text)
{
    if (text.isEmpty())
        return true;
    if (!text.contains(u'/') && !text.contains(u'\\'))
        // Both separators: the folder that all files are in must not make them all match.
        path = path.mid(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
    return path.contains(text, Qt::CaseInsensitive);
}

bool NodeFilter::ShowsFile(const ResultNodes& nodes, ResultNodes::Position file) const
{
    return NameMatches(nodes.FileText(file), name);
}

bool NodeFilter::ShowsItem(const ResultNodes& nodes, ResultNodes::Position file, ResultNodes::Position item) const
{
    return !onlyPairsWithHits || nodes.KindOf(file, item) != ItemKind::PairWithoutHits;
}

}  // namespace tessarine
