#include "importfilereader.h"

#include "app/appdelegate.h"
#include "app/datetext.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QIODevice>
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

namespace {

// A title or author that shows nothing (empty, blanks, control characters)
// would make a book no list or repair can name.
bool blank(const Text &value)
{
    if (!value)
        return true;
    for (QChar c : *value) {
        if (!c.isSpace() && c.category() != QChar::Other_Control && c.category() != QChar::Other_Format)
            return false;
    }
    return true;
}

} // namespace

std::optional<QString> ImportFileReader::nextLine()
{
    // Carriage returns count as line feeds; apostrophes are dropped everywhere.
    while (m_pieces.isEmpty()) {
        if (!m_device || m_device->atEnd())
            return std::nullopt;
        QByteArray line = m_device->readLine();
        if (line.isEmpty() && m_device->atEnd())
            return std::nullopt;
        ++m_lineNumber;
        if (line.endsWith('\n'))
            line.chop(1);
        m_pieces = line.split('\r');
    }
    QString text = QString::fromUtf8(m_pieces.takeFirst());
    text.remove(u'\'');
    return text;
}

void ImportFileReader::begin(QIODevice *device)
{
    m_device = device;
    m_pieces.clear();
    m_lineNumber = 0;
    m_inserted = m_updated = m_skipped = m_nameless = m_failed = 0;
    m_notSaved.clear();
    m_done = true;

    const QLatin1String marker(kMarker);
    m_wrongFile = Yes;
    while (const auto line = nextLine()) {
        if (*line == marker) {
            m_wrongFile = No;
            break;
        }
    }
    // Lines before the marker are records too: the walk starts again at the top.
    m_pieces.clear();
    m_lineNumber = 0;
    if (m_wrongFile == No && m_device->reset())
        m_done = false;
}

void ImportFileReader::notSaved(const QStringList &fields, const QString &reason)
{
    qCWarning(lcExchange).noquote() << QStringLiteral("Record on line %1 not saved (%2)").arg(m_lineNumber).arg(reason);
    if (m_notSaved.size() < kNotSavedListed)
        m_notSaved.append({m_lineNumber, fields.value(0), fields.value(8), reason});
}

void ImportFileReader::importLine(const QString &line)
{
    const QStringList fields = line.split(u'^');
    const QString theAuthor = fields.value(0);
    const QString theBookName = fields.value(8);

    // Asked of the store for every record, so earlier lines of the same file count.
    FetchRequest request;
    request.predicates = {Predicate::equal(QStringLiteral("author"), theAuthor),
                          Predicate::equal(QStringLiteral("name"), theBookName)};
    request.fetchLimit = 2;
    QString error;
    const auto matches = m_store.fetchBooks(request, &error);
    if (!matches) {
        qCWarning(lcStore).noquote() << error;
        ++m_failed;
        notSaved(fields, error);
        return;
    }
    if (matches->size() > 1) {
        ++m_skipped;
        return;
    }

    Books book = matches->isEmpty() ? Books{} : matches->first();
    fill(book, fields, m_dates);
    StoreResult result;
    if (matches->isEmpty()) {
        if (blank(book.name) || blank(book.author)) {
            ++m_nameless;
            notSaved(fields, QStringLiteral("no title or no author"));
            return;
        }
        result = m_store.insertBook(book);
    } else {
        BookStore::Transaction record(m_store);
        result = m_store.updateBook(book);
        if (result && book.pictureImage)
            result = m_store.setCover(book.pk, book.pictureImage);
        if (result)
            result = record.commit();
    }
    if (!logIfFailed(result)) {
        ++m_failed;
        notSaved(fields, result.error);
        return;
    }
    ++(matches->isEmpty() ? m_inserted : m_updated);
    if (m_savedHook && !m_savedHook(m_inserted + m_updated))
        m_done = true;
}

bool ImportFileReader::step(int count)
{
    const QLatin1String marker(kMarker);
    for (int n = std::max(count, 1); n > 0 && !m_done;) {
        const auto line = nextLine();
        if (!line) {
            m_done = true;
            break;
        }
        if (line->isEmpty() || *line == marker)
            continue;
        importLine(*line);
        --n;
    }
    return m_done;
}

void ImportFileReader::run(QIODevice *device)
{
    begin(device);
    while (!step(kBatch)) {
    }
}

double ImportFileReader::progress() const
{
    if (m_done || !m_device || m_device->size() <= 0)
        return 1.0;
    return double(m_device->pos()) / double(m_device->size());
}

} // namespace tomewise
