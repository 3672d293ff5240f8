#include "coverview.h"

#include <QPainter>

namespace tomewise {

CoverView::CoverView(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
}

void CoverView::setImage(const QImage &image)
{
    m_image = image;
    update();
    Q_EMIT imageChanged();
}

void CoverView::paint(QPainter *painter)
{
    if (m_image.isNull())
        return;
    QSizeF fitted = QSizeF(m_image.size()).scaled(QSizeF(width(), height()), Qt::KeepAspectRatio);
    const QRectF target((width() - fitted.width()) / 2, (height() - fitted.height()) / 2, fitted.width(),
                        fitted.height());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(target, m_image);
}

} // namespace tomewise
