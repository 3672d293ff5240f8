#include "serviceimport.h"

#include "app/appdelegate.h"
#include "app/log.h"
#include "exchange/importfilereader.h"
#include "model/bookstore.h"

#include <variant>

namespace tomewise {

namespace {

QStringList entryNames(BookStore &store, Entity entity)
{
    FetchRequest request;
    request.entity = entity;
    QString error;
    QStringList names;
    if (const auto entries = store.fetchEntries(request, &error)) {
        for (const auto &e : *entries) {
            if (e.value)
                names << *e.value;
        }
    } else {
        qCWarning(lcStore).noquote() << error;
    }
    return names;
}

// Our import's rule: a value in the row overwrites, an absent one never clears.
Books merged(Books existing, const Books &incoming)
{
    for (const BooksAttribute &a : booksAttributes()) {
        std::visit([&](auto member) {
            if (incoming.*member)
                existing.*member = incoming.*member;
        }, a.member);
    }
    return existing;
}

QString key(const Books &book)
{
    return book.author.value_or(QString()) + u'\x1f' + book.name.value_or(QString());
}

} // namespace

ServiceImport::ServiceImport(AppDelegate &app, ServiceFile::Kind kind, QList<ServiceRow> rows, bool includeUnread)
    : m_app(app)
    , m_form(&app)
    , m_kind(kind)
    , m_rows(std::move(rows))
    , m_includeUnread(includeUnread)
{
    const QStringList series = entryNames(m_app.persistentContainer(), Entity::SeriesList);
    m_series = QSet<QString>(series.cbegin(), series.cend());
}

ServiceImport::~ServiceImport()
{
    if (m_next > 0)
        logIfFailed(m_app.persistentContainer().setAutoCheckpoint(BookStore::kAutoCheckpointPages));
}

std::unique_ptr<ServiceImport> ServiceImport::open(AppDelegate &app, const QString &path, bool includeUnread,
                                                   QString *error)
{
    ServiceFile file;
    if (!file.read(path, error))
        return nullptr;
    const QStringList genres = entryNames(app.persistentContainer(), Entity::GenreList);
    return std::make_unique<ServiceImport>(app, file.kind(), file.rows(genres), includeUnread);
}

ServiceImport::Plan ServiceImport::plan(qsizetype index, Books &book, QString *error)
{
    const ServiceRow &row = m_rows[index];
    if (!row.read && !m_includeUnread)
        return {Action::Skip, QStringLiteral("not read (%1)").arg(row.shelf.isEmpty() ? QStringLiteral("no shelf") : row.shelf)};
    if (index < m_made.size() && m_made[index]) {
        book = *m_made[index];
    } else {
        book = m_form.book(row);
        if (index < m_made.size())
            m_made[index] = book;
    }
    if (!book.name)
        return {Action::Skip, QStringLiteral("no title")};
    if (!book.author)
        return {Action::Skip, QStringLiteral("no author")};

    FetchRequest request;
    request.predicates = {Predicate::equal(QStringLiteral("author"), *book.author),
                          Predicate::equal(QStringLiteral("name"), *book.name)};
    request.fetchLimit = 2;
    const auto found = m_app.persistentContainer().fetchBooks(request, error);
    if (!found)
        return {Action::Skip, *error};
    const QList<Books> &matches = *found;
    if (matches.size() > 1)
        return {Action::Skip, QStringLiteral("several books with this title and author")};
    if (matches.size() == 1) {
        book = merged(matches.first(), book);
        if (book == matches.first())
            return {Action::Skip, QStringLiteral("already in the log")};
    }
    QString lacks;
    if (row.read && !book.dt) {
        lacks = row.dateText.isEmpty() ? QStringLiteral("imported without a date read")
                                       : QStringLiteral("imported without a date read: \"%1\" is not a date").arg(row.dateText);
    }
    return {matches.isEmpty() ? Action::Add : Action::Update, lacks};
}

void ServiceImport::preview()
{
    m_toAdd = m_toUpdate = 0;
    m_skipReasons.clear();
    m_firstBooks.clear();
    m_notes.clear();
    m_made = QList<std::optional<Books>>(m_rows.size());
    // Rows adding the same book twice: the later one updates the earlier.
    QSet<QString> adding;
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const ServiceRow &row = m_rows[i];
        Books book;
        QString error;
        Plan p = plan(i, book, &error);
        if (p.action == Action::Skip) {
            ++m_skipReasons[p.reason];
            note(row, p.reason, false);
            continue;
        }
        if (!p.reason.isEmpty())
            note(row, p.reason, true);
        if (p.action == Action::Add && adding.contains(key(book)))
            p.action = Action::Update;
        if (p.action == Action::Add)
            adding.insert(key(book));
        ++(p.action == Action::Add ? m_toAdd : m_toUpdate);
        if (m_firstBooks.size() < kPreviewRows)
            m_firstBooks << book;
    }
}

int ServiceImport::toSkip() const
{
    int n = 0;
    for (int count : m_skipReasons)
        n += count;
    return n;
}

void ServiceImport::note(const ServiceRow &row, const QString &reason, bool imported)
{
    m_notes.append({row.row, row.title, reason, imported});
}

void ServiceImport::addSeries(const Text &series)
{
    // The series list feeds the form's picker: a new series joins it.
    if (!series || series->isEmpty() || m_series.contains(*series))
        return;
    ReferenceEntry entry;
    entry.value = *series;
    if (logIfFailed(m_app.persistentContainer().insertEntry(Entity::SeriesList, entry)))
        m_series.insert(*series);
}

bool ServiceImport::step(int count)
{
    BookStore &store = m_app.persistentContainer();
    if (m_next == 0) {
        m_notes.clear();
        logIfFailed(store.setAutoCheckpoint(ImportFileReader::kImportCheckpointPages));
    }
    for (int n = std::max(count, 1); n > 0 && m_next < m_rows.size(); --n) {
        const qsizetype index = m_next++;
        const ServiceRow &row = m_rows[index];
        Books book;
        QString error;
        const Plan p = plan(index, book, &error);
        if (p.action == Action::Skip) {
            if (!error.isEmpty()) {
                qCWarning(lcStore).noquote() << error;
                ++m_failed;
            }
            note(row, p.reason, false);
            continue;
        }
        const StoreResult result = p.action == Action::Add ? store.insertBook(book) : store.updateBook(book);
        if (!logIfFailed(result)) {
            ++m_failed;
            note(row, QStringLiteral("not saved: %1").arg(result.error), false);
            continue;
        }
        ++(p.action == Action::Add ? m_added : m_updated);
        addSeries(book.series);
        if (!p.reason.isEmpty())
            note(row, p.reason, true);
    }
    return m_next >= m_rows.size();
}

QString ServiceImport::previewText() const
{
    QString text = QStringLiteral("%1: %2 rows\n").arg(ServiceFile::kindName(m_kind)).arg(m_rows.size());
    text += QStringLiteral("Will add: %1\nWill update: %2\nWill skip: %3\n").arg(m_toAdd).arg(m_toUpdate).arg(toSkip());
    for (auto it = m_skipReasons.cbegin(); it != m_skipReasons.cend(); ++it)
        text += QStringLiteral("  %1: %2\n").arg(it.key()).arg(it.value());
    if (!m_firstBooks.isEmpty())
        text += QStringLiteral("\nFirst books as they will be saved:\n");
    for (const Books &b : m_firstBooks) {
        text += QStringLiteral("\n%1\n  by %2\n").arg(b.name.value_or(QString()), b.author.value_or(QString()));
        QStringList details;
        details << (b.dt ? QStringLiteral("read %1").arg(*b.dt) : QStringLiteral("no date read"));
        for (const Text &t : {b.rating, b.bookFormat, b.category, b.isbn, b.bookPublisher}) {
            if (t)
                details << *t;
        }
        if (b.series)
            details << (b.seriesNumber ? QStringLiteral("%1 #%2").arg(*b.series).arg(*b.seriesNumber) : *b.series);
        if (b.numberPages)
            details << QStringLiteral("%1 pages").arg(*b.numberPages);
        if (b.publishDate)
            details << QStringLiteral("published %1").arg(*b.publishDate);
        text += QStringLiteral("  ") + details.join(QStringLiteral(" · ")) + u'\n';
    }
    return text;
}

QString ServiceImport::summaryText() const
{
    qsizetype notImported = 0;
    for (const Note &n : m_notes)
        notImported += n.imported ? 0 : 1;
    QString text = QStringLiteral("Added: %1\nUpdated: %2\nNot imported: %3").arg(m_added).arg(m_updated).arg(notImported);
    if (m_failed > 0)
        text += QStringLiteral("\nCould not be saved: %1").arg(m_failed);
    return text;
}

QString ServiceImport::notesText() const
{
    QString text;
    for (const Note &n : m_notes) {
        text += QStringLiteral("Row %1%2: %3%4\n")
                    .arg(n.row)
                    .arg(n.title.isEmpty() ? QString() : QStringLiteral(" \"%1\"").arg(n.title), n.reason,
                         n.imported ? QString() : QStringLiteral(" (not imported)"));
    }
    return text;
}

} // namespace tomewise
