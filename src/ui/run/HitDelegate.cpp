#include "ui/run/HitDelegate.h"

#include <algorithm>

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include "i18n/QtText.h"
#include "ui/run/GreyText.h"
#include "ui/run/HitsModel.h"

namespace tessarine
{

namespace
{

constexpr int betweenLines = 2;  // pixels

/// On all sides of a row, in heights of the font, so that the room grows with the user's text.
int Margin(const QFontMetrics& metrics)
{
    return metrics.height() / 4;
}

int WidthOf(const QFontMetrics& metrics, StringView text)
{
    return metrics.horizontalAdvance(ToQt(text));
}

String Cut(const QFontMetrics& metrics, StringView text, Qt::TextElideMode mode, int width)
{
    return FromQt(metrics.elidedText(ToQt(text), mode, std::max(width, 0)));
}

QFont Bold(QFont font)
{
    font.setBold(true);
    return font;
}

/// Letters and background of marked text. Each pair can be read on its own, so that it serves on a selected row too.
struct MarkColours {
    QColor text;
    QColor back;
};

MarkColours ColoursOf(bool isOld, bool isNew, bool isDark)
{
    if (isOld)
        return isDark ? MarkColours{"#ffd9d6", "#6a2323"} : MarkColours{"#7a1212", "#ffdcd9"};
    if (isNew)
        return isDark ? MarkColours{"#d4f7dc", "#1f5531"} : MarkColours{"#0b4a1c", "#c8f0d0"};
    return isDark ? MarkColours{"#fff3c4", "#6b5300"} : MarkColours{"#1a1a1a", "#ffe27a"};
}

/// The line as one text, so that writing from right to left runs through it as it does in the presentation.
class MarkedLine
{
public:
    MarkedLine(const HitLine& line, bool isDark)
    {
        Add(line.before, std::nullopt, false);
        Add(line.found, ColoursOf(line.becomes.has_value(), false, isDark), line.becomes.has_value());
        if (line.becomes)
            Add(*line.becomes, ColoursOf(false, true, isDark), false);
        Add(line.after, std::nullopt, false);
    }

    /// `direction` is that of the window: the line begins where the place above it does.
    void Draw(QPainter& painter, const QRect& place, const QFont& font, Qt::LayoutDirection direction) const
    {
        QTextLayout layout(text_, font);
        QTextOption option((direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
        option.setWrapMode(QTextOption::NoWrap);
        option.setTextDirection(text_.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        layout.setTextOption(option);
        layout.setFormats(formats_);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(place.width());
        layout.endLayout();
        layout.draw(&painter, place.topLeft());
    }

private:
    void Add(const String& part, const std::optional<MarkColours>& colours, bool isStruck)
    {
        if (colours && !part.empty()) {
            QTextLayout::FormatRange range;
            range.start = static_cast<int>(text_.size());
            range.length = static_cast<int>(part.size());
            range.format.setFontWeight(QFont::Bold);
            range.format.setFontStrikeOut(isStruck);
            range.format.setForeground(colours->text);
            range.format.setBackground(colours->back);
            formats_.push_back(range);
        }
        text_ += ToQt(part);
    }

    QString text_;
    QList<QTextLayout::FormatRange> formats_;
};

}  // namespace

HitLine Fitted(const HitLine& line, int width, const QFontMetrics& around, const QFontMetrics& ofHit)
{
    HitLine fitted = line;
    const int hit = WidthOf(ofHit, line.found) + (line.becomes ? WidthOf(ofHit, *line.becomes) : 0);
    if (hit > width) {
        const int share = line.becomes ? width / 2 : width;
        fitted.found = Cut(ofHit, line.found, Qt::ElideMiddle, share);
        if (line.becomes)
            fitted.becomes = Cut(ofHit, *line.becomes, Qt::ElideMiddle, width - WidthOf(ofHit, fitted.found));
        fitted.before.clear();
        fitted.after.clear();
        return fitted;
    }
    const int room = width - hit;
    const int before = WidthOf(around, line.before);
    const int after = WidthOf(around, line.after);
    if (before + after <= room)
        return fitted;
    // A short side leaves its room to the other.
    const int forBefore = std::max(room / 2, room - after);
    const int forAfter = std::max(room - room / 2, room - before);
    fitted.before = Cut(around, line.before, Qt::ElideLeft, forBefore);
    fitted.after = Cut(around, line.after, Qt::ElideRight, forAfter);
    return fitted;
}

QSize HitDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const QFontMetrics metrics(option.font);
    // Any width will do; a row takes that of the list.
    return {metrics.averageCharWidth() * 20, 2 * metrics.height() + betweenLines + 2 * Margin(metrics)};
}

void HitDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    row.text.clear();
    const QWidget* const list = row.widget;
    const QStyle& style = list != nullptr ? *list->style() : *QApplication::style();
    style.drawControl(QStyle::CE_ItemViewItem, &row, painter, list);  // background and focus

    const auto hit = index.data(HitsModel::RowRole).value<HitRow>();
    const QFontMetrics metrics(row.font);
    const int margin = Margin(metrics);
    QRect place = row.rect.adjusted(margin, margin, -margin, 0);
    place.setHeight(metrics.height());
    const bool isSelected = row.state.testFlag(QStyle::State_Selected);
    const auto group = row.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QColor plain = row.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);

    painter->save();
    painter->setClipRect(row.rect);
    painter->setFont(row.font);
    painter->setPen(isSelected ? plain : GreyText(row.palette));
    const QString heading = hit.remark.isEmpty() ? hit.place : hit.place + " – " + hit.remark;
    style.drawItemText(painter, place, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextDontClip, row.palette, true,
                       metrics.elidedText(heading, Qt::ElideRight, place.width()));
    if (hit.isHit) {
        painter->setPen(plain);
        place.translate(0, metrics.height() + betweenLines);
        const HitLine line = Fitted(hit.line, place.width(), metrics, QFontMetrics(Bold(row.font)));
        const bool isDark = row.palette.color(QPalette::Base).lightness() < 128;
        MarkedLine(line, isDark).Draw(*painter, place, row.font, row.direction);
    }
    painter->restore();
}

}  // namespace tessarine
