#include "icons/Icons.h"

#include <QDir>
#include <QFile>

/// Registers the drawings, which in a static library nothing else does. Outside of any namespace, as the macro asks.
static void RegisterDrawings()
{
    Q_INIT_RESOURCE(icons);
#ifdef _WIN32
    Q_INIT_RESOURCE(icon_pictures);
#endif
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

/// The pictures that were made of a drawing, where Qt has nothing that draws it.
QIcon IconOfPictures(const char* name)
{
    QIcon icon;
    const QDir folder(QStringLiteral(":/icons"));
    for (const QString& picture : folder.entryList({QLatin1StringView(name) + "-[0-9]*.png"}))
        icon.addPixmap(QPixmap(folder.filePath(picture)));
    return icon;
}

}  // namespace

QIcon Icon(const char* name)
{
    const QString path = PathOf(name);
    if (!QFile::exists(path))
        return {};
    const QIcon pictures = IconOfPictures(name);
    return pictures.isNull() ? QIcon(path) : pictures;
}

QByteArray IconDrawing(const char* name)
{
    QFile file(PathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace tessarine
