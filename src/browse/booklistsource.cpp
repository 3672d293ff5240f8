#include "booklistsource.h"

#include "app/datetext.h"
#include "browse/titlecollation.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <cstring>

#include <sqlite3.h>

namespace tomewise {

namespace {

bool fail(const QSqlQuery &q, QString *error)
{
    if (error)
        *error = q.lastError().text();
    return false;
}

// Runs a query of one or two integer columns on the store's own connection
// through SQLite itself: a list's keys are many, and reading them through
// QSqlQuery costs several times the query.
bool scanIntegers(BookStore &store, const QString &sql, const QStringList &binds, std::vector<qint64> &first,
                  std::vector<qint64> *second, QString *error)
{
    sqlite3 *db = store.nativeHandle();
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
    // The index only speeds the order up: a store too busy to make it still gives its keys.
    if (!m_indexed) {
        m_indexed = true;
        prepareIndexes(m_store);
    }
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
    // The order key starts with the rank, so each letter's rows come together.
    out.sections.reserve(ranks.size());
    qint64 last = -1;
    for (qint64 rank : ranks) {
        if (out.names.isEmpty() || rank != last)
            out.names << collation.sectionLabel(int(last = rank));
        out.sections.push_back(int(out.names.size()) - 1);
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
    // A zero ends each attribute in the held texts, and no title holds one.
    if (needle.contains(QChar(0)))
        return out;
    if ((m_folded.columns != columns || m_folded.mark != changeMark()) && !loadFolded(columns, error))
        return std::nullopt;
    // One pass over the texts: a hit names its book, and the search goes on
    // from the next book.
    const QByteArray pattern = needle.toUtf8();
    const char *begin = m_folded.text.data();
    const char *end = begin + m_folded.text.size();
    for (const char *at = begin; at < end;) {
        const void *hit = memmem(at, size_t(end - at), pattern.constData(), size_t(pattern.size()));
        if (!hit)
            break;
        const auto offset = quint32(static_cast<const char *>(hit) - begin);
        const auto next = std::upper_bound(m_folded.starts.begin(), m_folded.starts.end(), offset);
        if (const qint64 key = m_folded.keys[size_t(next - m_folded.starts.begin()) - 1]; key >= 0)
            out.push_back(key);
        at = next == m_folded.starts.end() ? end : begin + *next;
    }
    std::sort(out.begin(), out.end());
    return out;
}

std::pair<qint64, qint64> BookListSource::changeMark()
{
    sqlite3 *db = m_store.nativeHandle();
    if (!db)
        return {-1, -1};
    // Writes through this connection (triggers included), and commits by others.
    qint64 version = -1;
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA data_version", -1, &stmt, nullptr) == SQLITE_OK && sqlite3_step(stmt) == SQLITE_ROW)
        version = sqlite3_column_int64(stmt, 0);
    sqlite3_finalize(stmt);
    return {sqlite3_total_changes64(db), version};
}

namespace {

// Reads the columns of every book into one lower-cased text.
bool readFolded(sqlite3 *db, const QStringList &columns, BookListSource::Folded &folded, QString *error)
{
    // In no order, so that the store can read a narrow index holding the columns rather than every row.
    const QByteArray sql = "SELECT pk, " + columns.join(u',').toLatin1() + " FROM Books";
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &stmt, nullptr) != SQLITE_OK) {
        if (error)
            *error = QString::fromUtf8(sqlite3_errmsg(db));
        return false;
    }
    folded.columns = columns;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        folded.keys.push_back(sqlite3_column_int64(stmt, 0));
        folded.starts.push_back(quint32(folded.text.size()));
        for (int c = 1; c <= int(columns.size()); ++c) {
            const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(stmt, c));
            const int size = sqlite3_column_bytes(stmt, c);
            const size_t from = folded.text.size();
            folded.text.append(bytes ? bytes : "", size_t(size));
            bool ascii = true;
            for (size_t i = from; i < folded.text.size(); ++i) {
                char &ch = folded.text[i];
                if (uchar(ch) >= 0x80) {
                    ascii = false;
                    break;
                }
                if (ch >= 'A' && ch <= 'Z')
                    ch = char(ch + ('a' - 'A'));
            }
            // Other letters fold as Qt folds the search text.
            if (!ascii) {
                folded.text.resize(from);
                folded.text.append(QString::fromUtf8(bytes, size).toLower().toStdString());
            }
            folded.text.push_back('\0');
        }
    }
    sqlite3_finalize(stmt);
    if (rc != SQLITE_DONE && error)
        *error = QString::fromUtf8(sqlite3_errmsg(db));
    return rc == SQLITE_DONE;
}

} // namespace

void BookListSource::prepareSearch(const QStringList &columns)
{
    // Dates are searched by day, not through the texts.
    if (!std::all_of(columns.begin(), columns.end(), [](const QString &c) { return knownTextColumns().contains(c); }))
        return;
    const QString file = m_store.database().databaseName();
    const auto mark = changeMark();
    // Another connection sees only what is committed: inside a transaction the texts are read here when asked.
    sqlite3 *own = m_store.nativeHandle();
    if ((m_folded.columns == columns && m_folded.mark == mark) || !own || !sqlite3_get_autocommit(own)
        || file.isEmpty() || file.startsWith(u':') || file.contains(QStringLiteral("mode=memory")))
        return;
    if (m_pending.isValid())
        m_pending.waitForFinished();
    m_pending = QtConcurrent::run([file, columns, mark]() {
        auto folded = std::make_shared<Folded>();
        sqlite3 *db = nullptr;
        if (sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr)
                == SQLITE_OK
            && readFolded(db, columns, *folded, nullptr))
            folded->mark = mark;
        else
            folded.reset();
        sqlite3_close(db);
        return folded;
    });
}

bool BookListSource::loadFolded(const QStringList &columns, QString *error)
{
    // The texts read ahead serve when nothing was written since they were begun.
    if (m_pending.isValid()) {
        std::shared_ptr<Folded> ahead = m_pending.result();
        m_pending = {};
        if (ahead && ahead->columns == columns && ahead->mark == changeMark()) {
            m_folded = std::move(*ahead);
            return true;
        }
    }
    m_folded = Folded();
    sqlite3 *db = m_store.nativeHandle();
    if (!db) {
        if (error)
            *error = QStringLiteral("The store has no SQLite connection");
        return false;
    }
    Folded folded;
    if (!readFolded(db, columns, folded, error))
        return false;
    folded.mark = changeMark();
    m_folded = std::move(folded);
    return true;
}

void BookListSource::forgetKey(qint64 key, std::pair<qint64, qint64> markBefore)
{
    // Only when the texts held all the store had before this one delete.
    if (m_folded.mark != markBefore)
        return;
    for (qint64 &k : m_folded.keys) {
        if (k == key)
            k = -1;
    }
    m_folded.mark = changeMark();
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

bool BookListSource::prepareIndexes(BookStore &store, QString *error)
{
    // The newest-first lists, ties in store order, read straight off one index.
    QSqlQuery q(store.database());
    if (!q.exec(QStringLiteral("CREATE INDEX IF NOT EXISTS Books_dateRead_desc ON Books(dateRead DESC, pk)")))
        return fail(q, error);
    return true;
}

} // namespace tomewise
