#include "referencetablecontroller.h"

#include "app/log.h"

#include <utility>

namespace tomewise {

ReferenceTableController::ReferenceTableController(ReferenceKind kind, AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(referenceKind(kind))
    , m_rows(m_info.attribute)
{
    setTitle(QLatin1String(m_info.listTitle));
}

QString ReferenceTableController::searchPlaceholder() const
{
    return searchable() ? QLatin1String(m_info.searchPlaceholder) : QString();
}

QVariant ReferenceTableController::selectedName() const
{
    return m_selectedName ? QVariant(*m_selectedName) : QVariant();
}

QVariant ReferenceTableController::passedEntryName() const
{
    return m_passedEntry ? QVariant(*m_passedEntry) : QVariant();
}

void ReferenceTableController::viewDidLoad()
{
    setTitle(QLatin1String(m_info.listTitle));
    m_sortAsc = true;
    // Runs once the screen has finished loading, as a queued block does.
    after(0, [this] {
        load();
        if (m_info.seedsFromBooks && m_list.isEmpty()) {
            seedFromBooks();
            load();
        }
    });
}

void ReferenceTableController::unwindToTableView()
{
    load();
}

void ReferenceTableController::viewWillDisappear()
{
    setSearchText(QString());
}

void ReferenceTableController::load()
{
    m_list.clear();
    m_filteredList.clear();
    if (m_deleted)
        m_deleted->row = -1; // its row is gone with the old order; an undo loads again
    fetch();
    // The search text is not applied again: the whole list shows until it changes.
    m_filteredList = m_list;
    showRows();
    Q_EMIT listReloaded();
}

void ReferenceTableController::fetch()
{
    FetchRequest request;
    request.entity = m_info.entity;
    // The series list is always ascending.
    request.sortDescriptors = {{QLatin1String(m_info.attribute), !searchable() || m_sortAsc}};
    QString error;
    const auto entries = context().fetchEntries(request, &error);
    if (!entries) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_list = *entries;
    if (searchable()) {
        const auto fetched = toInt16(m_list.size());
        if (!fetched)
            qFatal("%s count %lld does not fit a 16-bit integer", m_info.listTitle, qint64(m_list.size()));
        m_count = *fetched;
    }
}

void ReferenceTableController::seedFromBooks()
{
    FetchRequest request;
    request.entity = Entity::Books;
    request.sortDescriptors = {{QStringLiteral("series"), true}};
    QString error;
    const auto books = context().fetchBooks(request, &error);
    if (!books) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_newSeriesList.clear();
    for (const Books &book : *books) {
        if (book.series && !m_newSeriesList.contains(*book.series))
            m_newSeriesList.append(*book.series);
    }
    for (const QString &name : std::as_const(m_newSeriesList)) {
        ReferenceEntry entry;
        entry.value = name;
        logIfFailed(context().insertEntry(m_info.entity, entry));
    }
}

void ReferenceTableController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    filter();
}

void ReferenceTableController::filter()
{
    if (!searching()) {
        m_filteredList = m_list;
    } else {
        const QString needle = m_searchText.toLower();
        m_filteredList.clear();
        for (const auto &entry : std::as_const(m_list)) {
            if (entry.value && entry.value->toLower().contains(needle))
                m_filteredList.append(entry);
        }
    }
    showRows();
}

void ReferenceTableController::showRows()
{
    m_rows.reset(searching() ? m_filteredList : m_list);
}

void ReferenceTableController::SortButtonTapped()
{
    if (!searchable())
        return;
    m_sortAsc = !m_sortAsc;
    load();
}

void ReferenceTableController::didSelectRow(int row)
{
    const auto &shown = searching() ? m_filteredList : m_list;
    if (row < 0 || row >= shown.size())
        return;
    const ReferenceEntry &entry = shown.at(row);
    m_selectedName = entry.value;
    switch (m_info.selectedName) {
    case SelectedNameSlot::Genre: app().state().setSelectedGenreName(entry.value.value_or(QString())); break;
    case SelectedNameSlot::Series: app().state().setSelectedSeriesName(entry.value.value_or(QString())); break;
    case SelectedNameSlot::None: break;
    }
    if (m_info.editGetsEntry) {
        m_passedEntry = entry.value;
        app().state().setCallingScreen(QStringLiteral("Master"));
    }
    Q_EMIT selectedNameChanged();
    Q_EMIT navigate(QLatin1String(m_info.editTarget));
}

void ReferenceTableController::deleteRow(int row)
{
    // Only the array the row came from loses the entry; the next load corrects the other.
    QList<ReferenceEntry> &source = searching() ? m_filteredList : m_list;
    if (row < 0 || row >= source.size())
        return;
    const ReferenceEntry entry = source.at(row);
    const bool deleted = logIfFailed(context().deleteEntry(m_info.entity, entry.pk));
    app().saveContext();
    source.removeAt(row);
    m_rows.removeRowAt(row);
    m_deleted.reset();
    if (deleted) {
        m_deleted = Deleted{entry, row, searching()};
        Q_EMIT rowDeleted(entry.value.value_or(QString()));
    }
}

void ReferenceTableController::undoDelete()
{
    if (!m_deleted)
        return;
    const Deleted deleted = *std::exchange(m_deleted, std::nullopt);
    ReferenceEntry entry = deleted.entry;
    if (!logIfFailed(context().insertEntry(m_info.entity, entry)))
        return;
    app().saveContext();
    if (deleted.row < 0) {
        load();
        return;
    }
    // The entry comes back under a new key; the other array may still hold the old one.
    for (auto *list : {&m_list, &m_filteredList}) {
        for (auto &e : *list) {
            if (e.pk == deleted.entry.pk)
                e = entry;
        }
    }
    QList<ReferenceEntry> &source = deleted.fromFiltered ? m_filteredList : m_list;
    if (!source.contains(entry))
        source.insert(qMin(deleted.row, int(source.size())), entry);
    showRows();
}

} // namespace tomewise
