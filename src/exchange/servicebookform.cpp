#include "servicebookform.h"

namespace tomewise {

ServiceBookForm::ServiceBookForm(AppDelegate *delegate, QObject *parent)
    : BookForm(delegate, parent)
{
}

Books ServiceBookForm::book(const ServiceRow &row)
{
    // The date read as the form opens with one: medium style, read back from its text.
    QString date;
    if (row.dateRead) {
        if (const auto day = app().dateText().startOfDay(row.dateRead->year(), row.dateRead->month(),
                                                         row.dateRead->day()))
            date = app().dateText().format(*day, DateText::Style::Medium);
    }
    setDateTextField(date);
    m_bookName = row.title;
    m_subTitle.clear();
    m_author = row.author;
    m_publisher = row.publisher;
    m_datePublished = row.yearPublished;
    m_numberOfPages = row.pages;
    m_isbn = row.isbn;
    m_category = row.genre;
    m_rating = row.rating;
    m_bookFormat = row.format;
    m_series = row.series;
    m_seriesNumber = row.seriesNumber;
    m_notes = row.notes;
    Books book;
    writeFields(book);
    return book;
}

} // namespace tomewise
