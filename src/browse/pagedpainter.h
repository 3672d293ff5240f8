#pragma once

#include <QPainter>

class QPagedPaintDevice;
class QTextDocument;

namespace tomewise {

// Draws a paginated text document onto a PDF writer or a printer one page at
// a time, so long documents can be drawn between turns of the event loop.
// The document is laid out in points on pages of its own page size.
class PagedPainter
{
public:
    PagedPainter(QTextDocument &document, QPagedPaintDevice &device);

    // False when the device cannot be drawn on (a file that cannot be made).
    // With `losslessImages`, pictures reach a PDF with their pixels unchanged
    // (the stand-ins of CoverPdf), not encoded again as JPEG.
    bool begin(bool losslessImages = false);
    int pageCount() const { return m_pages; }
    int pagesDrawn() const { return m_next; }
    bool atEnd() const { return m_next >= m_pages; }
    void drawNextPage();
    // Finishes the file; false when its last bytes could not be written.
    bool end();

private:
    QTextDocument &m_document;
    QPagedPaintDevice &m_device;
    QPainter m_painter;
    int m_pages = 0;
    int m_next = 0;
};

} // namespace tomewise
