#include "importfilereader.h"

#include "app/appdelegate.h"
#include "app/datetext.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QBuffer>
#include <QIODevice>
#include <QRegularExpression>
#include <QTimeZone>

#include <array>
#include <cstring>

namespace tomewise {

ImportFileReader::ImportFileReader(BookStore &store, const DateText &dates)
    : m_store(store)
    , m_dates(dates)
{
}

ImportFileReader::~ImportFileReader()
{
    m_store.setAutoCheckpoint(BookStore::kAutoCheckpointPages);
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

std::optional<QByteArray> ImportFileReader::decodeBase64(const QByteArray &text)
{
    // The standard alphabet with its "=" padding, nothing else allowed. A table
    // rather than Qt's decoder: covers make up most of a file's bytes.
    static constexpr auto table = [] {
        std::array<qint8, 256> t{};
        t.fill(-1);
        constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (int i = 0; i < 64; ++i)
            t[static_cast<unsigned char>(alphabet[i])] = static_cast<qint8>(i);
        return t;
    }();
    const qsizetype size = text.size();
    if (size % 4 != 0)
        return std::nullopt;
    const qsizetype padding = size == 0 ? 0 : (text.endsWith("==") ? 2 : text.endsWith('=') ? 1 : 0);
    QByteArray out(size / 4 * 3 - padding, Qt::Uninitialized);
    const auto *in = reinterpret_cast<const unsigned char *>(text.constData());
    char *to = out.data();
    qsizetype written = 0;
    for (qsizetype i = 0; i < size; i += 4) {
        const bool last = i + 4 == size;
        const int a = table[in[i]];
        const int b = table[in[i + 1]];
        const int c = last && padding == 2 ? 0 : table[in[i + 2]];
        const int d = last && padding >= 1 ? 0 : table[in[i + 3]];
        if ((a | b | c | d) < 0)
            return std::nullopt;
        const quint32 bits = quint32(a) << 18 | quint32(b) << 12 | quint32(c) << 6 | quint32(d);
        const char bytes[3] = {char(bits >> 16), char(bits >> 8), char(bits)};
        const qsizetype n = std::min<qsizetype>(3, out.size() - written);
        std::memcpy(to + written, bytes, size_t(n));
        written += n;
    }
    return out;
}

void ImportFileReader::fill(Books &book, const QList<QByteArray> &fields, const DateText &dates)
{
    // The attributes by position, looked up once.
    static const auto attributes = [] {
        QList<const BooksAttribute *> list;
        for (const QString &key : keys())
            list << booksAttribute(key);
        return list;
    }();
    static const qsizetype notes = keys().indexOf(QStringLiteral("notes"));
    for (qsizetype i = 0; i < fields.size() && i < attributes.size(); ++i) {
        QByteArray bytes = fields[i];
        bytes.removeIf([](char c) { return c == '"'; });
        if (bytes.isEmpty())
            continue;
        const BooksAttribute *a = attributes[i];
        if (a->type() == AttributeType::Binary) {
            if (const auto decoded = decodeBase64(bytes))
                book.*std::get<Data Books::*>(a->member) = decoded;
            continue;
        }
        QString value = QString::fromUtf8(bytes);
        switch (a->type()) {
        case AttributeType::String:
            if (i == notes)
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

bool ImportFileReader::nextLine(QByteArray &line)
{
    // Carriage returns count as line feeds; apostrophes are dropped everywhere.
    while (m_pieces.isEmpty()) {
        qsizetype end = m_buffer.indexOf('\n', m_bufferPos);
        bool overlong = false;
        while (end < 0 && m_device && !m_device->atEnd()) {
            // No record is this long; one that claims to be is passed over
            // rather than held.
            overlong = overlong || m_buffer.size() - m_bufferPos > m_maxLineBytes;
            m_buffer.remove(0, overlong ? m_buffer.size() : m_bufferPos);
            m_bufferPos = 0;
            const qsizetype searched = m_buffer.size();
            const QByteArray more = m_device->read(m_chunk);
            if (more.isEmpty())
                break;
            m_buffer += more;
            end = m_buffer.indexOf('\n', searched);
        }
        if (end < 0) {
            if (m_bufferPos >= m_buffer.size() && !overlong)
                return false;
            end = m_buffer.size();
        }
        overlong = overlong || end - m_bufferPos > m_maxLineBytes;
        ++m_lineNumber;
        if (overlong) {
            m_bufferPos = end + 1;
            ++m_overlong;
            m_pieces = {QByteArray()};
            break;
        }
        m_pieces = QByteArrayView(m_buffer).sliced(m_bufferPos, end - m_bufferPos).toByteArray().split('\r');
        m_bufferPos = end + 1;
    }
    line = m_pieces.takeFirst();
    line.removeIf([](char c) { return c == '\''; });
    return true;
}

void ImportFileReader::begin(QIODevice *device)
{
    m_device = device;
    m_buffer.clear();
    m_bufferPos = 0;
    m_pieces.clear();
    m_lineNumber = 0;
    m_inserted = m_updated = m_skipped = m_nameless = m_failed = 0;
    m_notSaved.clear();
    m_done = true;

    m_wrongFile = Yes;
    QByteArray line;
    while (nextLine(line)) {
        if (line == kMarker) {
            m_wrongFile = No;
            break;
        }
    }
    // Lines before the marker are records too: the walk starts again at the top.
    m_buffer.clear();
    m_bufferPos = 0;
    m_pieces.clear();
    m_lineNumber = 0;
    m_overlong = 0;
    if (m_wrongFile == No && m_device->reset())
        m_done = false;
    // A long run of small commits copies each index page back once per
    // checkpoint; fewer checkpoints while it lasts, the usual ones after.
    if (!m_done)
        m_store.setAutoCheckpoint(kImportCheckpointPages);
}

void ImportFileReader::notSaved(const QString &author, const QString &name, const QString &reason)
{
    qCWarning(lcExchange).noquote() << QStringLiteral("Record on line %1 not saved (%2)").arg(m_lineNumber).arg(reason);
    if (m_notSaved.size() < kNotSavedListed)
        m_notSaved.append({m_lineNumber, author, name, reason});
}

void ImportFileReader::importLine(const QByteArray &line)
{
    const QList<QByteArray> fields = line.split('^');
    const QString theAuthor = QString::fromUtf8(fields.value(0));
    const QString theBookName = QString::fromUtf8(fields.value(8));

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
        notSaved(theAuthor, theBookName, error);
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
            notSaved(theAuthor, theBookName, QStringLiteral("no title or no author"));
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
        notSaved(theAuthor, theBookName, result.error);
        return;
    }
    ++(matches->isEmpty() ? m_inserted : m_updated);
    if (m_savedHook && !m_savedHook(m_inserted + m_updated))
        m_done = true;
}

bool ImportFileReader::step(int count)
{
    QByteArray line;
    for (int n = std::max(count, 1); n > 0 && !m_done;) {
        if (!nextLine(line)) {
            m_done = true;
            break;
        }
        if (m_overlong > 0) {
            m_overlong = 0;
            ++m_failed;
            notSaved(QString(), QString(), QStringLiteral("line longer than %1 MB").arg(m_maxLineBytes >> 20));
            --n;
            continue;
        }
        if (line.isEmpty() || line == kMarker)
            continue;
        importLine(line);
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

void ImportFileReader::run(const QString &document)
{
    QByteArray bytes = document.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    run(&buffer);
    m_device = nullptr;
}

double ImportFileReader::progress() const
{
    if (m_done || !m_device || m_device->size() <= 0)
        return 1.0;
    return double(m_device->pos()) / double(m_device->size());
}

} // namespace tomewise
