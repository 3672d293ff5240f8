#include "grouptableviewcontroller.h"

#include "app/log.h"

#include <QVariantMap>

#include <algorithm>
#include <numeric>

namespace tomewise {

GroupTableViewController::GroupTableViewController(GroupKind kind, AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(groupKind(kind))
{
    setTitle(tabTitle());
}

GroupCounts &GroupTableViewController::counts()
{
    if (!m_counts)
        m_counts.emplace(context(), app().dateText());
    return *m_counts;
}

void GroupTableViewController::viewDidLoad()
{
    m_sortAsc = true;
    build();
}

void GroupTableViewController::viewWillAppear()
{
    if (m_sortAsc)
        recount();
}

void GroupTableViewController::build()
{
    QString error;
    FetchRequest all;
    all.predicates = groupPredicates(m_info.fetchPredicate, {QStringLiteral("0")});
    const auto books = context().count(all, &error);
    const auto values = books ? counts().values(m_info, &error) : std::nullopt;
    if (!values) {
        qCWarning(lcStore).noquote() << error;
        show();
        return;
    }
    m_numberOfBooks = *books;
    QHash<QString, qint64> counts;
    m_list.clear();
    m_lowered.clear();
    for (const auto &v : *values) {
        m_list << v.value;
        m_lowered.insert(v.value, v.value.toLower());
        counts.insert(v.value, v.count);
    }
    order(m_list);
    m_model.setCounts(std::move(counts));
    filter();
}

void GroupTableViewController::recount()
{
    QString error;
    const auto values = counts().values(m_info, &error);
    if (!values) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    QHash<QString, qint64> counts;
    for (const auto &v : *values)
        counts.insert(v.value, v.count);
    m_model.setCounts(std::move(counts));
    updateChart();
}

// Code-point order of the canonically composed texts, capitals before small
// letters, so years sort as text ("950" after "1999").
void GroupTableViewController::order(QStringList &values) const
{
    std::vector<std::pair<QList<uint>, QString>> keyed;
    keyed.reserve(size_t(values.size()));
    for (auto &v : values)
        keyed.emplace_back(v.normalized(QString::NormalizationForm_C).toUcs4(), std::move(v));
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    if (!sortAsc())
        std::reverse(keyed.begin(), keyed.end());
    for (qsizetype i = 0; i < values.size(); ++i)
        values[i] = std::move(keyed[size_t(i)].second);
}

void GroupTableViewController::filter()
{
    if (!searching()) {
        m_filtered = m_list;
    } else {
        const QString needle = m_searchText.toLower();
        m_filtered.clear();
        for (const auto &v : std::as_const(m_list)) {
            if (m_lowered.value(v).contains(needle))
                m_filtered << v;
        }
    }
    show();
}

void GroupTableViewController::show()
{
    m_model.setRows(searching() ? m_filtered : m_list);
    Q_EMIT listChanged();
    updateChart();
}

void GroupTableViewController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    filter();
}

QString GroupTableViewController::header() const
{
    return groupHeader(m_info.header, m_list.size(), m_filtered.size(), searching());
}

void GroupTableViewController::SortButtonTapped()
{
    if (!m_sortAsc)
        qFatal("The sort button was tapped before the summary had loaded");
    m_sortAsc = !*m_sortAsc;
    app().state().setGroupSortAscending(*m_sortAsc);
    if (!searching()) {
        build();
        return;
    }
    order(m_filtered);
    show();
}

void GroupTableViewController::selectRow(int row)
{
    const QStringList &shown = m_model.rows();
    if (row >= 0 && row < shown.size())
        selectValue(shown.at(row));
}

void GroupTableViewController::selectValue(const QString &value)
{
    AppState &state = app().state();
    switch (m_info.slot) {
    case GroupValueSlot::CurrentBookText:
        setAttributeValue(state.currentBook, groupAttribute(m_info.slotField), value);
        break;
    case GroupValueSlot::CurrentBookYear:
    case GroupValueSlot::SelectedReadYear: {
        const auto year = parseInt16(value);
        if (!year)
            qFatal("The year %s is not a 16-bit number", qPrintable(value));
        if (m_info.slot == GroupValueSlot::CurrentBookYear) {
            setAttributeValue(state.currentBook, groupAttribute(m_info.slotField), *year);
        } else {
            state.currentBook.dt = value;
            state.setSelectedReadYear(*year);
        }
        break;
    }
    case GroupValueSlot::SelectedFormat:
        state.setSelectedFormat(value);
        break;
    }
    Q_EMIT navigate(QLatin1String(m_info.breakdownTarget));
}

void GroupTableViewController::updateChart()
{
    const QStringList &shown = m_model.rows();
    QVariantList chart;
    int most = 0;
    auto bar = [&](const QString &value, qint64 n, bool other) {
        most = std::max(most, int(n));
        chart << QVariantMap{{QStringLiteral("value"), value}, {QStringLiteral("count"), n},
                             {QStringLiteral("other"), other}};
    };
    if (timeline()) {
        // A year per point, in the list's own order.
        for (const auto &v : shown)
            bar(v, m_model.countOf(v), false);
    } else {
        // The longest bars first; equal counts keep the list's order.
        QList<qsizetype> rows(shown.size());
        std::iota(rows.begin(), rows.end(), 0);
        std::stable_sort(rows.begin(), rows.end(), [&](qsizetype a, qsizetype b) {
            return m_model.countOf(shown[a]) > m_model.countOf(shown[b]);
        });
        qint64 rest = 0;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const QString &v = shown[rows[i]];
            if (i < kChartBars)
                bar(v, m_model.countOf(v), false);
            else
                rest += m_model.countOf(v);
        }
        if (rows.size() > kChartBars)
            bar(QStringLiteral("Other"), rest, true);
    }
    m_chart = chart;
    m_chartMax = most;
    Q_EMIT chartChanged();
}

} // namespace tomewise
