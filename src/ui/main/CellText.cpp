#include "ui/main/CellText.h"

namespace tessarine
{

namespace
{

constexpr QChar ellipsis(u'\u2026');

bool IsLineBreak(QChar unit)
{
    return unit == u'\n' || unit == u'\r' || unit == u'\v' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

/// The first units of a text; no pair of surrogates is torn apart.
QString Start(const QString& text, qsizetype units)
{
    return text.left(units > 0 && text.at(units - 1).isHighSurrogate() ? units - 1 : units);
}

/// Every line break as one character, whatever it was made of.
QString WithLineBreaks(QString text, QChar sign)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& unit : text)
        if (IsLineBreak(unit))
            unit = sign;
    return text;
}

}  // namespace

QString OnOneLine(const QString& text)
{
    constexpr qsizetype most = 500;  // of a row on a large screen
    const bool isCut = text.size() > most;
    QString line = WithLineBreaks(isCut ? Start(text, most) : text, u'\u21b5');
    return isCut ? line + ellipsis : line;
}

QString TipOfText(const QString& text)
{
    constexpr qsizetype mostUnits = 1000;
    constexpr qsizetype mostLines = 15;
    constexpr qsizetype unbroken = 60;  // more without a blank would make the tip as wide as that
    QString shown = WithLineBreaks(text.size() > mostUnits ? Start(text, mostUnits) : text, u'\n');
    bool isCut = text.size() > mostUnits;
    if (shown.count(u'\n') >= mostLines) {
        shown = shown.section(u'\n', 0, mostLines - 1);
        isCut = true;
    }
    QString broken;
    qsizetype run = 0;
    for (const QChar unit : shown) {
        run = unit.isSpace() ? 0 : run + 1;
        if (run > unbroken && !unit.isLowSurrogate()) {
            broken += QChar(u'\u200b');  // where the line may end
            run = 1;
        }
        broken += unit;
    }
    if (isCut)
        broken += ellipsis;
    return broken.isEmpty() ? QString() : "<p style=\"white-space:pre-wrap\">" + broken.toHtmlEscaped() + "</p>";
}

}  // namespace tessarine
