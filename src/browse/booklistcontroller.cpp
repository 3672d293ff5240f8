#include "booklistcontroller.h"

#include "app/log.h"

#include <utility>

namespace tomewise {

QStringList bookListPresentations()
{
    return {QStringLiteral("cards"), QStringLiteral("az"), QStringLiteral("pictures"), QStringLiteral("grid")};
}

QString recordBookListPresentation(AppDelegate &app, const QString &presentation)
{
    const bool known = bookListPresentations().contains(presentation);
    const bool graphic = presentation == u"pictures" || presentation == u"grid";
    app.state().setListMode(graphic ? QStringLiteral("Graphic") : QStringLiteral("List"));
    if (known) {
        app.userDefaults().setValue(kBookListPresentationKey, presentation);
        app.userDefaults().synchronize();
    }
    return presentation == u"cards" || !known ? QStringLiteral("ListStyle") : QStringLiteral("BookShelf");
}

QString lastBookListPresentation(AppDelegate &app)
{
    const QString last = app.userDefaults().stringValue(kBookListPresentationKey);
    return bookListPresentations().contains(last) ? last : QStringLiteral("cards");
}

QString BookListController::choosePresentation(const QString &presentation)
{
    return recordBookListPresentation(app(), presentation);
}

BookListSource &BookListController::source()
{
    if (!m_source)
        m_source = std::make_unique<BookListSource>(context());
    return *m_source;
}

void BookListController::search(BookWindowModel &model, const QString &text, const QStringList &attributes)
{
    // The revision rides in each cover's address, so a changed cover is read anew.
    model.setCoverRevision(context().coverRevision());
    if (text.isEmpty()) {
        model.showAll();
        // The list is shown: what a search compares is read while the user starts typing.
        source().prepareSearch(attributes);
        return;
    }
    QString error;
    auto found = source().matching(attributes, text, app().dateText(), &error);
    if (!found) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    model.showOnly(*found);
}

void BookListController::deleteShownRow(BookWindowModel &model, int row)
{
    if (row < 0 || row >= model.rowCount())
        return;
    const Books book = model.book(row);
    const auto mark = source().changeMark();
    const bool deleted = m_deleted.remove(context(), book);
    app().saveContext();
    model.removeShownRow(row);
    if (deleted) {
        source().forgetKey(book.pk, mark);
        Q_EMIT rowDeleted(book.name.value_or(QString()));
    }
}

void BookListController::undoDelete()
{
    if (!m_deleted.restore(context()))
        return;
    app().saveContext();
    reload();
}

void BookListController::openShownRow(const BookWindowModel &model, int row)
{
    if (row < 0 || row >= model.rowCount())
        return;
    const Books b = model.book(row);
    Books &current = app().state().currentBook;
    current = Books();
    current.pk = b.pk;
    current.name = b.name;
    current.subTitle = b.subTitle;
    current.author = b.author;
    current.bookPublisher = b.bookPublisher;
    current.isbn = b.isbn;
    current.category = b.category;
    current.rating = b.rating;
    current.series = b.series;
    current.seriesNumber = b.seriesNumber;
    current.publishDate = b.publishDate;
    current.numberPages = b.numberPages;
    current.notes = b.notes;
    current.dt = b.dt;
    current.pictureImage = context().cover(b.pk);
    // The detail screen returns by "unwindToList" to the list that names itself so.
    app().state().setCallingScreen(QStringLiteral("Master"));
    Q_EMIT navigate(QStringLiteral("Detail"));
}

} // namespace tomewise
