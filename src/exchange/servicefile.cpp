#include "servicefile.h"

#include <QFile>
#include <QIODevice>
#include <QRegularExpression>

#include <csv.h>

#include <cmath>

namespace tomewise {

namespace {

constexpr qint64 kChunk = 1 << 20;
constexpr qint64 kHeaderLimit = 64 * 1024;

// Collects libcsv's fields into records.
struct Collector
{
    QStringList record;
    QList<QStringList> records;
    qsizetype limit = -1; // stop keeping records after this many (the header only)

    static void field(void *data, size_t length, void *self)
    {
        auto *c = static_cast<Collector *>(self);
        c->record << QString::fromUtf8(static_cast<const char *>(data), qsizetype(length));
    }
    static void end(int, void *self)
    {
        auto *c = static_cast<Collector *>(self);
        if (c->limit < 0 || c->records.size() < c->limit)
            c->records << c->record;
        c->record.clear();
    }
};

QByteArray withoutBom(QByteArray bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    return bytes;
}

// libcsv with the quoting of RFC 4180, lenient about a stray quote inside a
// field as spreadsheets write them; `done` ends the last record.
class Parser
{
public:
    Parser() { csv_init(&m_parser, 0); }
    ~Parser() { csv_free(&m_parser); }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    bool feed(const QByteArray &bytes, Collector &into)
    {
        return csv_parse(&m_parser, bytes.constData(), size_t(bytes.size()), Collector::field, Collector::end, &into)
            == size_t(bytes.size());
    }
    bool done(Collector &into) { return csv_fini(&m_parser, Collector::field, Collector::end, &into) == 0; }
    QString error() { return QString::fromUtf8(csv_strerror(csv_error(&m_parser))); }

private:
    csv_parser m_parser{};
};

QString folded(const QString &name)
{
    QString s = name.toLower();
    s.replace(u'-', u' ').replace(u'_', u' ');
    return s.simplified();
}

QString notesText(QString text)
{
    // Goodreads keeps a review's line breaks as HTML.
    static const QRegularExpression br(QStringLiteral("<br\\s*/?>"), QRegularExpression::CaseInsensitiveOption);
    text.replace(br, QStringLiteral("\n"));
    return text.trimmed();
}

} // namespace

ServiceFile::Kind ServiceFile::kindOf(const QStringList &header)
{
    if (header.size() >= 4 && header[0] == u"Book Id" && header[1] == u"Title" && header[2] == u"Author"
        && header[3] == u"Author l-f")
        return Kind::Goodreads;
    for (const char *name : {"Title", "Authors", "Read Status", "Star Rating"}) {
        if (!header.contains(QLatin1String(name)))
            return Kind::OwnExport;
    }
    return Kind::StoryGraph;
}

ServiceFile::Kind ServiceFile::recognise(QIODevice *device)
{
    const qint64 at = device->pos();
    QByteArray line = withoutBom(device->readLine(kHeaderLimit));
    device->seek(at);
    if (!line.contains(','))
        return Kind::OwnExport;
    Collector header;
    header.limit = 1;
    Parser parser;
    if (!parser.feed(line, header) || !parser.done(header) || header.records.isEmpty())
        return Kind::OwnExport;
    return kindOf(header.records.first());
}

ServiceFile::Kind ServiceFile::recognise(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? recognise(&file) : Kind::OwnExport;
}

QString ServiceFile::kindName(Kind kind)
{
    switch (kind) {
    case Kind::Goodreads:
        return QStringLiteral("Goodreads library export");
    case Kind::StoryGraph:
        return QStringLiteral("StoryGraph export");
    case Kind::OwnExport:
        break;
    }
    return QStringLiteral("Tomewise export file");
}

bool ServiceFile::read(QIODevice *device, QString *error)
{
    m_records.clear();
    m_columns.clear();
    Collector collector;
    Parser parser;
    bool first = true;
    while (!device->atEnd()) {
        QByteArray chunk = device->read(kChunk);
        if (chunk.isEmpty())
            break;
        if (first)
            chunk = withoutBom(chunk);
        first = false;
        if (!parser.feed(chunk, collector)) {
            if (error)
                *error = parser.error();
            return false;
        }
    }
    parser.done(collector);
    if (collector.records.isEmpty()) {
        if (error)
            *error = QStringLiteral("The file is empty.");
        return false;
    }
    const QStringList header = collector.records.takeFirst();
    m_kind = kindOf(header);
    if (m_kind == Kind::OwnExport) {
        if (error)
            *error = QStringLiteral("The first line is not a Goodreads or StoryGraph header.");
        return false;
    }
    for (qsizetype i = 0; i < header.size(); ++i)
        m_columns.insert(header[i].trimmed(), i);
    m_records = std::move(collector.records);
    return true;
}

bool ServiceFile::read(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return read(&file, error);
}

QString ServiceFile::field(const QStringList &record, const char *name) const
{
    const auto it = m_columns.constFind(QLatin1String(name));
    return it == m_columns.cend() ? QString() : record.value(*it).trimmed();
}

QString ServiceFile::unguard(const QString &text)
{
    // Spreadsheet exports write ="0261102354" so that leading zeros survive.
    QString s = text.trimmed();
    if (s.startsWith(u'='))
        s.remove(0, 1);
    if (s.size() >= 2 && s.startsWith(u'"') && s.endsWith(u'"'))
        s = s.mid(1, s.size() - 2);
    return s.trimmed();
}

QString ServiceFile::formatName(const QString &binding)
{
    const QString b = folded(binding);
    if (b == u"hardcover" || b == u"hard cover" || b == u"library binding")
        return QStringLiteral("Hard Cover");
    if (b.contains(QLatin1String("paperback")))
        return QStringLiteral("Paperback");
    if (b == u"kindle edition" || b == u"ebook" || b == u"digital" || b == u"nook" || b == u"kindle")
        return QStringLiteral("Digital");
    return binding;
}

QString ServiceFile::stars(const QString &rating, Kind kind)
{
    bool ok = false;
    const double value = rating.toDouble(&ok);
    if (!ok)
        return {};
    // Goodreads gives whole stars, 0 for none; StoryGraph quarters, rounded half up.
    const int n = kind == Kind::StoryGraph ? int(std::floor(value + 0.5)) : int(value);
    return n >= 1 && n <= 5 ? QString(n, u'*') : QString();
}

std::optional<QDate> ServiceFile::parseDate(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{4})[/-](\\d{1,2})[/-](\\d{1,2})$"));
    const auto m = form.match(text.trimmed());
    if (!m.hasMatch())
        return std::nullopt;
    const QDate date(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

ServiceFile::SeriesTitle ServiceFile::splitSeries(const QString &title)
{
    static const QRegularExpression form(
        QStringLiteral("^(.*\\S)\\s*\\(([^()]*?[^()\\s])(?:,?\\s*#\\s*([^()\\s]+))?\\)$"));
    const auto m = form.match(title.trimmed());
    if (!m.hasMatch())
        return {title.trimmed(), {}, {}};
    return {m.captured(1), m.captured(2), m.captured(3)};
}

QList<ServiceRow> ServiceFile::rows(const QStringList &genres) const
{
    QHash<QString, QString> genreByFolded;
    for (const QString &g : genres)
        genreByFolded.insert(folded(g), g);
    const bool goodreads = m_kind == Kind::Goodreads;

    QList<ServiceRow> rows;
    rows.reserve(m_records.size());
    qint64 number = 1;
    for (const QStringList &record : m_records) {
        ServiceRow r;
        r.row = ++number;
        r.shelf = field(record, goodreads ? "Exclusive Shelf" : "Read Status");
        r.read = r.shelf.compare(QLatin1String("read"), Qt::CaseInsensitive) == 0;
        const SeriesTitle st = splitSeries(field(record, "Title"));
        r.title = st.title;
        r.series = st.series;
        r.seriesNumber = st.number;
        r.author = goodreads ? field(record, "Author") : field(record, "Authors").section(u',', 0, 0).trimmed();
        if (goodreads) {
            r.isbn = unguard(field(record, "ISBN13"));
            if (r.isbn.isEmpty())
                r.isbn = unguard(field(record, "ISBN"));
        } else {
            r.isbn = unguard(field(record, "ISBN/UID"));
        }
        r.publisher = field(record, "Publisher");
        r.pages = field(record, "Number of Pages");
        r.yearPublished = field(record, "Year Published");
        if (r.yearPublished.isEmpty())
            r.yearPublished = field(record, "Original Publication Year");
        r.format = formatName(field(record, goodreads ? "Binding" : "Format"));
        r.rating = stars(field(record, goodreads ? "My Rating" : "Star Rating"), m_kind);
        const QStringList shelves = field(record, goodreads ? "Bookshelves" : "Tags").split(u',', Qt::SkipEmptyParts);
        for (const QString &shelf : shelves) {
            const auto it = genreByFolded.constFind(folded(shelf));
            if (it != genreByFolded.cend()) {
                r.genre = *it;
                break;
            }
        }
        QStringList notes;
        for (const char *column : {"My Review", "Review", "Private Notes"}) {
            const QString text = notesText(field(record, column));
            if (!text.isEmpty())
                notes << text;
        }
        r.notes = notes.join(QStringLiteral("\n\n"));
        r.dateText = field(record, goodreads ? "Date Read" : "Last Date Read");
        r.dateRead = parseDate(r.dateText);
        rows << r;
    }
    return rows;
}

} // namespace tomewise
