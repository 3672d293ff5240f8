#pragma once

#include "browse/coverdocument.h"
#include "browse/groupkind.h"
#include "model/books.h"

#include <QSaveFile>
#include <QTemporaryFile>
#include <QTextCursor>

#include <memory>

class QPdfWriter;

namespace tomewise {

class BookStore;
class PagedPainter;

// The PDF list of books of a breakdown: a centred title, then per book its
// labelled values and its picture, laid out on A4 with no margins. Built in
// steps (first the books, then the pages) so a long list keeps the window live;
// the file is the same as one built in one go.
class PdfListBuilder
{
public:
    enum class Step { More, Done, Failed };
    static constexpr int kBatch = 100;
    static constexpr double kScreenWidth = 390; // the phone's view, in points
    static constexpr QSizeF kPageSize{595.2, 841.8};
    static constexpr auto kDocumentsEnv = "TOMEWISE_DOCUMENTS_DIR";

    // An empty list is a fatal error: the title is read from the first book.
    PdfListBuilder(const GroupKindInfo &info, QList<Books> books, BookStore &store,
                   double viewWidth = kScreenWidth);
    ~PdfListBuilder();

    // $TOMEWISE_DOCUMENTS_DIR, else the platform's documents folder.
    static QString documentsDirectory();
    static QString filePath(const GroupKindInfo &info);

    // Adds up to `count` books, or draws up to `count` / 10 pages once all are
    // in; `error` is the description of a file that could not be written.
    Step step(int count, const QString &path, QString *error);
    // The whole list in one go.
    bool write(const QString &path, QString *error);

    double progress() const;
    QString progressText() const;
    int pageCount() const;
    CoverDocument &document() { return m_document; }

private:
    void appendBook(const Books &book);
    bool beginFile(const QString &path, QString *error);
    bool finishFile(QString *error);

    const GroupKindInfo &m_info;
    QList<Books> m_books;
    double m_imageWidth;
    CoverDocument m_document;
    QTextCursor m_cursor;
    qsizetype m_next = 0;
    std::unique_ptr<QSaveFile> m_file;
    // The pages with stand-ins for the covers, until they are swapped into m_file.
    std::unique_ptr<QTemporaryFile> m_standIns;
    std::unique_ptr<QPdfWriter> m_writer;
    std::unique_ptr<PagedPainter> m_painter;
};

// The labelled pairs of one book in the list's order.
QList<std::pair<QString, QString>> pdfListPairs(const Books &book);

} // namespace tomewise
