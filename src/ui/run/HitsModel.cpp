#include "ui/run/HitsModel.h"

#include <utility>

#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

QString TextOf(const HitRow& row)
{
    QString text = row.place;
    if (!row.remark.isEmpty())
        text += " (" + row.remark + u')';
    if (!row.isHit)
        return text;
    const QString becomes = row.line.becomes ? " → " + ToQt(*row.line.becomes) : QString();
    return text + ": " + ToQt(row.line.before) + u'[' + ToQt(row.line.found) + becomes + u']' + ToQt(row.line.after);
}

}  // namespace

void HitsModel::PutTexts(const RunTexts& texts)
{
    texts_ = texts;
}

void HitsModel::Show(HitSelection selection)
{
    beginResetModel();
    selection_ = std::move(selection);
    hits_.clear();
    leftOut_ = 0;
    for (std::uint32_t file = 0; file < selection_.files.size(); ++file) {
        const auto& [report, leftOut, run] = selection_.files[file];
        for (std::uint32_t hit = 0; hit < report.hits.size(); ++hit)
            if (selection_.Holds(report.hits[hit].place->pair, report.hits[hit].place->location))
                hits_.push_back({file, hit});
        for (const HitsLeftOut& group : leftOut)
            if (selection_.Holds(group.pair, group.location))
                leftOut_ += group.count;
    }
    endResetModel();
}

std::int64_t HitsModel::HitCount() const
{
    return static_cast<std::int64_t>(hits_.size()) + leftOut_;
}

const FileReport& HitsModel::FileOf(int row) const
{
    const auto position = static_cast<std::size_t>(row);
    return position < hits_.size() ? selection_.files[hits_[position].file].report : selection_.files.back().report;
}

HitRow HitsModel::RowAt(int row) const
{
    const auto position = static_cast<std::size_t>(row);
    if (position >= hits_.size())
        return {texts_.Filled(u"Hits.More", {.d = leftOut_}), {}, {}, false};
    const StoredFile& file = selection_.files[hits_[position].file];
    const Hit& hit = file.report.hits[hits_[position].hit];
    const auto pair = static_cast<std::size_t>(hit.place->pair) - 1;
    const StringView find = pair < file.report.pairs.size() ? StringView(file.report.pairs[pair].find) : StringView();
    return {PlaceWords(texts_, hit), RemarkWords(texts_, hit, file.run.replaces), LineOf(hit, find), true};
}

int HitsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(hits_.size()) + (leftOut_ > 0 ? 1 : 0);
}

QVariant HitsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
        case RowRole:
            return QVariant::fromValue(RowAt(index.row()));
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return TextOf(RowAt(index.row()));
        default:
            return {};
    }
}

}  // namespace tessarine
