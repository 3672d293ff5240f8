#include "coverdocument.h"

#include "model/bookstore.h"
#include "model/coverimage.h"

#include <QBuffer>
#include <QImageReader>
#include <QTextCursor>
#include <QTextImageFormat>
#include <QUrlQuery>

namespace tomewise {

QImage decodeCover(const QByteArray &bytes, int maxWidth)
{
    QImage image = CoverImage::decode(bytes).image;
    if (maxWidth > 0 && image.width() > maxWidth)
        image = image.scaledToWidth(maxWidth, Qt::SmoothTransformation);
    return image;
}

CoverDocument::CoverDocument(BookStore &store, QObject *parent)
    : QTextDocument(parent)
    , m_store(store)
{
}

QString CoverDocument::coverName(qint64 pk, int pixelWidth)
{
    const QString name = QStringLiteral("image://cover/%1").arg(pk);
    return pixelWidth > 0 ? name + QStringLiteral("?width=%1").arg(pixelWidth) : name;
}

QSize CoverDocument::coverSize(qint64 pk)
{
    auto bytes = m_store.cover(pk);
    const char *format = bytes ? CoverImage::formatOf(*bytes) : nullptr;
    if (!format)
        return {};
    // Only the header, and only by the decoder the picture will be read with.
    QBuffer buffer(&*bytes);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    const bool sane = size.width() <= CoverImage::kMaxSide && size.height() <= CoverImage::kMaxSide;
    return sane ? size : QSize();
}

QImage CoverDocument::placeholder()
{
    static const QImage image(QStringLiteral(":/images/GenreBook.jpg"));
    return image;
}

void CoverDocument::insertImage(QTextCursor &cursor, const QString &name, QSize natural, double width)
{
    QTextImageFormat format;
    format.setName(name);
    format.setWidth(width);
    format.setHeight(natural.width() > 0 ? width * natural.height() / natural.width() : width);
    cursor.insertImage(format);
}

QVariant CoverDocument::loadResource(int type, const QUrl &name)
{
    if (type == ImageResource && name.scheme() == QLatin1String("image") && name.host() == QLatin1String("cover")) {
        // Not cached: the next page would keep every earlier cover alive.
        bool ok = false;
        const qint64 pk = name.path().mid(1).toLongLong(&ok);
        if (ok) {
            if (auto bytes = m_store.cover(pk))
                return decodeCover(*bytes, QUrlQuery(name).queryItemValue(QStringLiteral("width")).toInt());
        }
        return QImage();
    }
    if (type == ImageResource && name.toString() == QLatin1String(kPlaceholderName))
        return placeholder();
    return QTextDocument::loadResource(type, name);
}

} // namespace tomewise
