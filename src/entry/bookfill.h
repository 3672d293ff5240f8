#pragma once

#include "entry/bookscan.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <utility>

namespace tomewise {

// The values the new book form's fill step puts into its fields from the
// first held item. Absent values leave the form's field as it was.
struct BookFill
{
    QString dateTextField; // today's medium-style date text, as the caller gives it
    QString bookNameTextField;
    std::optional<QString> SubTitleTextField;
    QString datePublishedTextField;
    QString numberOfPagesTextField;
    QString bookAuthorTextField;
    std::optional<QString> publishersNameTextField;
    std::optional<QString> bookCategoryTextField;
    std::optional<QString> NotesTextView;
    std::optional<QUrl> coverURL; // the thumbnail to download into imageView

    // Nothing when no answer is held or it has no items.
    static std::optional<BookFill> from(const std::optional<QList<BookItem>> &heldAnswer, const QString &today);

    // The present values in fill order as (field name, text); the cover as "imageView".
    QList<std::pair<QString, QString>> fields() const;
};

} // namespace tomewise
