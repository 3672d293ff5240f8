#include "pdflistbuilder.h"

#include "app/log.h"
#include "browse/pagedpainter.h"
#include "model/bookstore.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QStandardPaths>
#include <QTextBlockFormat>
#include <QTextCharFormat>

namespace tomewise {

static QString text(const Text &value)
{
    return value.value_or(QString());
}

static QString number(const Int16 &value)
{
    return QString::number(value.value_or(0));
}

QList<std::pair<QString, QString>> pdfListPairs(const Books &book)
{
    return {{QStringLiteral("Book Name: "), text(book.name)},
            {QStringLiteral("Author: "), text(book.author)},
            {QStringLiteral("Genre: "), text(book.category)},
            {QStringLiteral("Date Read: "), text(book.dt)},
            {QStringLiteral("Date Published: "), number(book.publishDate)},
            {QStringLiteral("Series: "), text(book.series)},
            {QStringLiteral("Series #: "), number(book.seriesNumber)},
            {QStringLiteral("# Pages: "), number(book.numberPages)},
            {QStringLiteral("Rating: "), text(book.rating)},
            {QStringLiteral("Publisher: "), text(book.bookPublisher)},
            {QStringLiteral("Notes: "), text(book.notes)}};
}

static QTextCharFormat font(double points)
{
    QTextCharFormat format;
    format.setFont(QFont(QStringLiteral("Arial")));
    format.setFontPointSize(points);
    format.setForeground(Qt::black);
    return format;
}

PdfListBuilder::PdfListBuilder(const GroupKindInfo &info, QList<Books> books, BookStore &store, double viewWidth)
    : m_info(info)
    , m_books(std::move(books))
    , m_imageWidth(viewWidth / 6.0)
    , m_document(store)
    , m_cursor(&m_document)
{
    m_document.setPassThrough(true);
    if (m_books.isEmpty())
        qFatal("The PDF list of books was asked for with no book to list");
    m_document.setDocumentMargin(0);
    m_document.setPageSize(kPageSize);
    m_document.setDefaultFont(QFont(QStringLiteral("Arial"), 12));

    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignHCenter);
    m_cursor.setBlockFormat(centred);
    // User text goes in as plain text: a "<b>" in a title stays visible.
    m_cursor.insertText(QLatin1String(m_info.pdfTitle) + groupValueText(m_info, m_books.first()), font(21));
}

PdfListBuilder::~PdfListBuilder() = default;

QString PdfListBuilder::documentsDirectory()
{
    const QString dir = qEnvironmentVariable(kDocumentsEnv);
    return dir.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) : dir;
}

QString PdfListBuilder::filePath(const GroupKindInfo &info)
{
    return QDir(documentsDirectory()).filePath(QLatin1String(info.pdfFileName));
}

void PdfListBuilder::appendBook(const Books &book)
{
    // A blank line after the title or the last picture; nothing after the
    // last one, which would only make an empty page.
    const QTextCharFormat body = font(12);
    m_cursor.insertBlock(QTextBlockFormat(), body);
    m_cursor.insertBlock(QTextBlockFormat(), body);
    for (const auto &[label, value] : pdfListPairs(book)) {
        m_cursor.insertText(label + value, body);
        m_cursor.insertBlock(QTextBlockFormat(), body);
    }
    const QSize size = m_document.coverSize(book.pk);
    const int pixelWidth = int(m_imageWidth * CoverDocument::kPixelsPerPoint);
    if (size.isValid())
        CoverDocument::insertImage(m_cursor, CoverDocument::coverName(book.pk, pixelWidth), size, m_imageWidth);
    else
        CoverDocument::insertImage(m_cursor, QLatin1String(CoverDocument::kPlaceholderName),
                                   CoverDocument::placeholder().size(), m_imageWidth);
}

bool PdfListBuilder::beginFile(const QString &path, QString *error)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    m_file = std::make_unique<QSaveFile>(path);
    if (!m_file->open(QIODevice::WriteOnly)) {
        if (error)
            *error = m_file->errorString();
        return false;
    }
    QIODevice *pages = m_file.get();
    if (m_document.passThrough()) {
        m_standIns = std::make_unique<QTemporaryFile>();
        if (!m_standIns->open()) {
            m_standIns.reset();
            m_document.setPassThrough(false);
        } else {
            pages = m_standIns.get();
        }
    }
    m_writer = std::make_unique<QPdfWriter>(pages);
    m_writer->setTitle(QLatin1String(m_info.pdfTitle) + groupValueText(m_info, m_books.first()));
    m_writer->setCreator(QStringLiteral("Tomewise"));
    m_writer->setPageLayout(QPageLayout(QPageSize(kPageSize, QPageSize::Point), QPageLayout::Portrait,
                                        QMarginsF(0, 0, 0, 0), QPageLayout::Point));
    m_writer->setResolution(72);
    m_painter = std::make_unique<PagedPainter>(m_document, *m_writer);
    if (!m_painter->begin(m_document.passThrough())) {
        if (error)
            *error = QStringLiteral("The PDF writer could not start");
        return false;
    }
    return true;
}

PdfListBuilder::Step PdfListBuilder::step(int count, const QString &path, QString *error)
{
    if (m_next < m_books.size()) {
        // One edit per batch: the document keeps far less for it than for
        // an edit per insertion (a tenth of the memory of a long list).
        m_cursor.beginEditBlock();
        for (int i = 0; i < count && m_next < m_books.size(); ++i)
            appendBook(m_books[m_next++]);
        m_cursor.endEditBlock();
        return Step::More;
    }
    if (!m_painter && !beginFile(path, error))
        return Step::Failed;
    for (int i = 0; i < std::max(1, count / 10) && !m_painter->atEnd(); ++i)
        m_painter->drawNextPage();
    if (!m_painter->atEnd())
        return Step::More;
    if (!finishFile(error))
        return Step::Failed;
    if (!m_file)
        return Step::More; // drawn again with decoded covers
    return Step::Done;
}

bool PdfListBuilder::finishFile(QString *error)
{
    if (!m_painter->end()) {
        if (error)
            *error = QStringLiteral("The PDF writer could not finish");
        return false;
    }
    if (m_standIns) {
        QString why;
        m_standIns->seek(0);
        if (!m_document.swapStandIns(*m_standIns, *m_file, &why)) {
            // Never a file with stand-ins in it: the pages again, the slow way.
            qCWarning(lcBrowse).noquote() << "PDF covers could not be put in as they are stored:" << why;
            m_file->cancelWriting();
            m_painter.reset();
            m_writer.reset();
            m_standIns.reset();
            m_file.reset();
            m_document.setPassThrough(false);
            return true;
        }
        m_standIns.reset();
    }
    if (!m_file->commit()) {
        if (error)
            *error = m_file->errorString();
        return false;
    }
    return true;
}

bool PdfListBuilder::write(const QString &path, QString *error)
{
    Step s;
    while ((s = step(kBatch, path, error)) == Step::More) {
    }
    return s == Step::Done;
}

int PdfListBuilder::pageCount() const
{
    return m_painter ? m_painter->pageCount() : 0;
}

double PdfListBuilder::progress() const
{
    const double books = double(m_next) / double(m_books.size());
    if (!m_painter)
        return books / 2;
    return 0.5 + 0.5 * m_painter->pagesDrawn() / std::max(1, m_painter->pageCount());
}

QString PdfListBuilder::progressText() const
{
    if (!m_painter)
        return QStringLiteral("%1 of %2 books").arg(m_next).arg(m_books.size());
    return QStringLiteral("Page %1 of %2").arg(m_painter->pagesDrawn()).arg(m_painter->pageCount());
}

} // namespace tomewise
