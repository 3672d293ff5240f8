#include "exportfilewriter.h"

#include "app/datetext.h"
#include "app/launchtasks.h"
#include "model/bookstore.h"

#include <QIODevice>
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

ExportFileWriter::ExportFileWriter(BookStore &store, const DateText &dates, QIODevice *out)
    : m_store(store)
    , m_dates(dates)
    , m_out(out)
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

bool ExportFileWriter::write(const QByteArray &bytes, QString *error)
{
    if (m_out->write(bytes) == bytes.size())
        return true;
    if (error)
        *error = m_out->errorString();
    return false;
}

bool ExportFileWriter::begin(QString *error)
{
    m_keys.clear();
    m_next = 0;
    m_display.clear();
    FetchRequest request;
    request.sortDescriptors = {{QStringLiteral("name")}, {QStringLiteral("author")}, {QStringLiteral("dt")}};
    auto keys = m_store.fetchKeys(request, error);
    if (!keys)
        return false;
    m_keys = std::move(*keys);
    return write(QByteArray(kMarker) + '\n', error);
}

ExportFileWriter::Step ExportFileWriter::step(int count, QString *error)
{
    const qsizetype from = m_next;
    const qsizetype to = std::min(m_keys.size(), from + qsizetype(std::max(count, 1)));
    if (from >= to)
        return Step::Done;
    auto books = m_store.fetchBooks(m_keys.mid(from, to - from), error);
    if (!books)
        return Step::Failed;

    QList<CoverJob> jobs(books->size());
    for (qsizetype i = 0; i < books->size(); ++i)
        jobs[i].bytes = (*books)[i].pictureImage.value_or(QByteArray());
    QtConcurrent::blockingMap(jobs, [](CoverJob &job) {
        if (!job.bytes.isEmpty())
            job.field = coverField(job.bytes);
    });

    QByteArray lines;
    for (qsizetype i = 0; i < books->size(); ++i) {
        const QStringList fields = textFields((*books)[i], m_dates);
        lines += fields.join(u'^').toUtf8();
        lines += '^';
        lines += jobs[i].field;
        lines += '\n';
        m_display += fields.join(u',');
        m_display += u'\n';
    }
    if (!write(lines, error))
        return Step::Failed;
    m_next = to;
    return m_next >= m_keys.size() ? Step::Done : Step::More;
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
    return m_keys.isEmpty() ? 1.0 : double(m_next) / double(m_keys.size());
}

} // namespace tomewise
