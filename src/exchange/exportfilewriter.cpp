#include "exportfilewriter.h"

#include "app/datetext.h"
#include "app/launchtasks.h"
#include "model/bookstore.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QtConcurrent/QtConcurrentMap>

namespace tomewise {

namespace {

QString text(const Text &value)
{
    return value.value_or(QString());
}

QString number(const Int16 &value)
{
    return QString::number(value.value_or(0));
}

struct CoverJob
{
    QByteArray bytes;
    QByteArray field;
};

} // namespace

ExportFileWriter::ExportFileWriter(BookStore &store, const DateText &dates)
    : m_store(store)
    , m_dates(dates)
{
}

QString ExportFileWriter::dateField(const QDateTime &instant, const DateText &dates)
{
    // Qt writes the same text as ICU for years 1 to 9999 and is far cheaper
    // than a formatter per book; ICU keeps the eras and the far years.
    const QDateTime utc = instant.toUTC();
    const int y = utc.date().year();
    if (y >= 1 && y <= 9999)
        return utc.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000");
    return dates.formatPattern(instant, QLatin1String(kDatePattern), true);
}

QByteArray ExportFileWriter::coverField(const QByteArray &bytes)
{
    const auto jpeg = LaunchTasks::reencodeJpeg(bytes, kCoverQuality);
    return jpeg ? jpeg->toBase64() : QByteArray();
}

QStringList ExportFileWriter::textFields(const Books &b, const DateText &dates)
{
    QString notes = text(b.notes);
    notes.replace(u'\n', u'~').replace(u'^', u'\'');
    return {text(b.author),
            text(b.bookFormat),
            text(b.bookPublisher),
            text(b.category),
            number(b.day),
            text(b.dt),
            b.dateRead ? dateField(*b.dateRead, dates) : QString(),
            number(b.month),
            text(b.name),
            notes,
            number(b.numberPages),
            number(b.publishDate),
            text(b.rating),
            text(b.series),
            number(b.seriesNumber),
            number(b.year),
            text(b.isbn),
            text(b.subTitle)};
}

bool ExportFileWriter::begin(QString *error)
{
    m_books.clear();
    m_next = 0;
    m_data = QByteArray(kMarker) + '\n';
    m_display.clear();
    FetchRequest request;
    request.sortDescriptors = {{QStringLiteral("name")}, {QStringLiteral("author")}, {QStringLiteral("dt")}};
    auto books = m_store.fetchBooks(request, error);
    if (!books)
        return false;
    m_books = std::move(*books);
    return true;
}

bool ExportFileWriter::fetchCovers(qsizetype from, qsizetype to, QHash<qint64, QByteArray> &covers, QString *error)
{
    // One statement per batch rather than one per book.
    QSqlQuery q(m_store.database());
    q.setForwardOnly(true);
    const QString sql = QStringLiteral("SELECT book, pictureImage FROM BooksPictureImage WHERE book IN (%1)")
                            .arg(QStringList(to - from, QStringLiteral("?")).join(u','));
    if (!q.prepare(sql)) {
        if (error)
            *error = q.lastError().text();
        return false;
    }
    for (qsizetype i = from; i < to; ++i)
        q.bindValue(int(i - from), m_books[i].pk);
    if (!q.exec()) {
        if (error)
            *error = q.lastError().text();
        return false;
    }
    while (q.next())
        covers.insert(q.value(0).toLongLong(), q.value(1).toByteArray());
    return true;
}

ExportFileWriter::Step ExportFileWriter::step(int count, QString *error)
{
    const qsizetype from = m_next;
    const qsizetype to = std::min(m_books.size(), from + qsizetype(std::max(count, 1)));
    if (from >= to)
        return Step::Done;
    QHash<qint64, QByteArray> covers;
    if (!fetchCovers(from, to, covers, error))
        return Step::Failed;

    QList<CoverJob> jobs(to - from);
    for (qsizetype i = from; i < to; ++i)
        jobs[i - from].bytes = covers.value(m_books[i].pk);
    QtConcurrent::blockingMap(jobs, [](CoverJob &job) {
        if (!job.bytes.isEmpty())
            job.field = coverField(job.bytes);
    });

    for (qsizetype i = from; i < to; ++i) {
        const QStringList fields = textFields(m_books[i], m_dates);
        m_data += fields.join(u'^').toUtf8();
        m_data += '^';
        m_data += jobs[i - from].field;
        m_data += '\n';
        m_display += fields.join(u',');
        m_display += u'\n';
    }
    m_next = to;
    return m_next >= m_books.size() ? Step::Done : Step::More;
}

bool ExportFileWriter::run(QString *error)
{
    if (!begin(error))
        return false;
    for (;;) {
        switch (step(kBatch, error)) {
        case Step::More:
            continue;
        case Step::Done:
            return true;
        case Step::Failed:
            return false;
        }
    }
}

double ExportFileWriter::progress() const
{
    return m_books.isEmpty() ? 1.0 : double(m_next) / double(m_books.size());
}

} // namespace tomewise
