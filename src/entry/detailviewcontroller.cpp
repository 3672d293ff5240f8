#include "detailviewcontroller.h"

#include "app/log.h"

namespace tomewise {

namespace {

// "name = %@" with no name matches the books that have none, as the store's
// own predicates compare a missing value.
Predicate keyPredicate(const char *attribute, const Text &value)
{
    if (!value)
        return {QLatin1String(attribute), Predicate::Op::IsAbsent, {}};
    return Predicate::equal(QLatin1String(attribute), *value);
}

} // namespace

DetailViewController::DetailViewController(AppDelegate *delegate, QObject *parent)
    : BookForm(delegate, parent)
{
    setTitle(QStringLiteral("Book Detail"));
}

const QStringList &DetailViewController::listCallers()
{
    static const QStringList list{QStringLiteral("Master"),          QStringLiteral("AuthorBreakdown"),
                                  QStringLiteral("GenreBreakdown"),  QStringLiteral("YearBreakdown"),
                                  QStringLiteral("RatingBreakdown"), QStringLiteral("SeriesBreakdown"),
                                  QStringLiteral("FormatBreakdown")};
    return list;
}

void DetailViewController::viewDidLoad()
{
    const Books &current = app().state().currentBook;
    takeKeys(current);
    loadPickers();
    // The stored record has what a list does not copy (format, dateRead), so
    // a save never clears what the screen did not show.
    const auto stored = matchingBook(true);
    showBook(stored ? *stored : current);
    m_savedFields = fieldTexts();
    m_loaded = true;
    after(kReviewDelayMs, [this] {
        if (ReviewRequester *review = app().reviewService())
            review->requestReview();
    });
}

void DetailViewController::takeKeys(const Books &book)
{
    m_keyName = book.name;
    m_keyAuthor = book.author;
    m_keyDt = book.dt;
}

std::optional<Books> DetailViewController::matchingBook(bool withCover)
{
    FetchRequest request;
    request.entity = Entity::Books;
    request.includesCovers = withCover;
    request.predicates = {keyPredicate("name", m_keyName), keyPredicate("author", m_keyAuthor),
                          keyPredicate("dt", m_keyDt)};
    QString error;
    const auto books = context().fetchBooks(request, &error);
    if (!books) {
        qCWarning(lcStore).noquote() << error;
        return std::nullopt;
    }
    if (books->isEmpty())
        return std::nullopt;
    const qint64 handedOver = app().state().currentBook.pk;
    for (const Books &b : *books) {
        if (b.pk == handedOver)
            return b;
    }
    return books->first();
}

bool DetailViewController::UpdateBook()
{
    // Without a title or an author the book could no longer be told apart.
    if (!requireFields())
        return false;
    auto book = matchingBook();
    if (!book)
        return false;
    writeFields(*book);
    if (!logIfFailed(context().updateBook(*book)))
        return false; // the store keeps the book as it was; the edits stay pending
    // The next save in this visit must find the book by what it is now.
    takeKeys(*book);
    Books &current = app().state().currentBook;
    const Data cover = current.pictureImage;
    current = *book;
    current.pictureImage = cover;
    // A number that was not kept shows what the book still has.
    showNumbers(*book);
    m_savedFields = fieldTexts();
    Q_EMIT fieldsChanged();
    Q_EMIT notice(savedNotice(*book));
    return true;
}

bool DetailViewController::hasPendingChanges() const
{
    return m_loaded && fieldTexts() != m_savedFields;
}

void DetailViewController::leaveScreen()
{
    const auto leave = [this] {
        if (!BackButtonTapped())
            Q_EMIT back();
    };
    if (!hasPendingChanges()) {
        leave();
        return;
    }
    showAlert(QStringLiteral("Discard changes?"), QStringLiteral("Your changes to this book have not been saved."),
              {{QStringLiteral("Yes"), AlertAction::Style::Default, leave},
               {QStringLiteral("No"), AlertAction::Style::Cancel, {}}});
}

void DetailViewController::coverReplaced()
{
    if (!m_loaded)
        return;
    const auto book = matchingBook();
    if (!book)
        return;
    const Data cover = hasImage() ? Data(coverData(imageView())) : std::nullopt;
    logIfFailed(context().setCover(book->pk, cover));
    app().state().currentBook.pictureImage = cover;
}

QString DetailViewController::shareText() const
{
    const auto line = [](const char *label, const QString &text, const char *empty = "N/A") {
        return QLatin1String(label) + (text.isEmpty() ? QLatin1String(empty) : text) + QLatin1Char('\n');
    };
    return line("Book Name: ", m_bookName) + line("Author: ", m_author) + line("Date Read: ", m_dateText)
        + line("Date Published: ", m_datePublished) + line("Series: ", m_series)
        + line("Series #: ", m_seriesNumber) + line("# Pages: ", m_numberOfPages) + line("Rating: ", m_rating)
        + line("Publisher: ", m_publisher) + line("Genre: ", m_category) + line("Notes: ", m_notes, "None");
}

void DetailViewController::ShareButtonTapped()
{
    PlatformServices &platform = app().platform();
    if (!platform.canSendText()) {
        showAlert(QStringLiteral("Can't Send Text Message"),
                  QStringLiteral("Your device is not able to send text messages."));
        return;
    }
    ShareItems items;
    items.text = shareText();
    items.image = imageView();
    platform.share(items);
}

bool DetailViewController::BackButtonTapped()
{
    if (!listCallers().contains(app().state().callingScreen()))
        return false;
    Q_EMIT unwind(QStringLiteral("unwindToList"));
    return true;
}

void DetailViewController::pannedView(qreal dx, qreal dy)
{
    setCoverZoom(coverScale(), coverOffset() + QPointF(dx, dy));
}

void DetailViewController::toggleZoom()
{
    if (zoomed())
        setCoverZoom(1.0, QPointF());
    else
        setCoverZoom(kZoomedScale, coverOffset());
}

} // namespace tomewise
