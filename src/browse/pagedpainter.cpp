#include "pagedpainter.h"

#include <QAbstractTextDocumentLayout>
#include <QPagedPaintDevice>
#include <QTextDocument>

namespace tomewise {

PagedPainter::PagedPainter(QTextDocument &document, QPagedPaintDevice &device)
    : m_document(document)
    , m_device(device)
{
}

bool PagedPainter::begin()
{
    if (!m_painter.begin(&m_device))
        return false;
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
    m_painter.save();
    m_painter.translate(0, -m_next * page.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, m_next * page.height(), page.width(), page.height());
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
