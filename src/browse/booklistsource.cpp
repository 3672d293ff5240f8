#include "booklistsource.h"

#include "app/datetext.h"
#include "browse/titlecollation.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

#include <sqlite3.h>

namespace tomewise {

namespace {

bool fail(const QSqlQuery &q, QString *error)
{
    if (error)
        *error = q.lastError().text();
    return false;
}

bool isAscii(const QString &s)
{
    return std::all_of(s.begin(), s.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QString likePattern(const QString &needle)
{
    QString escaped = needle;
    escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'%', QStringLiteral("\\%")).replace(u'_', QStringLiteral("\\_"));
    return u'%' + escaped + u'%';
}

// Runs a query of one or two integer columns on the store's own connection
// through SQLite itself: a list's keys are many, and reading them through
// QSqlQuery costs several times the query.
bool scanIntegers(BookStore &store, const QString &sql, const QStringList &binds, std::vector<qint64> &first,
                  std::vector<qint64> *second, QString *error)
{
    const QVariant handle = store.database().driver()->handle();
    sqlite3 *db = handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0
        ? *static_cast<sqlite3 *const *>(handle.data())
        : nullptr;
    if (!db) {
        if (error)
            *error = QStringLiteral("The store has no SQLite connection");
        return false;
    }
    sqlite3_stmt *stmt = nullptr;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(db, text.constData(), int(text.size()), &stmt, nullptr) != SQLITE_OK) {
        if (error)
            *error = QString::fromUtf8(sqlite3_errmsg(db));
        return false;
    }
    for (int i = 0; i < int(binds.size()); ++i) {
        const QByteArray value = binds[i].toUtf8();
        sqlite3_bind_text(stmt, i + 1, value.constData(), int(value.size()), SQLITE_TRANSIENT);
    }
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        first.push_back(sqlite3_column_int64(stmt, 0));
        if (second)
            second->push_back(sqlite3_column_int64(stmt, 1));
    }
    if (rc != SQLITE_DONE && error)
        *error = QString::fromUtf8(sqlite3_errmsg(db));
    sqlite3_finalize(stmt);
    return rc == SQLITE_DONE;
}

const QStringList &knownTextColumns()
{
    static const QStringList columns{QStringLiteral("name"), QStringLiteral("author"), QStringLiteral("category"),
                                     QStringLiteral("rating"), QStringLiteral("series")};
    return columns;
}

} // namespace

BookListSource::BookListSource(BookStore &store)
    : m_store(store)
{
}

std::optional<std::vector<qint64>> BookListSource::keys(const QList<SortDescriptor> &order, QString *error)
{
    QStringList terms;
    for (const auto &s : order) {
        if (!knownTextColumns().contains(s.attribute) && s.attribute != u"dateRead" && s.attribute != u"seriesNumber") {
            if (error)
                *error = QStringLiteral("Unknown attribute %1 of Books").arg(s.attribute);
            return std::nullopt;
        }
        terms << s.attribute + (s.ascending ? QStringLiteral(" ASC") : QStringLiteral(" DESC"));
    }
    terms << QStringLiteral("pk");
    std::vector<qint64> out;
    if (!scanIntegers(m_store, QStringLiteral("SELECT pk FROM Books ORDER BY ") + terms.join(u','), {}, out, nullptr,
                      error))
        return std::nullopt;
    return out;
}

std::optional<BookListSource::Sectioned> BookListSource::titleOrder(const TitleCollation &collation, QString *error)
{
    QSqlDatabase db = m_store.database();
    QSqlQuery q(db);
    q.setForwardOnly(true);
    // A title's key goes with the title: any writer that changes or removes
    // one drops its key, and the keys missing are made again below.
    for (const char *sql : {
             "CREATE TABLE IF NOT EXISTS BooksTitleKey (book INTEGER PRIMARY KEY, sortKey BLOB, section INTEGER)",
             "CREATE TABLE IF NOT EXISTS BooksTitleKeyLocale (locale TEXT)",
             "CREATE INDEX IF NOT EXISTS BooksTitleKey_order ON BooksTitleKey(sortKey, book, section)",
             "CREATE TRIGGER IF NOT EXISTS BooksTitleKey_rename AFTER UPDATE OF name ON Books "
             "WHEN OLD.name IS NOT NEW.name BEGIN DELETE FROM BooksTitleKey WHERE book = OLD.pk; END",
             "CREATE TRIGGER IF NOT EXISTS BooksTitleKey_delete AFTER DELETE ON Books "
             "BEGIN DELETE FROM BooksTitleKey WHERE book = OLD.pk; END"}) {
        if (!q.exec(QLatin1String(sql)))
            return fail(q, error), std::nullopt;
    }
    BookStore::Transaction transaction(m_store);
    // Keys made under another locale order differently: all are made again.
    if (!q.exec(QStringLiteral("SELECT locale FROM BooksTitleKeyLocale")))
        return fail(q, error), std::nullopt;
    const bool sameLocale = q.next() && q.value(0).toString() == collation.locale();
    q.finish();
    if (!sameLocale) {
        QSqlQuery reset(db);
        if (!reset.exec(QStringLiteral("DELETE FROM BooksTitleKey")) ||
            !reset.exec(QStringLiteral("DELETE FROM BooksTitleKeyLocale")) ||
            !reset.prepare(QStringLiteral("INSERT INTO BooksTitleKeyLocale (locale) VALUES (?)")))
            return fail(reset, error), std::nullopt;
        reset.addBindValue(collation.locale());
        if (!reset.exec())
            return fail(reset, error), std::nullopt;
    }
    // With the triggers, equal counts mean every book has its key.
    if (!q.exec(QStringLiteral("SELECT (SELECT count(*) FROM Books), (SELECT count(*) FROM BooksTitleKey)")) ||
        !q.next())
        return fail(q, error), std::nullopt;
    const bool complete = q.value(0).toLongLong() == q.value(1).toLongLong();
    q.finish();
    if (!complete) {
        if (!q.exec(QStringLiteral("SELECT pk, name FROM Books WHERE pk NOT IN (SELECT book FROM BooksTitleKey)")))
            return fail(q, error), std::nullopt;
        QSqlQuery insert(db);
        if (!insert.prepare(QStringLiteral("INSERT OR REPLACE INTO BooksTitleKey (book, sortKey, section) "
                                           "VALUES (?, ?, ?)")))
            return fail(insert, error), std::nullopt;
        while (q.next()) {
            int rank = 0;
            insert.addBindValue(q.value(0).toLongLong());
            insert.addBindValue(collation.orderKey(q.value(1).toString(), &rank));
            insert.addBindValue(rank);
            if (!insert.exec())
                return fail(insert, error), std::nullopt;
        }
        q.finish();
    }
    if (auto r = transaction.commit(); !r) {
        if (error)
            *error = r.error;
        return std::nullopt;
    }
    Sectioned out;
    std::vector<qint64> ranks;
    if (!scanIntegers(m_store, QStringLiteral("SELECT book, section FROM BooksTitleKey ORDER BY sortKey, book"), {},
                      out.keys, &ranks, error))
        return std::nullopt;
    // Rows of one letter share its one string.
    QHash<qint64, QString> labels;
    out.sections.reserve(qsizetype(ranks.size()));
    for (qint64 rank : ranks) {
        auto it = labels.constFind(rank);
        if (it == labels.constEnd())
            it = labels.insert(rank, collation.sectionLabel(int(rank)));
        out.sections.append(*it);
    }
    return out;
}

std::optional<std::vector<qint64>> BookListSource::matching(const QStringList &attributes, const QString &text,
                                                            const DateText &dates, QString *error)
{
    const QString needle = text.toLower();
    if (attributes == QStringList{QStringLiteral("dateRead")})
        return matchingDates(needle, dates, error);
    QStringList columns;
    for (const auto &a : attributes) {
        if (!knownTextColumns().contains(a)) {
            if (error)
                *error = QStringLiteral("Unknown attribute %1 of Books").arg(a);
            return std::nullopt;
        }
        columns << a;
    }
    std::vector<qint64> out;
    if (isAscii(needle)) {
        // The store's LIKE folds ASCII case, which is all an ASCII text needs.
        QStringList terms;
        for (const auto &c : columns)
            terms << c + QStringLiteral(" LIKE ?1 ESCAPE '\\'");
        if (!scanIntegers(m_store, QStringLiteral("SELECT pk FROM Books WHERE ") + terms.join(QStringLiteral(" OR ")),
                          {likePattern(needle)}, out, nullptr, error))
            return std::nullopt;
    } else {
        // Other letters fold beyond what LIKE knows; compare them here.
        QSqlQuery q(m_store.database());
        q.setForwardOnly(true);
        if (!q.exec(QStringLiteral("SELECT pk, ") + columns.join(u',') + QStringLiteral(" FROM Books")))
            return fail(q, error), std::nullopt;
        while (q.next()) {
            for (int c = 1; c <= int(columns.size()); ++c) {
                if (q.value(c).toString().toLower().contains(needle)) {
                    out.push_back(q.value(0).toLongLong());
                    break;
                }
            }
        }
    }
    std::sort(out.begin(), out.end());
    return out;
}

std::optional<std::vector<qint64>> BookListSource::matchingDates(const QString &needle, const DateText &dates,
                                                                 QString *error)
{
    // Books read on one day share their instant: the days are few beside the
    // books, so each is written out once and the store finds the books by day.
    std::vector<qint64> instants;
    if (!scanIntegers(m_store, QStringLiteral("SELECT DISTINCT dateRead FROM Books WHERE dateRead IS NOT NULL"), {},
                      instants, nullptr, error))
        return std::nullopt;
    QStringList days;
    for (qint64 secs : instants) {
        auto it = m_dayTexts.find(secs);
        if (it == m_dayTexts.end()) {
            const QDateTime instant = QDateTime::fromSecsSinceEpoch(secs, Qt::UTC);
            // The calendar's fields cost far less than the formatter; years
            // before 1 are left to the formatter's era rules.
            const DateText::Components c = dates.components(instant);
            it = m_dayTexts.insert(secs, c.year >= 1 && c.year <= 9999
                                             ? QStringLiteral("%1-%2-%3")
                                                   .arg(c.year, 4, 10, QChar(u'0'))
                                                   .arg(c.month, 2, 10, QChar(u'0'))
                                                   .arg(c.day, 2, 10, QChar(u'0'))
                                             : dates.formatPattern(instant, QStringLiteral("yyyy-MM-dd")));
        }
        if (it->contains(needle))
            days << QString::number(secs);
    }
    std::vector<qint64> out;
    if (days.isEmpty())
        return out;
    if (!scanIntegers(m_store, QStringLiteral("SELECT pk FROM Books WHERE dateRead IN (SELECT value FROM json_each(?))"),
                      {u'[' + days.join(u',') + u']'}, out, nullptr, error))
        return std::nullopt;
    std::sort(out.begin(), out.end());
    return out;
}

std::vector<qint64> BookListSource::keep(const std::vector<qint64> &keys, const std::vector<qint64> &found)
{
    std::vector<qint64> out;
    for (qint64 k : keys) {
        if (std::binary_search(found.begin(), found.end(), k))
            out.push_back(k);
    }
    return out;
}

} // namespace tomewise
