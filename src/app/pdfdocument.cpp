#include "pdfdocument.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <QTextFrame>

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
    frame.setMargin(18);
    doc.rootFrame()->setFrameFormat(frame);
    // About the shape of a phone screen: a page fitted to the screen's width shows
    // the text a little larger than it is printed.
    return writeTextDocumentPdf(doc, pdfPath, QStringLiteral("Overview"), error, QSizeF(340, 680));
}

} // namespace tomewise
