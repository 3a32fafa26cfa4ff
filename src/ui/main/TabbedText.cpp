#include "ui/main/TabbedText.h"

#include <algorithm>
#include <optional>

namespace tessarine
{

namespace
{

constexpr QChar quote(u'"');

bool EndsCell(QChar unit)
{
    return unit == u'\t' || unit == u'\n' || unit == u'\r';
}

/// Goes through a text cell by cell.
class TabbedReader
{
public:
    explicit TabbedReader(const QString& text) : text_(text) {}

    bool IsAtEnd() const { return at_ == text_.size(); }

    std::vector<QString> Row()
    {
        std::vector<QString> cells{Cell()};
        while (!IsAtEnd() && text_.at(at_) == u'\t') {
            ++at_;
            cells.push_back(Cell());
        }
        SkipLineBreak();
        return cells;
    }

private:
    QString Cell()
    {
        if (!IsAtEnd() && text_.at(at_) == quote)
            if (std::optional<QString> cell = QuotedCell())
                return *cell;
        const qsizetype start = at_;
        while (!IsAtEnd() && !EndsCell(text_.at(at_)))
            ++at_;
        return text_.mid(start, at_ - start);
    }

    /// The cell in quotes that begins here; nothing, and the place stays, when it does not end as one.
    std::optional<QString> QuotedCell()
    {
        QString cell;
        for (qsizetype next = at_ + 1; next < text_.size(); ++next) {
            if (text_.at(next) != quote) {
                cell += text_.at(next);
            } else if (next + 1 < text_.size() && text_.at(next + 1) == quote) {
                cell += quote;
                ++next;
            } else if (next + 1 == text_.size() || EndsCell(text_.at(next + 1))) {
                at_ = next + 1;
                return cell;
            } else {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    void SkipLineBreak()
    {
        if (!IsAtEnd() && text_.at(at_) == u'\r')
            ++at_;
        if (!IsAtEnd() && text_.at(at_) == u'\n')
            ++at_;
    }

    const QString& text_;
    qsizetype at_ = 0;
};

QString Quoted(QString cell)
{
    return quote + cell.replace(quote, QStringLiteral("\"\"")) + quote;
}

}  // namespace

TextTable CellsOf(const QString& text)
{
    TextTable rows;
    TabbedReader reader(text);
    while (!reader.IsAtEnd())
        rows.push_back(reader.Row());
    return rows;
}

QString TextOf(const TextTable& rows)
{
    QString text;
    for (const std::vector<QString>& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            const QString& cell = row[column];
            if (column > 0)
                text += u'\t';
            text += cell.startsWith(quote) || std::ranges::any_of(cell, EndsCell) ? Quoted(cell) : cell;
        }
        text += u'\n';
    }
    return text;
}

}  // namespace tessarine
