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

    static QString coverName(qint64 pk);
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

// The one place a stored cover's bytes become a picture.
QImage decodeCover(const QByteArray &bytes);

} // namespace tomewise
