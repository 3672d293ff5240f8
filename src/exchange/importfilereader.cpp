#include "importfilereader.h"

#include "app/appdelegate.h"
#include "app/datetext.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QRegularExpression>
#include <QTimeZone>

namespace tomewise {

ImportFileReader::ImportFileReader(BookStore &store, const DateText &dates)
    : m_store(store)
    , m_dates(dates)
{
}

const QStringList &ImportFileReader::keys()
{
    static const QStringList list{
        QStringLiteral("author"),       QStringLiteral("bookFormat"),  QStringLiteral("bookPublisher"),
        QStringLiteral("category"),     QStringLiteral("day"),         QStringLiteral("dt"),
        QStringLiteral("dateRead"),     QStringLiteral("month"),       QStringLiteral("name"),
        QStringLiteral("notes"),        QStringLiteral("numberPages"), QStringLiteral("publishDate"),
        QStringLiteral("rating"),       QStringLiteral("series"),      QStringLiteral("seriesNumber"),
        QStringLiteral("year"),         QStringLiteral("isbn"),        QStringLiteral("subTitle"),
        QStringLiteral("pictureImage")};
    return list;
}

std::optional<QDateTime> ImportFileReader::parseDate(const QString &text, const DateText &dates)
{
    // The writer's own UTC form is read by Qt, far cheaper than a formatter
    // per line; anything else (another offset, a doubtful day) goes to ICU.
    static const QRegularExpression utcForm(QStringLiteral("^\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2} \\+0000$"));
    if (utcForm.match(text).hasMatch()) {
        QDateTime d = QDateTime::fromString(text.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (d.isValid() && d.date().year() >= 1) {
            d.setTimeZone(QTimeZone::utc());
            return d;
        }
    }
    return dates.parsePattern(text, QLatin1String(kDatePattern));
}

std::optional<QByteArray> ImportFileReader::decodeBase64(const QString &text)
{
    // The standard alphabet with its padding, nothing else allowed.
    if (text.size() % 4 != 0)
        return std::nullopt;
    auto result = QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    for (QChar c : text) {
        if (c.unicode() > 0x7f)
            return std::nullopt;
    }
    if (!result)
        return std::nullopt;
    return *result;
}

void ImportFileReader::fill(Books &book, const QStringList &fields, const DateText &dates)
{
    const auto attributes = keys();
    for (qsizetype i = 0; i < fields.size() && i < attributes.size(); ++i) {
        QString value = fields[i];
        value.remove(u'"');
        if (value.isEmpty())
            continue;
        const BooksAttribute *a = booksAttribute(attributes[i]);
        switch (a->type()) {
        case AttributeType::String:
            if (attributes[i] == u"notes")
                value.replace(u'~', u'\n');
            book.*std::get<Text Books::*>(a->member) = value;
            break;
        case AttributeType::Integer:
            if (const auto n = parseInt16(value))
                book.*std::get<Int16 Books::*>(a->member) = n;
            break;
        case AttributeType::Date:
            if (const auto d = parseDate(value, dates))
                book.*std::get<Instant Books::*>(a->member) = d;
            break;
        case AttributeType::Binary:
            if (const auto bytes = decodeBase64(value))
                book.*std::get<Data Books::*>(a->member) = bytes;
            break;
        }
    }
}

void ImportFileReader::begin(const QString &document)
{
    m_lines.clear();
    m_next = 0;
    m_inserted = m_updated = m_skipped = 0;
    m_byAuthorAndName.clear();
    m_books.clear();

    QString text = document;
    text.replace(u'\r', u'\n');
    text.remove(u'\'');
    const QStringList lines = text.split(u'\n');
    const QLatin1String marker(kMarker);
    for (const QString &line : lines) {
        if (line == marker) {
            m_wrongFile = No;
            break;
        }
        m_wrongFile = Yes;
    }
    if (m_wrongFile != No)
        return;
    for (const QString &line : lines) {
        if (!line.isEmpty() && line != marker)
            m_lines.append(line);
    }
    if (!m_lines.isEmpty() && !buildIndex())
        m_lines.clear();
}

bool ImportFileReader::buildIndex()
{
    QString error;
    auto books = m_store.fetchBooks(FetchRequest{}, &error);
    if (!books) {
        qCWarning(lcExchange).noquote() << error;
        return false;
    }
    m_books.reserve(books->size());
    for (Books &b : *books) {
        index(b);
        m_books.insert(b.pk, std::move(b));
    }
    return true;
}

void ImportFileReader::index(const Books &book)
{
    // A store "=" never matches an absent value.
    if (book.author && book.name)
        m_byAuthorAndName[{*book.author, *book.name}].append(book.pk);
}

void ImportFileReader::unindex(const Books &book)
{
    if (!book.author || !book.name)
        return;
    auto it = m_byAuthorAndName.find({*book.author, *book.name});
    if (it == m_byAuthorAndName.end())
        return;
    it->removeOne(book.pk);
    if (it->isEmpty())
        m_byAuthorAndName.erase(it);
}

void ImportFileReader::importLine(const QString &line)
{
    const QStringList fields = line.split(u'^');
    const QString theAuthor = fields.value(0);
    const QString theBookName = fields.value(8);
    const QList<qint64> matches = m_byAuthorAndName.value({theAuthor, theBookName});
    if (matches.size() > 1) {
        ++m_skipped;
        return;
    }

    BookStore::Transaction record(m_store);
    Books book = matches.isEmpty() ? Books{} : m_books.value(matches.first());
    const Books before = book;
    fill(book, fields, m_dates);
    StoreResult result;
    if (matches.isEmpty()) {
        result = m_store.insertBook(book);
    } else {
        result = m_store.updateBook(book);
        if (result && book.pictureImage != before.pictureImage)
            result = m_store.setCover(book.pk, book.pictureImage);
    }
    if (result)
        result = record.commit();
    if (!logIfFailed(result))
        return;

    // The index follows the store, as a fetch for the next line would.
    book.pictureImage.reset();
    if (matches.isEmpty()) {
        ++m_inserted;
    } else {
        ++m_updated;
        unindex(before);
    }
    index(book);
    m_books.insert(book.pk, book);
}

bool ImportFileReader::step(int count)
{
    const qsizetype to = std::min(m_lines.size(), m_next + qsizetype(std::max(count, 1)));
    if (m_next < to) {
        BookStore::Transaction batch(m_store);
        for (; m_next < to; ++m_next)
            importLine(m_lines[m_next]);
        logIfFailed(batch.commit());
    }
    return m_next >= m_lines.size();
}

void ImportFileReader::run(const QString &document)
{
    begin(document);
    while (!step(kBatch)) {
    }
}

double ImportFileReader::progress() const
{
    return m_lines.isEmpty() ? 1.0 : double(m_next) / double(m_lines.size());
}

} // namespace tomewise
