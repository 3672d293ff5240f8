#include "pagedpainter.h"

#include <QAbstractTextDocumentLayout>
#include <QPagedPaintDevice>
#include <QTextDocument>

#include <cmath>

namespace tomewise {

PagedPainter::PagedPainter(QTextDocument &document, QPagedPaintDevice &device)
    : m_document(document)
    , m_device(device)
{
}

bool PagedPainter::begin(bool losslessImages)
{
    if (!m_painter.begin(&m_device))
        return false;
    m_painter.setRenderHint(QPainter::LosslessImageRendering, losslessImages);
    // The document is in points; the device may count in its own dots.
    const double scale = m_device.logicalDpiX() / 72.0;
    m_painter.scale(scale, scale);
    m_pages = m_document.pageCount();
    m_next = 0;
    return true;
}

void PagedPainter::drawNextPage()
{
    if (atEnd())
        return;
    if (m_next > 0)
        m_device.newPage();
    const QSizeF page = m_document.pageSize();
    // The layout breaks pages on its 1/64 pt grid: an A4 page of 841.8 pt is
    // 841.797 pt to it, and a page computed any other way drifts a line off
    // in a few thousand pages.
    const double height = std::trunc(page.height() * 64) / 64;
    m_painter.save();
    m_painter.translate(0, -m_next * height);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, m_next * height, page.width(), height);
    m_painter.setClipRect(context.clip);
    m_document.documentLayout()->draw(&m_painter, context);
    m_painter.restore();
    ++m_next;
}

bool PagedPainter::end()
{
    return m_painter.end();
}

} // namespace tomewise
