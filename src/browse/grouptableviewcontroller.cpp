#include "grouptableviewcontroller.h"

#include "app/log.h"

#include <QSet>
#include <QVariantMap>

#include <algorithm>
#include <cstdlib>

namespace tomewise {

GroupTableViewController::GroupTableViewController(GroupKind kind, AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(groupKind(kind))
{
    setTitle(tabTitle());
}

GroupCounts &GroupTableViewController::counts()
{
    if (!m_counts) {
        m_counts.emplace(context(), app().dateText());
        m_model.setCounter([this](const QString &value) {
            QString error;
            const auto n = m_counts->count(m_info, value, &error);
            if (!n)
                qCWarning(lcStore).noquote() << error;
            return n;
        });
    }
    return *m_counts;
}

void GroupTableViewController::viewDidLoad()
{
    m_sortAsc = true;
    build();
    m_justLoaded = true;
}

void GroupTableViewController::viewWillAppear()
{
    if (!m_sortAsc)
        return;
    // The counts were fetched with the list a moment ago; counting them again
    // would only throw that work away.
    if (m_justLoaded) {
        m_justLoaded = false;
        return;
    }
    if (m_chartShown && countAll())
        updateChart();
    else
        m_model.forgetCounts();
}

void GroupTableViewController::setChartShown(bool shown)
{
    if (m_chartShown == shown)
        return;
    m_chartShown = shown;
    if (shown)
        countAll();
    updateChart();
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
    QHash<QString, qint64> found;
    found.reserve(values->size());
    // A rebuild only adds values: a group whose last book went stays, with 0.
    QSet<QString> listed(m_list.cbegin(), m_list.cend());
    for (const auto &v : *values) {
        if (!listed.contains(v.value)) {
            listed.insert(v.value);
            m_list << v.value;
        }
        found.insert(v.value, v.count);
    }
    for (const auto &v : std::as_const(m_list)) {
        if (!found.contains(v))
            found.insert(v, 0);
    }
    order(m_list);
    m_model.setCounts(std::move(found));
    filter();
}

// Every count in one statement, for the chart that shows them all.
bool GroupTableViewController::countAll()
{
    QString error;
    const auto values = counts().values(m_info, &error);
    if (!values) {
        qCWarning(lcStore).noquote() << error;
        return false;
    }
    QHash<QString, qint64> found;
    found.reserve(values->size());
    for (const auto &v : *values)
        found.insert(v.value, v.count);
    m_model.setCounts(std::move(found));
    return true;
}

// Code-point order of the canonically composed texts, capitals before small
// letters, so years sort as text ("950" after "1999").
void GroupTableViewController::order(QStringList &values) const
{
    // Below U+0300 every text is already composed and UTF-16 order is code-point
    // order, so the store's own order of such texts stands.
    const bool plain = std::all_of(values.cbegin(), values.cend(), [](const QString &v) {
        return std::all_of(v.cbegin(), v.cend(), [](QChar c) { return c.unicode() < 0x300; });
    });
    if (plain) {
        if (!std::is_sorted(values.cbegin(), values.cend()))
            std::stable_sort(values.begin(), values.end());
    } else {
        std::vector<std::pair<QList<uint>, QString>> keyed;
        keyed.reserve(size_t(values.size()));
        for (auto &v : values)
            keyed.emplace_back(v.normalized(QString::NormalizationForm_C).toUcs4(), std::move(v));
        std::stable_sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        for (qsizetype i = 0; i < values.size(); ++i)
            values[i] = std::move(keyed[size_t(i)].second);
    }
    if (!sortAsc())
        std::reverse(values.begin(), values.end());
}

const QString &GroupTableViewController::lowered(const QString &value)
{
    auto it = m_lowered.find(value);
    if (it == m_lowered.end())
        it = m_lowered.insert(value, value.toLower());
    return *it;
}

void GroupTableViewController::filter()
{
    if (!searching()) {
        m_filtered = m_list;
    } else {
        const QString needle = m_searchText.toLower();
        m_filtered.clear();
        for (const auto &v : std::as_const(m_list)) {
            if (lowered(v).contains(needle))
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
    m_justLoaded = false; // the breakdown may delete books: count on return
    Q_EMIT navigate(QLatin1String(m_info.breakdownTarget));
}

void GroupTableViewController::updateChart()
{
    QVariantList chart;
    int most = 0;
    auto bar = [&](const QString &value, qint64 n, bool other) {
        most = std::max(most, int(n));
        chart << QVariantMap{{QStringLiteral("value"), value}, {QStringLiteral("count"), n},
                             {QStringLiteral("other"), other}};
    };
    auto gap = [&](const QString &label) {
        chart << QVariantMap{{QStringLiteral("value"), label}, {QStringLiteral("count"), 0},
                             {QStringLiteral("other"), false}, {QStringLiteral("gap"), true}};
    };
    const QStringList &shown = m_model.rows();
    if (!m_chartShown) {
        // Nothing to draw while the list is shown.
    } else if (timeline()) {
        // Years in number order, the way the list runs, with an empty column
        // for each year without books; a long empty stretch is one "…" column.
        std::vector<std::pair<int, QString>> years;
        QStringList odd;
        for (const auto &v : shown) {
            bool ok = false;
            const int y = v.toInt(&ok, 10);
            if (ok)
                years.emplace_back(y, v);
            else
                odd << v;
        }
        std::stable_sort(years.begin(), years.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        if (!sortAsc())
            std::reverse(years.begin(), years.end());
        for (size_t i = 0; i < years.size(); ++i) {
            if (i > 0) {
                const int missing = std::abs(years[i].first - years[i - 1].first) - 1;
                if (missing > kChartGapYears)
                    gap(QStringLiteral("…"));
                else
                    for (int k = 0; k < missing; ++k)
                        gap(QString());
            }
            bar(years[i].second, m_model.countOf(years[i].second), false);
        }
        for (const auto &v : std::as_const(odd))
            bar(v, m_model.countOf(v), false);
    } else {
        // The longest bars first; equal counts keep the list's order.
        std::vector<std::pair<qint64, qsizetype>> rows;
        rows.reserve(size_t(shown.size()));
        for (qsizetype i = 0; i < shown.size(); ++i)
            rows.emplace_back(-qint64(m_model.countOf(shown[i])), i);
        const auto top = rows.begin() + std::min<qsizetype>(kChartBars, shown.size());
        std::partial_sort(rows.begin(), top, rows.end());
        qint64 rest = 0;
        for (auto it = rows.begin(); it != rows.end(); ++it) {
            if (it < top)
                bar(shown[it->second], -it->first, false);
            else
                rest -= it->first;
        }
        if (shown.size() > kChartBars)
            bar(QStringLiteral("Other"), rest, true);
    }
    m_chart = chart;
    m_chartMax = most;
    Q_EMIT chartChanged();
}

} // namespace tomewise
