#include "coverimageprovider.h"

#include "app/appdelegate.h"
#include "model/coverimage.h"

namespace tomewise {

CoverImageProvider::CoverImageProvider(AppDelegate *delegate)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_delegate(delegate)
{
}

QImage CoverImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    QImage image;
    bool ok = false;
    const qint64 pk = id.section(u'/', 0, 0).toLongLong(&ok);
    if (ok && m_delegate) {
        if (auto bytes = m_delegate->persistentContainer().cover(pk))
            image = CoverImage::decode(*bytes).image;
    }
    if (!image.isNull() && requestedSize.isValid())
        image = image.scaled(requestedSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (size)
        *size = image.size();
    return image;
}

} // namespace tomewise
