// make-icon <drawing.svg> <output> <size>...: draws an SVG in each size. An output named .ico is an icon of Windows,
// with all of them; any other is a picture of the one size, in the format of its name. The same drawing gives the same
// bytes.

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QList>
#include <QPainter>
#include <QtEndian>

#include <cstdio>
#include <cstdlib>

namespace
{

// From this size on a picture is packed, as PNG: where Windows expects it, and where it is worth it.
constexpr int FirstPackedSize = 256;

[[noreturn]] void Stop(const QString& reason)
{
    std::fprintf(stderr, "make-icon: %s\n", qPrintable(reason));
    std::exit(1);
}

QImage Drawn(const QString& drawing, int size)
{
    QImageReader reader(drawing, "svg");
    reader.setScaledSize(QSize(size, size));
    const QImage image = reader.read();
    if (image.isNull())
        Stop(drawing + ": " + reader.errorString());
    return image.convertToFormat(QImage::Format_ARGB32);
}

// As large as NSIS has it, in a colour that goes with the drawing.
QImage SideOfInstaller(const QString& drawing, int size)
{
    QImage side(164, 314, QImage::Format_RGB32);
    side.fill(QColor(0xE9, 0xEF, 0xF7));
    QPainter painter(&side);
    painter.drawImage((side.width() - size) / 2, (side.height() - size) / 3, Drawn(drawing, size));
    return side;
}

template <class Number>
void Append(QByteArray& bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

QByteArray PackedPicture(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        Stop("a picture can't be packed");
    return bytes;
}

// A bitmap without the header of a file: colours with their opacity from the lowest row up, and a mask of one bit a
// pixel, each of its rows filled up to four bytes, for what knows nothing of opacity.
QByteArray PlainPicture(const QImage& image)
{
    const int size = image.width();
    QByteArray bytes;
    Append<quint32>(bytes, 40);  // of this header
    Append<qint32>(bytes, size);
    Append<qint32>(bytes, 2 * size);  // colours and mask
    Append<quint16>(bytes, 1);        // planes
    Append<quint16>(bytes, 32);       // bits a pixel
    bytes.append(24, '\0');           // not compressed, no palette
    for (int row = size - 1; row >= 0; --row)
        for (int column = 0; column < size; ++column)
            Append<quint32>(bytes, image.pixel(column, row));
    for (int row = size - 1; row >= 0; --row) {
        QByteArray mask((size + 31) / 32 * 4, '\0');
        for (int column = 0; column < size; ++column)
            if (qAlpha(image.pixel(column, row)) == 0)
                mask[column / 8] = static_cast<char>(mask[column / 8] | 0x80 >> column % 8);
        bytes.append(mask);
    }
    return bytes;
}

QByteArray Icon(const QString& drawing, const QList<int>& sizes)
{
    QByteArray directory;
    QByteArray pictures;
    Append<quint16>(directory, 0);
    Append<quint16>(directory, 1);  // an icon, not a cursor
    Append<quint16>(directory, static_cast<quint16>(sizes.size()));
    const qsizetype begin = directory.size() + 16 * sizes.size();
    for (const int size : sizes) {
        const QImage image = Drawn(drawing, size);
        const QByteArray picture = size < FirstPackedSize ? PlainPicture(image) : PackedPicture(image);
        const auto side = static_cast<quint8>(size == 256 ? 0 : size);  // a byte can't hold 256
        Append<quint8>(directory, side);
        Append<quint8>(directory, side);
        Append<quint16>(directory, 0);  // no palette
        Append<quint16>(directory, 1);
        Append<quint16>(directory, 32);
        Append<quint32>(directory, static_cast<quint32>(picture.size()));
        Append<quint32>(directory, static_cast<quint32>(begin + pictures.size()));
        pictures.append(picture);
    }
    return directory + pictures;
}

}  // namespace

int main(int count, char* arguments[])
{
    const QCoreApplication application(count, arguments);  // finds Qt's reader of drawings
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 4)
        Stop("usage: make-icon <drawing.svg> <output> <size>...");

    QList<int> sizes;
    for (qsizetype i = 3; i < words.size(); ++i) {
        sizes.append(words[i].toInt());
        if (sizes.back() < 1 || sizes.back() > 256)
            Stop(words[i] + " is no size of an icon");
    }
    const QString output = words[2];
    if (!output.endsWith(".ico")) {
        const bool isSide = output.endsWith(".bmp");
        const QImage picture = isSide ? SideOfInstaller(words[1], sizes[0]) : Drawn(words[1], sizes[0]);
        if (sizes.size() != 1 || !picture.save(output))
            Stop(output + " can't be written");
        return 0;
    }
    QFile file(output);
    const QByteArray icon = Icon(words[1], sizes);
    if (!file.open(QIODevice::WriteOnly) || file.write(icon) != icon.size())
        Stop(output + ": " + file.errorString());
    return 0;
}
