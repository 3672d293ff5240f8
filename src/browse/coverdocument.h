#pragma once

#include <QImage>
#include <QTextDocument>

#include <functional>

class QTextCursor;

namespace tomewise {

class BookStore;

// A styled text with book covers inline. Covers are named by the same
// "image://cover/<pk>" addresses the pages use and are decoded only while a
// page is drawn, so a document of thousands of books never holds them all.
class CoverDocument : public QTextDocument
{
    Q_OBJECT
public:
    static constexpr auto kPlaceholderName = "qrc:/images/GenreBook.jpg";

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

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    BookStore &m_store;
};

// A stored cover as the documents draw it: through the one safe decoder, then
// at most `maxWidth` pixels wide when one is given.
QImage decodeCover(const QByteArray &bytes, int maxWidth = 0);

} // namespace tomewise
