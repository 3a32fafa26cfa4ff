#include "ui/main/EndlessNotice.h"

#include <QStringList>

#include "engine/EndlessReplacement.h"
#include "i18n/QtText.h"
#include "ui/main/ItemsModel.h"

namespace tessarine
{

namespace
{

constexpr int namedPairs = 3;
constexpr int longestNamed = 40;     // units of a find text
constexpr int betweenNotices = 150;  // milliseconds

bool IsEndless(const ItemsModel::Item& pair)
{
    return pair && pair->OptionSetting && NeverEnds(pair->FindWhat, pair->ReplaceWith, *pair->OptionSetting);
}

}  // namespace

EndlessNotice::EndlessNotice(const ItemsModel& items, QWidget* parent) : QLabel(parent), items_(items)
{
    setObjectName("lblEndless");
    setTextFormat(Qt::PlainText);  // texts of the user, whatever they look like
    setWordWrap(true);
    hide();
    timer_.setSingleShot(true);
    timer_.setInterval(betweenNotices);
    connect(&timer_, &QTimer::timeout, this, &EndlessNotice::Show);
    connect(&items, &ItemsModel::dataChanged, this, &EndlessNotice::Follow);
    connect(&items, &ItemsModel::rowsInserted, this, &EndlessNotice::Follow);
    connect(&items, &ItemsModel::rowsRemoved, this, &EndlessNotice::Follow);
    connect(&items, &ItemsModel::modelReset, this, &EndlessNotice::Follow);
}

void EndlessNotice::PutTexts(const QString& line, const QString& pair)
{
    line_ = line;
    pair_ = pair;
    Show();
}

void EndlessNotice::PutIsGridTaken(bool isGridTaken)
{
    isGridTaken_ = isGridTaken;
    Show();
}

void EndlessNotice::Follow()
{
    if (!timer_.isActive())
        timer_.start();
}

void EndlessNotice::Show()
{
    QStringList pairs;
    for (int row = 1; row < items_.Rows() && pairs.size() <= namedPairs; ++row)
        if (IsEndless(items_.RowData(row)))
            pairs += NamedPair(row);
    if (pairs.size() > namedPairs)
        pairs.back() = QString(u'…');
    if (!pairs.isEmpty())
        setText(QString(line_).replace(QLatin1String("%s"), pairs.join(QLatin1String(", "))));
    setVisible(isGridTaken_ && !pairs.isEmpty());
}

QString EndlessNotice::NamedPair(int row) const
{
    QString find = ToQt(items_.RowData(row)->FindWhat).simplified();
    if (find.size() > longestNamed)
        find = find.left(longestNamed) + u'…';
    // The text last: it may hold a "%d" of its own.
    return QString(pair_).replace(QLatin1String("%d"), QString::number(row)).replace(QLatin1String("%s"), find);
}

}  // namespace tessarine
