#pragma once

#include "browse/coverpdf.h"

#include <QImage>
#include <QTextDocument>
#include <QTextObjectInterface>

#include <functional>

class QFile;
class QPrinter;
class QTextCursor;

namespace tomewise {

class BookStore;

// A styled text with book covers inline. Covers are named by the same
// "image://cover/<pk>" addresses the pages use and are decoded only while a
// page is drawn, so a document of thousands of books never holds them all.
// It draws its own pictures so that one is drawn only on the pages it shows on.
class CoverDocument : public QTextDocument, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    static constexpr auto kPlaceholderName = "qrc:/images/GenreBook.jpg";
    // Covers drawn at 144 dpi or more: sharp on paper, small in the file.
    static constexpr double kPixelsPerPoint = 2;

    explicit CoverDocument(BookStore &store, QObject *parent = nullptr);

    // With a pixel width, the cover is decoded no wider than that: a small
    // picture needs no full-size decode, nor a full-size copy in the file.
    static QString coverName(qint64 pk, int pixelWidth = 0);
    // The picture's size from its header alone; invalid when it has none or
    // it cannot be read.
    QSize coverSize(qint64 pk);
    static QImage placeholder();

    // An inline image `width` points wide, its height kept in proportion.
    static void insertImage(QTextCursor &cursor, const QString &name, QSize natural, double width);

    // Covers named without a width are decoded no wider than this.
    void setMaxPixelWidth(int pixels) { m_maxPixelWidth = pixels; }

    // Covers and the placeholder are drawn as CoverPdf stand-ins, for a PDF
    // whose stand-ins are then swapped for the pictures' own JPEG data;
    // switching clears the stand-ins handed out so far.
    void setPassThrough(bool on);
    bool passThrough() const { return m_passThrough; }
    // The stand-in PDF `standIns` as the finished file.
    bool swapStandIns(QFile &standIns, QIODevice &out, QString *error);
    // Draws every page on `printer`; to a PDF file with the stored covers
    // swapped in. False when the printer cannot start.
    bool print(QPrinter &printer);
    // The JPEG for stand-in `token`: the stored one when it is at most twice
    // as wide as the page needs, else the picture read scaled and encoded.
    CoverPdf::Jpeg pdfJpeg(quint32 token);

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    // Qt's own drawing, but nothing for a picture wholly outside the page:
    // the layout hands a page the block that ends just above it too, and a
    // PDF would carry that picture twice.
    void drawObject(QPainter *painter, const QRectF &rect, QTextDocument *document, int position,
                    const QTextFormat &format) override;

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    QImage standIn(qint64 pk, int pixelWidth);
    bool printPages(QPrinter &printer, bool standIns);

    struct StandIn
    {
        qint64 pk; // kPlaceholder: the placeholder
        int pixelWidth;
    };
    static constexpr qint64 kPlaceholder = -1;

    BookStore &m_store;
    QTextObjectInterface *m_images = nullptr;
    int m_maxPixelWidth = 0;
    bool m_passThrough = false;
    QList<StandIn> m_standIns;
    QImage m_placeholderStandIn;
};

// A stored cover as the documents draw it: through the one safe decoder, then
// at most `maxWidth` pixels wide when one is given.
QImage decodeCover(const QByteArray &bytes, int maxWidth = 0);

} // namespace tomewise
