#include "ui/run/ResultLog.h"

#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

using Position = ResultNodes::Position;

constexpr QStringView lineEnd = u"\r\n";

// Intended: both end in a blank, so that a log can be compared with an old one letter by letter.
constexpr QStringView foundMark = u" - At least 1 occurrence(s) found ";
constexpr QStringView notFoundMark = u" - No occurrence(s) found ";

/// Borrowed, so that a log of many thousand lines is put together without a copy of each text.
QStringView View(const String& text)
{
    return QStringView(text.data(), static_cast<qsizetype>(text.size()));
}

/// A node's block: its own line, and one for each of its children. Nothing for a node without any.
template <class TextOfChild>
void AppendBlock(QString& log, const String& text, Position children, TextOfChild textOfChild)
{
    if (children == 0)
        return;
    log.append(View(text)).append(foundMark).append(lineEnd);
    for (Position child = 0; child < children; ++child)
        log.append(u'\t').append(View(textOfChild(child))).append(lineEnd);
}

}  // namespace

QString ResultLog(const ResultNodes& changed, const ResultNodes& notChanged)
{
    QString log;
    changed.ForEach([&](Position file, std::optional<Position> item) {
        if (item)
            AppendBlock(
                log, changed.ItemText(file, *item), changed.LocationCount(file, *item),
                [&](Position location) -> const String& { return changed.LocationText(file, *item, location); });
        else
            AppendBlock(log, changed.FileText(file), changed.ItemCount(file),
                        [&](Position child) -> const String& { return changed.ItemText(file, child); });
    });
    for (Position file = 0; file < notChanged.FileCount(); ++file)
        log.append(View(notChanged.FileText(file))).append(notFoundMark).append(lineEnd);
    return log;
}

}  // namespace tessarine
