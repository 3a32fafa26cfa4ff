#include "icons/Icons.h"

#include <QFile>

/// Registers the drawings, which in a static library nothing else does. Outside of any namespace, as the macro asks.
static void RegisterDrawings()
{
    Q_INIT_RESOURCE(icons);
}

namespace tessarine
{

namespace
{

QString PathOf(const char* name)
{
    // Once, at the first icon that is asked for.
    static const bool areRegistered = (RegisterDrawings(), true);
    static_cast<void>(areRegistered);
    return QStringLiteral(":/icons/%1.svg").arg(QLatin1StringView(name));
}

}  // namespace

QIcon Icon(const char* name)
{
    const QString path = PathOf(name);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QByteArray IconDrawing(const char* name)
{
    QFile file(PathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace tessarine
