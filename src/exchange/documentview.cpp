#include "documentview.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QTextDocument>

namespace tomewise {

DocumentView::DocumentView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void DocumentView::setDocument(QTextDocument *document)
{
    if (m_document == document)
        return;
    if (m_document)
        m_document->documentLayout()->disconnect(this);
    m_document = document;
    if (m_document) {
        // Each batch the report adds, and a print laying it out on paper.
        connect(m_document->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
                &DocumentView::layOut);
    }
    layOut();
    Q_EMIT documentChanged();
}

void DocumentView::setContentY(qreal y)
{
    if (qFuzzyCompare(m_contentY, y))
        return;
    m_contentY = y;
    polish();
    Q_EMIT contentYChanged();
}

void DocumentView::setPadding(qreal padding)
{
    if (qFuzzyCompare(m_padding, padding))
        return;
    m_padding = padding;
    layOut();
    Q_EMIT paddingChanged();
}

void DocumentView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        layOut();
}

void DocumentView::layOut()
{
    // Later, with the frame: a print lays the document out on paper in
    // between, and gets it back for the screen only once it is done.
    polish();
}

void DocumentView::updatePolish()
{
    m_image = QImage();
    m_imageChanged = true;
    const qreal textWidth = width() - 2 * m_padding;
    qreal height = 0;
    if (m_document && textWidth > 0) {
        if (m_document->pageSize() != QSizeF(textWidth, -1))
            m_document->setTextWidth(textWidth);
        height = m_document->size().height() + 2 * m_padding;
    }
    if (!qFuzzyCompare(m_contentHeight, height)) {
        m_contentHeight = height;
        Q_EMIT contentHeightChanged();
    }
    if (height > 0 && this->height() > 0) {
        const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
        m_image = QImage((size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        m_image.setDevicePixelRatio(ratio);
        m_image.fill(Qt::transparent);
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const qreal top = m_contentY - m_padding;
        painter.translate(m_padding, -top);
        m_document->drawContents(&painter, QRectF(0, top, textWidth, this->height()));
    }
    update();
}

QSGNode *DocumentView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (m_image.isNull()) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
    }
    if (m_imageChanged) {
        image->setTexture(window()->createTextureFromImage(m_image));
        m_imageChanged = false;
    }
    image->setRect(boundingRect());
    return image;
}

} // namespace tomewise
