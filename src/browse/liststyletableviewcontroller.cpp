#include "liststyletableviewcontroller.h"

#include "app/log.h"

#include <utility>

namespace tomewise {

ListStyleTableViewController::ListStyleTableViewController(AppDelegate *delegate, QObject *parent)
    : BookListController(delegate, parent)
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
    QList<SortDescriptor> order;
    for (const char *key : option->sortKeys) {
        if (key)
            order.append({QLatin1String(key), sortAsc()});
    }
    QString error;
    auto keys = source().keys(order, &error);
    if (!keys) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_model.setStore(&context());
    m_model.setOption(*option, app().dateText());
    m_model.setKeys(*keys);
    refilter();
}

void ListStyleTableViewController::refilter()
{
    search(m_model, searchText(), {QLatin1String(m_model.option().comparedAttribute)});
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
    deleteShownRow(m_model, row);
}

void ListStyleTableViewController::selectRow(int row)
{
    openShownRow(m_model, row);
}

} // namespace tomewise
