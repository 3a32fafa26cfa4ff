#include "ui/run/NodeFilter.h"

#include <QStringView>

namespace tessarine
{

bool NodeFilter::ShowsFile(const ResultNodes& nodes, ResultNodes::Position file) const
{
    if (name.isEmpty())
        return true;
    QStringView path(nodes.FileText(file));
    if (!name.contains(u'/') && !name.contains(u'\\'))
        // Both separators: the folder that all files are in must not make them all match.
        path = path.mid(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
    return path.contains(name, Qt::CaseInsensitive);
}

bool NodeFilter::ShowsItem(const ResultNodes& nodes, ResultNodes::Position file, ResultNodes::Position item) const
{
    return !onlyPairsWithHits || nodes.KindOf(file, item) != ItemKind::PairWithoutHits;
}

}  // namespace tessarine
