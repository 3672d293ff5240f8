#include "pdfdocument.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

#include <cmath>

namespace tomewise {

bool writeTextDocumentPdf(QTextDocument &document, const QString &path, const QString &title, QString *error,
                          QSizeF pagePoints)
{
    QPdfWriter writer(path);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Tomewise"));
    writer.setPageLayout(QPageLayout(QPageSize(pagePoints, QPageSize::Point), QPageLayout::Portrait,
                                     QMarginsF(0, 0, 0, 0), QPageLayout::Point));
    writer.setResolution(72);
    // At 72 dpi one device pixel is one point, so the page is laid out in points.
    document.setPageSize(pagePoints);
    QPainter painter;
    if (!painter.begin(&writer)) {
        if (error)
            *error = QStringLiteral("Could not write %1").arg(path);
        return false;
    }
    const int pages = document.pageCount();
    const QSizeF page = document.pageSize();
    for (int i = 0; i < pages; ++i) {
        if (i > 0)
            writer.newPage();
        painter.save();
        painter.translate(0, -i * page.height());
        QAbstractTextDocumentLayout::PaintContext ctx;
        ctx.clip = QRectF(0, i * page.height(), page.width(), page.height());
        painter.setClipRect(ctx.clip);
        document.documentLayout()->draw(&painter, ctx);
        painter.restore();
    }
    painter.end();
    return true;
}

namespace {

// The paginated layout breaks a paragraph wherever the page ends; on screen the
// space between two pages then falls in mid-sentence. Each paragraph (and each
// heading with the start of what follows it) that would straddle a page moves
// whole to the next one.
void keepParagraphsOnOnePage(QTextDocument &doc, qreal margin)
{
    const qreal pageHeight = doc.pageSize().height();
    QAbstractTextDocumentLayout *layout = doc.documentLayout();
    for (auto it = doc.rootFrame()->begin(); !it.atEnd(); ++it) {
        QTextBlock block = it.currentBlock();
        if (!block.isValid())
            continue; // a table: its rows may break between pages
        doc.pageCount(); // the layout runs in steps; this finishes it
        const QRectF rect = layout->blockBoundingRect(block);
        qreal height = rect.height();
        if (block.blockFormat().headingLevel() > 0) {
            const QTextBlock next = block.next();
            if (next.isValid())
                height += qMin<qreal>(layout->blockBoundingRect(next).height(), 3 * QFontMetricsF(doc.defaultFont()).lineSpacing());
        }
        const qreal pageTop = std::floor(rect.top() / pageHeight) * pageHeight;
        const qreal contentBottom = pageTop + pageHeight - margin;
        if (rect.top() + height <= contentBottom || height > pageHeight - 2 * margin)
            continue;
        // A heading left alone above the paragraph goes along with it.
        const QTextBlock previous = block.previous();
        QTextBlock moved = block;
        qreal top = rect.top();
        if (previous.isValid() && previous.blockFormat().headingLevel() > 0) {
            const qreal headingTop = layout->blockBoundingRect(previous).top();
            if (headingTop >= pageTop) {
                moved = previous;
                top = headingTop;
            }
        }
        QTextBlockFormat format = moved.blockFormat();
        format.setTopMargin(format.topMargin() + (pageTop + pageHeight + margin - top));
        QTextCursor(moved).setBlockFormat(format);
    }
}

} // namespace

bool writeUserGuidePdf(const QString &markdownPath, const QString &pdfPath, QString *error)
{
    QFile in(markdownPath);
    if (!in.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("Could not read %1").arg(markdownPath);
        return false;
    }
    QTextDocument doc;
    doc.setDefaultFont(QFont(QStringLiteral("Arial"), 12));
    doc.setDefaultStyleSheet(QStringLiteral("h1 { color: #8b1a1a; } h2 { color: #222; } code { font-family: monospace; }"));
    doc.setMarkdown(QString::fromUtf8(in.readAll()));
    // Root-frame margins repeat on every page, unlike the document margin.
    QTextFrameFormat frame = doc.rootFrame()->frameFormat();
    constexpr qreal margin = 18;
    frame.setMargin(margin);
    doc.rootFrame()->setFrameFormat(frame);
    // About the shape of a phone screen: a page fitted to the screen's width shows
    // the text a little larger than it is printed.
    const QSizeF page(340, 680);
    doc.setPageSize(page);
    keepParagraphsOnOnePage(doc, margin);
    return writeTextDocumentPdf(doc, pdfPath, QStringLiteral("Overview"), error, page);
}

} // namespace tomewise
