#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QAbstractListModel>

#include "ui/run/HitBlock.h"
#include "ui/run/HitWords.h"

namespace tessarine
{

/// Files and which of their hits are meant: all, those of a pair, or those of a pair in one location.
struct HitSelection {
    std::vector<StoredFile> files;
    std::optional<std::int32_t> pair;  ///< Position in the run's list, from 1.
    std::optional<Location> location;

    bool Holds(std::int32_t ofPair, Location at) const
    {
        return (!pair || *pair == ofPair) && (!location || *location == at);
    }
};

/// A row of the list of hits.
struct HitRow {
    QString place;
    QString remark;  ///< Mostly empty.
    HitLine line;
    bool isHit = true;  ///< Otherwise `place` tells how many more there are.
};

/// Some hits as rows, and a last row for those that are not kept. A row's words are made when it is asked for.
///
/// The text of a row, for the clipboard and for those who hear it: `Slide 3, paragraph 1: our [Fabrikam -> Contoso]`.
class HitsModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// A row as a HitRow.
    static constexpr int RowRole = Qt::UserRole;

    void PutTexts(const RunTexts& texts);  ///< Before Show.

    void Show(HitSelection selection);
    const HitSelection& Selection() const { return selection_; }

    std::int64_t LeftOut() const { return leftOut_; }  ///< Hits of the selection that are not kept.
    std::int64_t HitCount() const;                     ///< With those that are not kept.

    /// The file that a row belongs to; that of the selection for the last row.
    const FileReport& FileOf(int row) const;

    HitRow RowAt(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct Place {
        std::uint32_t file;
        std::uint32_t hit;
    };

    RunTexts texts_;
    HitSelection selection_;
    std::vector<Place> hits_;  // those of the selection
    std::int64_t leftOut_ = 0;
};

}  // namespace tessarine

Q_DECLARE_METATYPE(tessarine::HitRow)
