#include "liststyletableviewcontroller.h"

#include "app/log.h"

#include <utility>

namespace tomewise {

ListStyleTableViewController::ListStyleTableViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Book List"));
    connect(&m_model, &ListStyleModel::countChanged, this, &ListStyleTableViewController::headerChanged);
}

QVariantList ListStyleTableViewController::sortOptions() const
{
    QVariantList list;
    for (const auto &option : kListStyleSortOptions)
        list << QLatin1String(option.actionTitle);
    return list;
}

QString ListStyleTableViewController::header() const
{
    const int n = m_model.rowCount();
    return QString::number(n) + (n == 1 ? QStringLiteral(" Book") : QStringLiteral(" Books"));
}

void ListStyleTableViewController::viewDidLoad()
{
    m_sortAsc = false;
    m_sortName = QStringLiteral("DateRead");
    m_searchText = QString();
    m_placeholder = QLatin1String(kListStyleLoadPlaceholder);
    Q_EMIT sortChanged();
}

void ListStyleTableViewController::viewWillAppear()
{
    if (m_searchText && m_searchText->isEmpty())
        fetch();
    else
        refilter();
}

void ListStyleTableViewController::SortButtonTapped()
{
    if (!m_sortAsc)
        qFatal("The sort direction is not set before the list has loaded");
    m_sortAsc = !*m_sortAsc;
    Q_EMIT sortChanged();
    fetch();
}

void ListStyleTableViewController::selectSortOption(int option)
{
    if (option < 1 || option > int(kListStyleSortOptions.size()))
        return;
    const auto &o = kListStyleSortOptions[size_t(option - 1)];
    qCInfo(lcBrowse).noquote() << QStringLiteral("Option %1 selected").arg(option);
    m_sortName = QLatin1String(o.sortName);
    m_placeholder = QLatin1String(o.placeholder);
    Q_EMIT sortChanged();
    fetch();
}

void ListStyleTableViewController::fetch()
{
    const ListStyleSortOption *option = listStyleSortOption(sortName());
    if (!option)
        option = &kListStyleSortOptions[0];
    FetchRequest request;
    request.entity = Entity::Books;
    for (const char *key : option->sortKeys) {
        if (key)
            request.sortDescriptors.append({QLatin1String(key), sortAsc()});
    }
    QString error;
    auto books = context().fetchBooks(request, &error);
    auto covers = books ? context().coverKeys(&error) : std::nullopt;
    if (!books || !covers) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_model.setBooks(std::move(*books), *option, app().dateText(), std::move(*covers));
    refilter();
}

void ListStyleTableViewController::refilter()
{
    m_model.setCoverRevision(context().coverRevision());
    m_model.refilter(searchText());
}

void ListStyleTableViewController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    refilter();
}

void ListStyleTableViewController::deleteRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    const Books &book = m_model.book(row);
    const QString name = book.name.value_or(QString());
    const bool deleted = m_deleted.remove(context(), book);
    app().saveContext();
    m_model.removeShownRow(row);
    if (deleted)
        Q_EMIT rowDeleted(name);
}

void ListStyleTableViewController::undoDelete()
{
    if (!m_deleted.restore(context()))
        return;
    app().saveContext();
    fetch();
}

void ListStyleTableViewController::selectRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    const Books &b = m_model.book(row);
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
