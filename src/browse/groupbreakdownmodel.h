#pragma once

#include "browse/groupkind.h"
#include "model/books.h"

#include <QAbstractListModel>
#include <QHash>

#include <functional>
#include <memory>

namespace tomewise {

class DateText;

// A breakdown's rows: BookList and, while searching, FilteredBookList. Label
// texts and whether a book has a cover are worked out only for the rows a
// view asks for; the cover itself is served from its image address.
class GroupBreakdownModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role { PkRole = Qt::UserRole + 1, CoverSourceRole, LabelsRole };

    GroupBreakdownModel(const GroupKindInfo &kind, QObject *parent = nullptr);

    void setDateText(const DateText *dates) { m_dates = dates; }
    void setCoverCheck(std::function<bool(qint64)> check) { m_hasCover = std::move(check); }

    // A fresh fetch becomes BookList; the searched list keeps its rows.
    void setBookList(QList<Books> books);
    // FilteredBookList from BookList: the books whose lower-cased name holds `text`.
    void setSearchText(const QString &text);
    // Orders FilteredBookList by name, stably; a book without a name is fatal.
    void sortShownByName(bool ascending);
    void removeShownRow(int row);

    bool searching() const { return m_searching; }
    const Books &book(int row) const;
    QStringList labels(int row) const;
    int bookListSize() const { return int(m_all.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    struct Row
    {
        Books book;
        int cover = -1; // not asked yet
    };
    using Rows = QList<std::shared_ptr<Row>>;
    const Rows &shown() const { return m_searching ? m_filtered : m_all; }
    QString longDate(const Books &book) const;

    const GroupKindInfo &m_kind;
    const DateText *m_dates = nullptr;
    std::function<bool(qint64)> m_hasCover;
    Rows m_all;
    Rows m_filtered;
    bool m_searching = false;
    mutable QHash<qint64, QString> m_dayTexts; // books read on one day share their instant
};

} // namespace tomewise
