#include "bookstore.h"

#include <QAtomicInt>
#include <QHash>
#include <QFileInfo>
#include <QSqlDriver>
#include <QMutex>
#include <QThreadPool>
#include <QWaitCondition>
#include <QSqlError>

#include <algorithm>

#include <sqlite3.h>

namespace tomewise {

namespace {

QAtomicInt g_connectionCounter;

// Covers live beside the books, one row per cover, so that scanning, grouping
// and listing the books never pages through the image bytes.
constexpr auto kSchema = R"SQL(
CREATE TABLE Books (
  pk INTEGER PRIMARY KEY,
  author TEXT, bookFormat TEXT, bookPublisher TEXT, category TEXT, dateRead INTEGER,
  day INTEGER, dt TEXT, isbn TEXT, month INTEGER, name TEXT, notes TEXT,
  numberPages INTEGER, picture TEXT, publishDate INTEGER, rating TEXT, series TEXT,
  seriesNumber INTEGER, subTitle TEXT, year INTEGER, thumbnail INTEGER);
CREATE TABLE BooksPictureImage (
  book INTEGER PRIMARY KEY REFERENCES Books(pk) ON DELETE CASCADE,
  pictureImage BLOB NOT NULL);
CREATE TABLE Thumbnail (pk INTEGER PRIMARY KEY, id REAL, imageData BLOB, books INTEGER);
CREATE TABLE GenreList (pk INTEGER PRIMARY KEY, genre TEXT);
CREATE TABLE RatingList (pk INTEGER PRIMARY KEY, rating TEXT);
CREATE TABLE SeriesList (pk INTEGER PRIMARY KEY, series TEXT);
CREATE TABLE Event (pk INTEGER PRIMARY KEY, timestamp INTEGER);
CREATE INDEX Books_name_author ON Books(name, author);
CREATE INDEX Books_author ON Books(author);
CREATE INDEX Books_category ON Books(category);
CREATE INDEX Books_rating ON Books(rating);
CREATE INDEX Books_series ON Books(series, seriesNumber);
CREATE INDEX Books_bookFormat ON Books(bookFormat);
CREATE INDEX Books_publishDate ON Books(publishDate);
CREATE INDEX Books_dateRead ON Books(dateRead);
CREATE INDEX Books_year ON Books(year);
CREATE INDEX Books_dt ON Books(dt);
)SQL";

QVariant sqlValue(const QVariant &v)
{
    if (!v.isValid())
        return v;
    if (v.typeId() == QMetaType::QDateTime)
        return v.toDateTime().toSecsSinceEpoch();
    if (v.typeId() == QMetaType::QString && v.toString().isNull())
        return QString(QLatin1String("")); // present but empty is not NULL
    return v;
}

QVariant entryValue(const ReferenceEntry &entry)
{
    return entry.value ? sqlValue(*entry.value) : QVariant(QMetaType::fromType<QString>());
}

QString opSql(Predicate::Op op)
{
    switch (op) {
    case Predicate::Op::Equal: return QStringLiteral("=");
    case Predicate::Op::NotEqual: return QStringLiteral("<>");
    case Predicate::Op::Less: return QStringLiteral("<");
    case Predicate::Op::LessOrEqual: return QStringLiteral("<=");
    case Predicate::Op::Greater: return QStringLiteral(">");
    case Predicate::Op::GreaterOrEqual: return QStringLiteral(">=");
    case Predicate::Op::IsAbsent: return QStringLiteral("IS NULL");
    case Predicate::Op::IsPresent: return QStringLiteral("IS NOT NULL");
    }
    return {};
}

QString bookColumns()
{
    QStringList cols;
    for (const auto &a : booksAttributes()) {
        if (a.type() != AttributeType::Binary)
            cols << QStringLiteral("b.") + QLatin1String(a.name);
    }
    return cols.join(u',');
}

QStringList attributesOf(Entity entity)
{
    switch (entity) {
    case Entity::Books: {
        QStringList names;
        for (const auto &a : booksAttributes())
            names << QLatin1String(a.name);
        return names;
    }
    case Entity::GenreList: return {QStringLiteral("genre")};
    case Entity::RatingList: return {QStringLiteral("rating")};
    case Entity::SeriesList: return {QStringLiteral("series")};
    case Entity::Thumbnail: return {QStringLiteral("id"), QStringLiteral("imageData")};
    case Entity::Event: return {QStringLiteral("timestamp")};
    }
    return {};
}

} // namespace

QString entityName(Entity entity)
{
    switch (entity) {
    case Entity::Books: return QStringLiteral("Books");
    case Entity::GenreList: return QStringLiteral("GenreList");
    case Entity::RatingList: return QStringLiteral("RatingList");
    case Entity::SeriesList: return QStringLiteral("SeriesList");
    case Entity::Thumbnail: return QStringLiteral("Thumbnail");
    case Entity::Event: return QStringLiteral("Event");
    }
    return {};
}

std::optional<Entity> entityFromName(QStringView name)
{
    for (auto e : {Entity::Books, Entity::GenreList, Entity::RatingList, Entity::SeriesList,
                   Entity::Thumbnail, Entity::Event}) {
        if (name == entityName(e))
            return e;
    }
    return std::nullopt;
}

BookStore::BookStore()
    : m_connection(QStringLiteral("tomewise-store-%1").arg(g_connectionCounter.fetchAndAddRelaxed(1)))
{
}

BookStore::~BookStore()
{
    waitForCheckpoint();
    m_statements.clear();
    finalizeNative();
    if (m_db.isValid()) {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_connection);
    }
}

bool BookStore::isOpen() const
{
    return m_db.isValid() && m_db.isOpen();
}

StoreResult BookStore::open(const QString &path, QString *userInfo, int busyTimeoutMs)
{
    m_path = path;
    auto fail = [&](const QString &description, const QString &reason) {
        if (userInfo)
            *userInfo = QStringLiteral("{path: %1, reason: %2}").arg(path, reason);
        m_statements.clear();
        finalizeNative();
        if (m_db.isValid())
            m_db.close();
        return StoreResult{false, description};
    };
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return fail(QStringLiteral("The store could not be opened."), QStringLiteral("not a file"));

    m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    m_db.setDatabaseName(path);
    m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(std::max(busyTimeoutMs, 0)));
    if (!m_db.open())
        return fail(QStringLiteral("The store could not be opened."), m_db.lastError().text());

    QSqlQuery q(m_db);
    if (!q.exec(QStringLiteral("PRAGMA user_version")) || !q.next())
        return fail(QStringLiteral("The store could not be read."), lastError(q));
    const int version = q.value(0).toInt();
    q.finish();
    if (version > kSchemaVersion)
        return fail(QStringLiteral("The store was made by a newer version of Tomewise."),
                    QStringLiteral("store version %1, this version reads %2").arg(version).arg(kSchemaVersion));

    for (const auto *pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA foreign_keys=ON"}) {
        if (!q.exec(QLatin1String(pragma)))
            return fail(QStringLiteral("The store could not be configured."), lastError(q));
        q.finish();
    }
    if (version == 0) {
        if (auto r = createSchema(); !r)
            return fail(QStringLiteral("The store could not be created."), r.error);
    }
    return {};
}

StoreResult BookStore::createSchema()
{
    Transaction t(*this);
    for (const auto &statement : QString::fromLatin1(kSchema).split(u';', Qt::SkipEmptyParts)) {
        if (statement.trimmed().isEmpty())
            continue;
        QSqlQuery q(m_db);
        if (!q.exec(statement))
            return {false, lastError(q)};
    }
    QSqlQuery q(m_db);
    if (!q.exec(QStringLiteral("PRAGMA user_version=%1").arg(kSchemaVersion)))
        return {false, lastError(q)};
    return t.commit();
}

StoreResult BookStore::exec(const QString &sql)
{
    // Savepoint statements run for every write; they are prepared once too.
    return write(sql, {});
}

QSqlQuery *BookStore::run(const QString &sql, const QVariantList &binds, QString *error)
{
    bool ok = false;
    QSqlQuery &q = prepared(sql, &ok, error);
    if (!ok)
        return nullptr;
    for (int i = 0; i < binds.size(); ++i)
        q.bindValue(i, binds[i]);
    if (!q.exec()) {
        if (error)
            *error = lastError(q);
        return nullptr;
    }
    return &q;
}

StoreResult BookStore::write(const QString &sql, const QVariantList &binds, qint64 *insertId)
{
    QString error;
    QSqlQuery *q = run(sql, binds, &error);
    if (!q) {
        ++m_failedWrites;
        return {false, error};
    }
    if (insertId)
        *insertId = q->lastInsertId().toLongLong();
    q->finish();
    return {};
}

StoreResult BookStore::execute(const QString &sql, const QVariantList &binds, int *changed)
{
    sqlite3 *db = nativeHandle();
    auto failed = [&] {
        ++m_failedWrites;
        return StoreResult{false, db ? QString::fromUtf8(sqlite3_errmsg(db))
                                     : QStringLiteral("The store has no SQLite connection")};
    };
    if (!db)
        return failed();
    sqlite3_stmt *stmt = m_native.value(sql);
    if (!stmt) {
        const QByteArray text = sql.toUtf8();
        if (sqlite3_prepare_v3(db, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT, &stmt, nullptr)
            != SQLITE_OK)
            return failed();
        m_native.insert(sql, stmt);
    }
    // The values outlive the step: SQLite need not copy them.
    for (int i = 0; i < binds.size(); ++i) {
        const QVariant &v = binds[i];
        const int at = i + 1;
        if (v.isNull()) {
            sqlite3_bind_null(stmt, at);
            continue;
        }
        switch (v.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            sqlite3_bind_int64(stmt, at, v.toLongLong());
            break;
        case QMetaType::Double:
            sqlite3_bind_double(stmt, at, v.toDouble());
            break;
        case QMetaType::QByteArray: {
            const QByteArray &bytes = *static_cast<const QByteArray *>(v.constData());
            sqlite3_bind_blob64(stmt, at, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_STATIC);
            break;
        }
        default: {
            const QByteArray text = v.toString().toUtf8();
            sqlite3_bind_text64(stmt, at, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        }
        }
    }
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
    }
    const StoreResult result = rc == SQLITE_DONE ? StoreResult{} : failed();
    if (rc == SQLITE_DONE && changed)
        *changed = sqlite3_changes(db);
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    return result;
}

struct BookStore::Checkpoints
{
    QMutex mutex;
    QWaitCondition idle;
    quint64 asked = 0;
    bool running = false;
};

void BookStore::checkpointInBackground()
{
    if (!m_checkpoints)
        m_checkpoints = std::make_shared<Checkpoints>();
    QMutexLocker lock(&m_checkpoints->mutex);
    ++m_checkpoints->asked;
    if (m_checkpoints->running)
        return;
    m_checkpoints->running = true;
    QThreadPool::globalInstance()->start([c = m_checkpoints, file = m_path.toUtf8()] {
        sqlite3 *db = nullptr;
        if (sqlite3_open_v2(file.constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) == SQLITE_OK)
            sqlite3_busy_timeout(db, kBusyTimeoutMs);
        quint64 done = 0;
        QMutexLocker held(&c->mutex);
        while (done != c->asked) {
            done = c->asked;
            held.unlock();
            // Passive: never in the way of the app's own reads and writes. A
            // connection finds the log only once it has read the store.
            sqlite3_exec(db, "SELECT 1 FROM sqlite_schema LIMIT 1", nullptr, nullptr, nullptr);
            sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
            held.relock();
        }
        // Closed before anyone waiting goes on to remove the file.
        sqlite3_close(db);
        c->running = false;
        c->idle.wakeAll();
    });
}

void BookStore::waitForCheckpoint()
{
    if (!m_checkpoints)
        return;
    QMutexLocker lock(&m_checkpoints->mutex);
    while (m_checkpoints->running)
        m_checkpoints->idle.wait(&m_checkpoints->mutex);
}

void BookStore::finalizeNative()
{
    for (sqlite3_stmt *stmt : std::as_const(m_native))
        sqlite3_finalize(stmt);
    m_native.clear();
}

sqlite3 *BookStore::nativeHandle() const
{
    const QVariant handle = m_db.driver()->handle();
    return handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0
        ? *static_cast<sqlite3 *const *>(handle.data())
        : nullptr;
}

QString BookStore::lastError(const QSqlQuery &q)
{
    const QSqlError e = q.lastError();
    return e.databaseText().isEmpty() ? e.text() : e.databaseText();
}

QSqlQuery &BookStore::prepared(const QString &sql, bool *ok, QString *error)
{
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        QSqlQuery q(m_db);
        q.setForwardOnly(true);
        if (!q.prepare(sql)) {
            *ok = false;
            if (error)
                *error = lastError(q);
            static QSqlQuery invalid;
            return invalid;
        }
        it = m_statements.insert(sql, q);
    }
    *ok = true;
    return *it;
}

QString BookStore::referenceAttribute(Entity entity)
{
    switch (entity) {
    case Entity::GenreList: return QStringLiteral("genre");
    case Entity::RatingList: return QStringLiteral("rating");
    case Entity::SeriesList: return QStringLiteral("series");
    default: return {};
    }
}

QString BookStore::selectSql(const FetchRequest &request, const QString &columns, QVariantList &binds,
                             QString *error) const
{
    const QStringList known = attributesOf(request.entity);
    auto check = [&](const QString &attribute) {
        if (!known.contains(attribute) || attribute == u"pictureImage") {
            if (error)
                *error = QStringLiteral("Unknown attribute %1 of %2").arg(attribute, entityName(request.entity));
            return false;
        }
        return true;
    };
    QString sql = QStringLiteral("SELECT %1 FROM %2 b").arg(columns, entityName(request.entity));
    if (request.entity == Entity::Books && request.includesCovers)
        sql += QStringLiteral(" LEFT JOIN BooksPictureImage c ON c.book = b.pk");
    QStringList where;
    for (const auto &p : request.predicates) {
        if (!check(p.attribute))
            return {};
        if (p.op == Predicate::Op::IsAbsent || p.op == Predicate::Op::IsPresent) {
            where << QStringLiteral("b.%1 %2").arg(p.attribute, opSql(p.op));
        } else if (!p.value.isValid()) {
            // Comparing with nothing matches nothing, as a nil comparison does.
            where << QStringLiteral("0");
        } else {
            where << QStringLiteral("b.%1 %2 ?").arg(p.attribute, opSql(p.op));
            binds << sqlValue(p.value);
        }
    }
    if (!request.keys.isEmpty()) {
        QStringList keys;
        for (qint64 k : request.keys)
            keys << QString::number(k);
        // One bound text however many keys, so the statement is prepared once.
        where << QStringLiteral("b.pk IN (SELECT value FROM json_each(?))");
        binds << QStringLiteral("[%1]").arg(keys.join(u','));
    }
    if (!where.isEmpty())
        sql += QStringLiteral(" WHERE ") + where.join(QStringLiteral(" AND "));
    QStringList order;
    for (const auto &s : request.sortDescriptors) {
        if (!check(s.attribute))
            return {};
        order << QStringLiteral("b.%1 %2").arg(s.attribute, s.ascending ? QStringLiteral("ASC") : QStringLiteral("DESC"));
    }
    order << QStringLiteral("b.pk"); // store order breaks ties
    sql += QStringLiteral(" ORDER BY ") + order.join(u',');
    if (request.fetchLimit > 0)
        sql += QStringLiteral(" LIMIT %1").arg(request.fetchLimit);
    return sql;
}

std::optional<QList<Books>> BookStore::fetchBooks(const FetchRequest &request, QString *error)
{
    Q_ASSERT(request.entity == Entity::Books);
    QVariantList binds;
    QString columns = QStringLiteral("b.pk,") + bookColumns();
    if (request.includesCovers)
        columns += QStringLiteral(",c.book IS NOT NULL,c.pictureImage");
    const QString sql = selectSql(request, columns, binds, error);
    QSqlQuery *query = sql.isEmpty() ? nullptr : run(sql, binds, error);
    if (!query)
        return std::nullopt;
    return readBooks(*query, request.includesCovers);
}

std::optional<QList<Books>> BookStore::readBooks(QSqlQuery &q, bool covers)
{
    QList<Books> books;
    while (q.next()) {
        Books b;
        b.pk = q.value(0).toLongLong();
        int col = 1;
        for (const auto &a : booksAttributes()) {
            if (a.type() == AttributeType::Binary)
                continue;
            const int c = col++;
            if (q.isNull(c))
                continue;
            const QVariant v = q.value(c);
            switch (a.type()) {
            case AttributeType::String:
                b.*std::get<Text Books::*>(a.member) = v.toString();
                break;
            case AttributeType::Integer:
                b.*std::get<Int16 Books::*>(a.member) = static_cast<qint16>(v.toInt());
                break;
            case AttributeType::Date:
                b.*std::get<Instant Books::*>(a.member) = QDateTime::fromSecsSinceEpoch(v.toLongLong(), Qt::UTC);
                break;
            case AttributeType::Binary:
                break;
            }
        }
        if (covers && q.value(col).toBool())
            b.pictureImage = q.value(col + 1).toByteArray();
        books.append(std::move(b));
    }
    q.finish();
    return books;
}

std::optional<QList<qint64>> BookStore::fetchKeys(const FetchRequest &request, QString *error)
{
    QVariantList binds;
    FetchRequest plain = request;
    plain.includesCovers = false;
    const QString sql = selectSql(plain, QStringLiteral("b.pk"), binds, error);
    QSqlQuery *q = sql.isEmpty() ? nullptr : run(sql, binds, error);
    if (!q)
        return std::nullopt;
    QList<qint64> keys;
    while (q->next())
        keys.append(q->value(0).toLongLong());
    q->finish();
    return keys;
}

std::optional<QList<Books>> BookStore::fetchBooks(const QList<qint64> &keys, QString *error)
{
    if (keys.isEmpty())
        return QList<Books>{};
    // Rows come back in the store's order; the caller's order is put back after.
    const QString sql = QStringLiteral("SELECT b.pk,%1,c.book IS NOT NULL,c.pictureImage FROM Books b "
                                       "LEFT JOIN BooksPictureImage c ON c.book = b.pk WHERE b.pk IN (%2)")
                            .arg(bookColumns(), QStringList(keys.size(), QStringLiteral("?")).join(u','));
    QVariantList binds;
    binds.reserve(keys.size());
    for (qint64 k : keys)
        binds << k;
    QSqlQuery *q = run(sql, binds, error);
    if (!q)
        return std::nullopt;
    auto rows = readBooks(*q, true);
    QHash<qint64, qsizetype> position;
    position.reserve(keys.size());
    for (qsizetype i = 0; i < keys.size(); ++i)
        position.insert(keys[i], i);
    std::sort(rows->begin(), rows->end(),
              [&](const Books &a, const Books &b) { return position.value(a.pk) < position.value(b.pk); });
    return rows;
}

std::optional<int> BookStore::count(const FetchRequest &request, QString *error)
{
    QVariantList binds;
    FetchRequest plain = request;
    plain.includesCovers = false;
    plain.sortDescriptors.clear();
    QString sql = selectSql(plain, QStringLiteral("COUNT(*)"), binds, error);
    if (sql.isEmpty())
        return std::nullopt;
    sql.truncate(sql.lastIndexOf(QStringLiteral(" ORDER BY ")));
    QSqlQuery *q = run(sql, binds, error);
    if (!q || !q->next())
        return std::nullopt;
    const int n = q->value(0).toInt();
    q->finish();
    return n;
}

QVariantList BookStore::bookValues(const Books &book)
{
    QVariantList values;
    for (const auto &a : booksAttributes()) {
        if (a.type() != AttributeType::Binary)
            values << sqlValue(attributeValue(book, a));
    }
    return values;
}

StoreResult BookStore::insertBook(Books &book)
{
    Transaction t(*this);
    QStringList cols;
    for (const auto &a : booksAttributes()) {
        if (a.type() != AttributeType::Binary)
            cols << QLatin1String(a.name);
    }
    const QString sql = QStringLiteral("INSERT INTO Books (%1) VALUES (%2)")
                            .arg(cols.join(u','), QStringList(cols.size(), QStringLiteral("?")).join(u','));
    qint64 pk = 0;
    if (auto r = write(sql, bookValues(book), &pk); !r)
        return r;
    if (book.pictureImage) {
        if (auto r = setCover(pk, book.pictureImage); !r)
            return r;
    }
    if (auto r = t.commit(); !r)
        return r;
    book.pk = pk;
    return {};
}

StoreResult BookStore::updateBook(const Books &book)
{
    QStringList sets;
    for (const auto &a : booksAttributes()) {
        if (a.type() != AttributeType::Binary)
            sets << QLatin1String(a.name) + QStringLiteral("=?");
    }
    const QString sql = QStringLiteral("UPDATE Books SET %1 WHERE pk=?").arg(sets.join(u','));
    return write(sql, bookValues(book) << book.pk);
}

StoreResult BookStore::setCover(qint64 pk, const Data &pictureImage)
{
    ++m_coverRevision;
    const QString sql = pictureImage
        ? QStringLiteral("INSERT OR REPLACE INTO BooksPictureImage (book, pictureImage) VALUES (?, ?)")
        : QStringLiteral("DELETE FROM BooksPictureImage WHERE book=?");
    QVariantList binds{pk};
    if (pictureImage)
        binds << (pictureImage->isNull() ? QByteArray("", 0) : *pictureImage);
    return write(sql, binds);
}

std::optional<QByteArray> BookStore::cover(qint64 pk)
{
    QSqlQuery *q = run(QStringLiteral("SELECT pictureImage FROM BooksPictureImage WHERE book=?"), {pk}, nullptr);
    if (!q)
        return std::nullopt;
    std::optional<QByteArray> result;
    if (q->next())
        result = q->value(0).toByteArray();
    q->finish();
    return result;
}

StoreResult BookStore::deleteBook(qint64 pk)
{
    ++m_coverRevision; // the key may be given to the next book inserted
    Transaction t(*this);
    for (const auto &sql : {QStringLiteral("DELETE FROM BooksPictureImage WHERE book=?"),
                            QStringLiteral("DELETE FROM Books WHERE pk=?")}) {
        if (auto r = write(sql, {pk}); !r)
            return r;
    }
    return t.commit();
}

std::optional<QList<ReferenceEntry>> BookStore::fetchEntries(const FetchRequest &request, QString *error)
{
    const QString attribute = referenceAttribute(request.entity);
    Q_ASSERT(!attribute.isEmpty());
    QVariantList binds;
    const QString sql = selectSql(request, QStringLiteral("b.pk, b.") + attribute, binds, error);
    QSqlQuery *query = sql.isEmpty() ? nullptr : run(sql, binds, error);
    if (!query)
        return std::nullopt;
    QSqlQuery &q = *query;
    QList<ReferenceEntry> entries;
    while (q.next()) {
        ReferenceEntry e;
        e.pk = q.value(0).toLongLong();
        if (!q.isNull(1))
            e.value = q.value(1).toString();
        entries.append(e);
    }
    q.finish();
    return entries;
}

StoreResult BookStore::insertEntry(Entity entity, ReferenceEntry &entry)
{
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (?)").arg(entityName(entity), referenceAttribute(entity));
    return write(sql, {entryValue(entry)}, &entry.pk);
}

StoreResult BookStore::updateEntry(Entity entity, const ReferenceEntry &entry)
{
    const QString sql = QStringLiteral("UPDATE %1 SET %2=? WHERE pk=?").arg(entityName(entity), referenceAttribute(entity));
    return write(sql, {entryValue(entry), entry.pk});
}

StoreResult BookStore::deleteEntry(Entity entity, qint64 pk)
{
    return write(QStringLiteral("DELETE FROM %1 WHERE pk=?").arg(entityName(entity)), {pk});
}

StoreResult BookStore::saveContext()
{
    if (!isOpen())
        return {};
    QSqlQuery q(m_db);
    if (!q.exec(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)")))
        return {false, lastError(q)};
    q.finish();
    return {};
}

StoreResult BookStore::setAutoCheckpoint(int pages)
{
    if (!isOpen())
        return {};
    QSqlQuery q(m_db);
    if (!q.exec(QStringLiteral("PRAGMA wal_autocheckpoint=%1").arg(std::max(pages, 0))))
        return {false, lastError(q)};
    q.finish();
    return {};
}

BookStore::Transaction::Transaction(BookStore &store)
    : m_store(store)
    , m_name(QStringLiteral("tw%1").arg(store.m_transactionDepth))
{
    m_active = bool(m_store.exec(QStringLiteral("SAVEPOINT ") + m_name));
    if (m_active)
        ++m_store.m_transactionDepth;
}

BookStore::Transaction::~Transaction()
{
    if (m_active) {
        m_store.exec(QStringLiteral("ROLLBACK TO ") + m_name);
        m_store.exec(QStringLiteral("RELEASE ") + m_name);
        --m_store.m_transactionDepth;
    }
}

StoreResult BookStore::Transaction::commit()
{
    if (!m_active)
        return {false, QStringLiteral("No transaction is open")};
    auto r = m_store.exec(QStringLiteral("RELEASE ") + m_name);
    if (r) {
        m_active = false;
        --m_store.m_transactionDepth;
    }
    return r;
}

} // namespace tomewise
