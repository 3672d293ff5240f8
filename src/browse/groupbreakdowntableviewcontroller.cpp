#include "groupbreakdowntableviewcontroller.h"

#include "app/log.h"

namespace tomewise {

GroupBreakdownTableViewController::GroupBreakdownTableViewController(GroupKind kind, AppDelegate *delegate,
                                                                     QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(groupKind(kind))
    , m_model(m_info)
{
    connect(&m_model, &GroupBreakdownModel::countChanged, this, &GroupBreakdownTableViewController::headerChanged);
}

GroupCounts &GroupBreakdownTableViewController::counts()
{
    if (!m_counts)
        m_counts.emplace(context(), app().dateText());
    return *m_counts;
}

QStringList GroupBreakdownTableViewController::sortActions() const
{
    QStringList list;
    for (const auto &a : m_info.sortActions)
        list << QLatin1String(a.title);
    return list;
}

QStringList GroupBreakdownTableViewController::labelOutlets() const
{
    QStringList list;
    for (const auto &l : m_info.labels) {
        if (l.outlet)
            list << QLatin1String(l.outlet);
    }
    return list;
}

QString GroupBreakdownTableViewController::header() const
{
    const qint64 n = m_model.searching() ? m_model.rowCount() : m_bookCount;
    return QLatin1String(kBreakdownHeader) + QString::number(n);
}

void GroupBreakdownTableViewController::viewDidLoad()
{
    setTitle(QLatin1String(m_info.breakdownTitle));
    m_model.setDateText(&app().dateText());
    m_model.setCoverCheck([this](qint64 pk) { return counts().hasCover(pk); });
    m_sortAsc = false;
    fetch();
    m_justLoaded = true;
}

void GroupBreakdownTableViewController::viewWillAppear()
{
    // Shown right after loading: nothing can have changed and no sort is
    // chosen yet, so the fetch would bring the same rows; only the flip counts.
    if (m_justLoaded) {
        m_justLoaded = false;
        m_sortAsc = !*m_sortAsc;
        Q_EMIT sortChanged();
        return;
    }
    fetch();
}

std::optional<QList<Predicate>> GroupBreakdownTableViewController::predicates()
{
    const AppState &state = app().state();
    const Books &current = state.currentBook;
    QVariantList arguments;
    switch (m_info.slot) {
    case GroupValueSlot::CurrentBookText:
        arguments << attributeValue(current, groupAttribute(m_info.slotField));
        break;
    case GroupValueSlot::CurrentBookYear:
        arguments << QString::number(current.publishDate.value_or(0));
        break;
    case GroupValueSlot::SelectedFormat:
        arguments << state.selectedFormat();
        break;
    case GroupValueSlot::SelectedReadYear: {
        const auto range = counts().yearRange(state.selectedReadYear());
        if (!range)
            return std::nullopt;
        arguments << range->first << range->second;
        break;
    }
    }
    return groupPredicates(m_info.breakdownPredicate, arguments);
}

void GroupBreakdownTableViewController::fetch()
{
    if (!m_sortAsc)
        qFatal("The breakdown fetched before its view had loaded");
    m_justLoaded = false;
    m_sortAsc = !*m_sortAsc;
    Q_EMIT sortChanged();
    m_bookCount = 0;
    FetchRequest request;
    for (const auto &a : m_info.sortActions) {
        if (m_sortName == QLatin1String(a.sortName))
            request.sortDescriptors.append({QLatin1String(a.key), *m_sortAsc});
    }
    QString error;
    const auto where = predicates();
    std::optional<QList<Books>> books;
    if (where) {
        request.predicates = *where;
        books = context().fetchBooks(request, &error);
        if (!books)
            qCWarning(lcStore).noquote() << error;
    }
    m_bookCount = books ? books->size() : 0;
    m_model.setBookList(books ? std::move(*books) : QList<Books>());
    Q_EMIT headerChanged();
}

void GroupBreakdownTableViewController::selectSortOption(int option)
{
    if (option < 1 || option > int(m_info.sortActions.size()))
        return;
    qCInfo(lcBrowse).noquote() << QStringLiteral("Option %1 selected").arg(option);
    m_sortName = QLatin1String(m_info.sortActions[size_t(option - 1)].sortName);
    fetch();
}

void GroupBreakdownTableViewController::SortButtonTapped()
{
    if (m_searchText.isEmpty()) {
        fetch();
        return;
    }
    m_model.sortShownByName(sortAsc());
}

void GroupBreakdownTableViewController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    m_model.setSearchText(text);
}

void GroupBreakdownTableViewController::selectRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    m_justLoaded = false;
    const Books &b = m_model.book(row);
    Books &current = app().state().currentBook;
    current.pk = b.pk;
    current.author = b.author;
    current.category = b.category;
    current.name = b.name;
    current.bookPublisher = b.bookPublisher;
    current.rating = b.rating;
    current.numberPages = b.numberPages;
    current.series = b.series;
    current.seriesNumber = b.seriesNumber;
    current.dt = b.dt;
    current.publishDate = b.publishDate;
    current.notes = b.notes;
    current.pictureImage = context().cover(b.pk);
    app().state().setCallingScreen(QLatin1String(m_info.callingScreen));
    Q_EMIT navigate(QStringLiteral("Detail"));
}

void GroupBreakdownTableViewController::deleteRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    m_justLoaded = false;
    const Books &book = m_model.book(row);
    const QString name = book.name.value_or(QString());
    const bool deleted = m_deleted.remove(context(), book);
    app().saveContext();
    if (!m_model.searching())
        --m_bookCount;
    m_model.removeShownRow(row);
    if (deleted)
        Q_EMIT rowDeleted(name);
}

void GroupBreakdownTableViewController::undoDelete()
{
    if (!m_deleted.restore(context()))
        return;
    app().saveContext();
    // Every fetch turns the order round; an undo keeps the order on screen.
    m_sortAsc = !sortAsc();
    fetch();
    // A search shows its own rows, which a fetch leaves alone; the book goes back among them.
    if (m_model.searching())
        m_model.setSearchText(m_searchText);
}

} // namespace tomewise
