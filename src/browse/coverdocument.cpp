#include "coverdocument.h"

#include "app/log.h"
#include "browse/pagedpainter.h"
#include "model/bookstore.h"
#include "model/coverimage.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QPrinter>
#include <QSaveFile>
#include <QScopeGuard>
#include <QTemporaryFile>
#include <QTextCursor>
#include <QTextImageFormat>
#include <QUrlQuery>

namespace tomewise {

QImage decodeCover(const QByteArray &bytes, int maxWidth)
{
    return CoverImage::decode(bytes, maxWidth).image;
}

CoverDocument::CoverDocument(BookStore &store, QObject *parent)
    : QTextDocument(parent)
    , m_store(store)
{
    // Built once and never edited: an undo step per insertion would be most
    // of what a long document holds.
    setUndoRedoEnabled(false);
    // Hooked in when the layout is first made: a layout made now would lay
    // the text out again on every insertion.
    connect(this, &QTextDocument::documentLayoutChanged, this, [this] {
        m_images = documentLayout()->handlerForObject(QTextFormat::ImageObject);
        if (m_images && m_images != this)
            documentLayout()->registerHandler(QTextFormat::ImageObject, this);
    });
}

QSizeF CoverDocument::intrinsicSize(QTextDocument *document, int position, const QTextFormat &format)
{
    return m_images->intrinsicSize(document, position, format);
}

void CoverDocument::drawObject(QPainter *painter, const QRectF &rect, QTextDocument *document, int position,
                               const QTextFormat &format)
{
    // A hair of overlap is the page edge in rounded arithmetic, not a picture.
    if (painter->hasClipping()) {
        const QRectF shown = painter->clipBoundingRect().intersected(rect);
        if (shown.width() < 1 || shown.height() < 1)
            return;
    }
    m_images->drawObject(painter, rect, document, position, format);
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

void CoverDocument::setPassThrough(bool on)
{
    m_passThrough = on;
    m_standIns.clear();
    m_placeholderStandIn = QImage();
}

QImage CoverDocument::standIn(qint64 pk, int pixelWidth)
{
    m_standIns.append({pk, pixelWidth});
    return CoverPdf::standIn(quint32(m_standIns.size() - 1));
}

CoverPdf::Jpeg CoverDocument::pdfJpeg(quint32 token)
{
    if (token >= quint32(m_standIns.size()))
        return {};
    const StandIn wanted = m_standIns[token];
    const int width = wanted.pixelWidth > 0 ? wanted.pixelWidth : m_maxPixelWidth;
    QByteArray bytes;
    if (wanted.pk == kPlaceholder) {
        QFile file(QStringLiteral(":/images/GenreBook.jpg"));
        if (file.open(QIODevice::ReadOnly))
            bytes = file.readAll();
    } else if (auto stored = m_store.cover(wanted.pk)) {
        bytes = std::move(*stored);
    }
    // A little more than the page needs is cheaper kept than made again.
    if (auto jpeg = CoverPdf::embeddable(bytes); jpeg && (width <= 0 || jpeg->size.width() <= 2 * width))
        return std::move(*jpeg);
    // A damaged picture becomes a white one: on paper, as if none was drawn.
    return CoverPdf::encode(decodeCover(bytes, width));
}

bool CoverDocument::swapStandIns(QFile &standIns, QIODevice &out, QString *error)
{
    return CoverPdf::swapStandIns(standIns, out, [this](quint32 token) { return pdfJpeg(token); }, error);
}

bool CoverDocument::print(QPrinter &printer)
{
    // Only a colour PDF file can take the covers as they are; a printer (or
    // grey output, whose pictures Qt turns grey) gets decoded ones.
    const auto drawn = qScopeGuard([this] { setPassThrough(false); });
    const QString target = printer.outputFileName();
    QTemporaryFile standIns;
    if (printer.outputFormat() != QPrinter::PdfFormat || target.isEmpty() || printer.colorMode() != QPrinter::Color
        || !standIns.open())
        return printPages(printer, false);
    printer.setOutputFileName(standIns.fileName());
    const bool begun = printPages(printer, true);
    printer.setOutputFileName(target);
    if (!begun)
        return false;
    QString why;
    QFile in(standIns.fileName());
    QSaveFile out(target);
    if (in.open(QIODevice::ReadOnly) && out.open(QIODevice::WriteOnly) && swapStandIns(in, out, &why)
        && out.commit())
        return true;
    // Never a file with stand-ins in it: the pages again, the slow way.
    qCWarning(lcBrowse).noquote() << "PDF covers could not be put in as they are stored:"
                                  << (why.isEmpty() ? out.errorString() : why);
    return printPages(printer, false);
}

bool CoverDocument::printPages(QPrinter &printer, bool standIns)
{
    setPassThrough(standIns);
    PagedPainter painter(*this, printer);
    const bool begun = painter.begin(standIns);
    while (begun && !painter.atEnd())
        painter.drawNextPage();
    if (begun)
        painter.end();
    return begun;
}

QVariant CoverDocument::loadResource(int type, const QUrl &name)
{
    if (type == ImageResource && name.scheme() == QLatin1String("image") && name.host() == QLatin1String("cover")) {
        // Not cached: the next page would keep every earlier cover alive.
        bool ok = false;
        const qint64 pk = name.path().mid(1).toLongLong(&ok);
        const int width = QUrlQuery(name).queryItemValue(QStringLiteral("width")).toInt();
        if (ok && m_passThrough)
            return standIn(pk, width);
        if (ok) {
            if (auto bytes = m_store.cover(pk))
                return decodeCover(*bytes, width > 0 ? width : m_maxPixelWidth);
        }
        return QImage();
    }
    if (type == ImageResource && name.toString() == QLatin1String(kPlaceholderName)) {
        if (!m_passThrough)
            return placeholder();
        // One picture object, however many books have no cover.
        if (m_placeholderStandIn.isNull())
            m_placeholderStandIn = standIn(kPlaceholder, 0);
        return m_placeholderStandIn;
    }
    return QTextDocument::loadResource(type, name);
}

} // namespace tomewise
