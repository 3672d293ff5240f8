#pragma once

#include "app/screencontroller.h"
#include "browse/groupcounts.h"
#include "browse/groupkind.h"
#include "browse/groupsummarymodel.h"

#include <QVariantList>

#include <optional>

namespace tomewise {

// A group summary: the distinct values of one attribute with their book
// counts, searchable, in either direction, and drawn as a chart on request.
// A tap keeps the value where the breakdown reads it and opens the breakdown.
class GroupTableViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString tabTitle READ tabTitle CONSTANT)
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT)
    Q_PROPERTY(QString valueLabel READ valueLabel CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(bool timeline READ timeline CONSTANT)
    Q_PROPERTY(bool SortAsc READ sortAsc NOTIFY listChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY listChanged)
    Q_PROPERTY(bool chartShown READ chartShown WRITE setChartShown NOTIFY chartChanged)
    Q_PROPERTY(QVariantList chart READ chart NOTIFY chartChanged)
    Q_PROPERTY(int chartMax READ chartMax NOTIFY chartChanged)
    Q_PROPERTY(tomewise::GroupSummaryModel *model READ model CONSTANT)

public:
    static constexpr int kChartBars = 20;
    // Empty years drawn one column each up to this many in a row.
    static constexpr int kChartGapYears = 5;

    GroupTableViewController(GroupKind kind, AppDelegate *delegate, QObject *parent);

    const GroupKindInfo &info() const { return m_info; }
    QString tabTitle() const { return QLatin1String(m_info.tabTitle); }
    QString placeholder() const { return QLatin1String(m_info.summaryPlaceholder); }
    QString valueLabel() const { return QLatin1String(m_info.summaryLabels[0]); }
    int rowHeight() const { return kSummaryRowHeight; }
    bool timeline() const { return !m_info.chart; }
    bool sortAsc() const { return m_sortAsc.value_or(true); }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QString header() const;
    bool chartShown() const { return m_chartShown; }
    void setChartShown(bool shown);
    QVariantList chart() const { return m_chart; }
    int chartMax() const { return m_chartMax; }
    GroupSummaryModel *model() { return &m_model; }

    qint64 numberOfBooks() const { return m_numberOfBooks; }
    const QStringList &valueList() const { return m_list; }
    const QStringList &filteredList() const { return m_filtered; }
    // The rows shown now, and a row's count.
    const QStringList &shownList() const { return m_model.rows(); }
    qint16 count(const QString &value) const { return m_model.countOf(value); }

    Q_INVOKABLE void viewDidLoad();
    // Shown again (back from a breakdown, or its tab chosen): counts afresh, list kept.
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void SortButtonTapped();
    Q_INVOKABLE void selectRow(int row);
    // A tap on a row or on its bar in the chart.
    Q_INVOKABLE void selectValue(const QString &value);

Q_SIGNALS:
    void listChanged();
    void searchTextChanged();
    void chartChanged();

private:
    bool searching() const { return !m_searchText.isEmpty(); }
    void build();
    void order(QStringList &values) const;
    void filter();
    void show();
    bool countAll();
    void updateChart();
    const QString &lowered(const QString &value);
    GroupCounts &counts();

    const GroupKindInfo &m_info;
    std::optional<GroupCounts> m_counts; // made once the delegate is known
    GroupSummaryModel m_model;
    QStringList m_list;       // FormatList, AuthorList ...
    QStringList m_filtered;   // FilteredFormatList ...
    QHash<QString, QString> m_lowered; // each value's compared text, made by the first search
    qint64 m_numberOfBooks = 0;
    std::optional<bool> m_sortAsc;
    QString m_searchText;
    bool m_chartShown = false;
    bool m_justLoaded = false;
    QVariantList m_chart;
    int m_chartMax = 0;
};

} // namespace tomewise
