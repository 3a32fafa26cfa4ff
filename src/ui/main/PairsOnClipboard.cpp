#include "ui/main/PairsOnClipboard.h"

#include <algorithm>

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

#include "i18n/QtText.h"
#include "model/ListColumns.h"
#include "ui/main/TabbedText.h"

namespace tessarine
{

namespace
{

const QString wholePairs = QStringLiteral("application/x-tessarine-pairs");
constexpr auto streamVersion = QDataStream::Qt_6_0;

QByteArray BytesOf(const std::vector<std::shared_ptr<FindAndReplaceItem>>& pairs)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    for (const auto& pair : pairs) {
        quint32 switches = 0;
        for (std::size_t n = 0; n < OptionKeys.size(); ++n)
            if ((*pair->OptionSetting).*OptionKeys[n].field)
                switches |= 1U << n;
        stream << ToQt(pair->FindWhat) << ToQt(pair->ReplaceWith) << switches << pair->OptionSetting->SearchMethod;
    }
    return bytes;
}

std::vector<ClipboardPair> PairsOf(const QByteArray& bytes)
{
    std::vector<ClipboardPair> pairs;
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    while (!stream.atEnd()) {
        QString find;
        QString with;
        quint32 switches = 0;
        OptionSetting setting;
        stream >> find >> with >> switches >> setting.SearchMethod;
        if (stream.status() != QDataStream::Ok)
            break;
        for (std::size_t n = 0; n < OptionKeys.size(); ++n)
            setting.*OptionKeys[n].field = (switches & 1U << n) != 0;
        pairs.push_back({FromQt(find), FromQt(with), setting});
    }
    return pairs;
}

/// How many cells of a row are the headings of a list file.
std::size_t HeadingsIn(const std::vector<QString>& row)
{
    std::size_t equal = 0;
    while (equal < row.size() && equal < ListHeaders.size() &&
           row[equal].compare(ToQt(ListHeaders[equal]), Qt::CaseInsensitive) == 0)
        ++equal;
    return equal;
}

OptionSetting SwitchesOf(const std::vector<QString>& row)
{
    OptionSetting setting;
    for (std::size_t n = 0; n < ListSwitchCount; ++n) {
        const std::size_t column = n + FirstSwitchColumn - 1;
        setting.*OptionKeys[n].field =
            column < row.size() && row[column].compare(QLatin1String("TRUE"), Qt::CaseInsensitive) == 0;
    }
    return setting;
}

}  // namespace

QMimeData* PairsForClipboard(const std::vector<std::shared_ptr<FindAndReplaceItem>>& pairs)
{
    TextTable table;
    for (const auto& pair : pairs)
        table.push_back({ToQt(pair->FindWhat), ToQt(pair->ReplaceWith)});
    auto* const data = new QMimeData;
    data->setText(TextOf(table));
    data->setData(wholePairs, BytesOf(pairs));
    return data;
}

std::vector<ClipboardPair> PairsFromClipboard(const QMimeData& data)
{
    if (data.hasFormat(wholePairs))
        return PairsOf(data.data(wholePairs));
    const TextTable table = CellsOf(data.text());
    const std::size_t headings = table.empty() ? 0 : HeadingsIn(table.front());
    const bool hasHeading = headings >= 2;
    const bool hasSwitches = headings == ListHeaders.size();
    std::vector<ClipboardPair> pairs;
    for (std::size_t n = hasHeading ? 1 : 0; n < table.size(); ++n) {
        const std::vector<QString>& row = table[n];
        const QString with = row.size() > 1 ? row[1] : QString();
        if (row.front().isEmpty() && with.isEmpty())
            continue;
        pairs.push_back(
            {FromQt(row.front()), FromQt(with), hasSwitches ? std::optional(SwitchesOf(row)) : std::nullopt});
    }
    return pairs;
}

}  // namespace tessarine
