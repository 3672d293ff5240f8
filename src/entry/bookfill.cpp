#include "bookfill.h"

namespace tomewise {

std::optional<BookFill> BookFill::from(const std::optional<QList<BookItem>> &heldAnswer, const QString &today)
{
    if (!heldAnswer || heldAnswer->isEmpty())
        return std::nullopt;
    const VolumeInfo &info = heldAnswer->first().volumeInfo;
    const QString separator = QStringLiteral(", ");

    BookFill fill;
    fill.dateTextField = today;
    fill.bookNameTextField = info.title;
    fill.SubTitleTextField = info.subtitle;
    // A full date is kept as given; the form's save drops what is not a year.
    fill.datePublishedTextField = info.publishedDate;
    fill.numberOfPagesTextField = QString::number(info.pageCount);
    fill.bookAuthorTextField = info.authors.join(separator);
    fill.publishersNameTextField = info.publisher;
    if (info.categories)
        fill.bookCategoryTextField = info.categories->join(separator);
    fill.NotesTextView = info.description;
    if (info.imageLinks && info.imageLinks->thumbnail) {
        const QUrl url(*info.imageLinks->thumbnail, QUrl::StrictMode);
        if (url.isValid() && !url.scheme().isEmpty() && !url.host().isEmpty())
            fill.coverURL = url;
    }
    return fill;
}

QList<std::pair<QString, QString>> BookFill::fields() const
{
    QList<std::pair<QString, QString>> out;
    const auto add = [&out](const char *name, const std::optional<QString> &value) {
        if (value)
            out.append({QLatin1String(name), *value});
    };
    add("dateTextField", dateTextField);
    add("bookNameTextField", bookNameTextField);
    add("SubTitleTextField", SubTitleTextField);
    add("datePublishedTextField", datePublishedTextField);
    add("numberOfPagesTextField", numberOfPagesTextField);
    add("bookAuthorTextField", bookAuthorTextField);
    add("publishersNameTextField", publishersNameTextField);
    add("bookCategoryTextField", bookCategoryTextField);
    add("NotesTextView", NotesTextView);
    if (coverURL)
        add("imageView", coverURL->toString(QUrl::FullyEncoded));
    return out;
}

} // namespace tomewise
