#pragma once

#include "browse/coverdocument.h"
#include "browse/groupkind.h"
#include "model/books.h"

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>

#include <optional>

namespace tomewise {

class AppState;
class BookStore;

// The printed report: the whole log or one group's books, a title line from
// the first book, then per book its labelled lines and its cover. Built in
// steps so a long log keeps the window live; the text is the same as one built
// in one go.
class ReportBuilder
{
public:
    static constexpr int kBatch = 100;
    static constexpr double kTextViewWidth = 330; // the phone's text view less its margins and insets
    static constexpr auto kCompleteList = "MainMenu";

    explicit ReportBuilder(BookStore &store, double textViewWidth = kTextViewWidth);

    // The group a calling screen names; none for the main menu (every book).
    static std::optional<GroupKind> kindOfCallingScreen(const QString &callingScreen);
    // The books of the report in report order; an error leaves the list empty.
    bool fetch(const QString &callingScreen, AppState &state, QString *error);
    const QList<Books> &bookList() const { return m_books; }

    // Adds the next `count` book blocks (the title first); false once all are in.
    bool step(int count);
    void buildAll();
    qsizetype booksDone() const { return m_next; }

    CoverDocument &document() { return m_document; }
    const QString &plainText() const { return m_plain; }

    // A book's lines for a report of this kind (none: the complete list).
    static QStringList bookLines(std::optional<GroupKind> kind, const Books &book);

private:
    void appendLine(const QString &line);

    BookStore &m_store;
    std::optional<GroupKind> m_kind;
    QList<Books> m_books;
    double m_textViewWidth;
    CoverDocument m_document;
    QTextCursor m_cursor;
    QTextCharFormat m_charFormat;
    QTextBlockFormat m_blockFormat;
    QString m_plain;
    qsizetype m_next = -1; // -1: the title is still to come
};

} // namespace tomewise
