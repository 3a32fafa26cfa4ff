#include "i18n/FilledText.h"

#include <QStringList>

namespace tessarine
{

namespace
{

/// The values that there are, without any words.
QString Alone(const TextValues& values)
{
    QStringList parts;
    if (values.i)
        parts += *values.i;
    if (values.s)
        parts += *values.s;
    if (values.d)
        parts += QString::number(*values.d);
    return parts.join(u' ');
}

}  // namespace

QString FilledText(const QString& text, const TextValues& values)
{
    if (text.isEmpty())
        return Alone(values);
    QString filled;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar placeholder = text[at] == u'%' && at + 1 < text.size() ? text[at + 1] : QChar();
        if (placeholder == u'd' && values.d)
            filled += QString::number(*values.d);
        else if (placeholder == u'i' && values.i)
            filled += *values.i;
        else if (placeholder == u's' && values.s)
            filled += *values.s;
        else {
            filled += text[at];
            continue;
        }
        ++at;  // past the letter
    }
    return filled;
}

}  // namespace tessarine
