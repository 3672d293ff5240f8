#include "coverimageprovider.h"

#include "app/appdelegate.h"
#include "model/coverimage.h"
#include "model/coverimage.h"

#include <QAtomicInt>
#include <QRunnable>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QThread>
#include <QThreadStorage>

namespace tomewise {

namespace {

QAtomicInt g_readerCounter;

// One reading connection per worker thread, closed with the thread.
struct Reader
{
    QString name;
    QString path;
    ~Reader()
    {
        if (!name.isEmpty()) {
            QSqlDatabase::database(name, false).close();
            QSqlDatabase::removeDatabase(name);
        }
    }
};
QThreadStorage<Reader *> g_readers;

std::optional<QByteArray> readCover(const QString &path, qint64 pk)
{
    if (!g_readers.hasLocalData())
        g_readers.setLocalData(new Reader);
    Reader *reader = g_readers.localData();
    if (reader->path != path) {
        if (!reader->name.isEmpty()) {
            QSqlDatabase::database(reader->name, false).close();
            QSqlDatabase::removeDatabase(reader->name);
        }
        reader->name = QStringLiteral("tomewise-cover-reader-%1").arg(g_readerCounter.fetchAndAddRelaxed(1));
        reader->path = path;
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), reader->name);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=2000"));
        if (!db.open())
            return std::nullopt;
    }
    QSqlQuery q(QSqlDatabase::database(reader->name, false));
    q.prepare(QStringLiteral("SELECT pictureImage FROM BooksPictureImage WHERE book = ?"));
    q.addBindValue(pk);
    if (!q.exec() || !q.next())
        return std::nullopt;
    return q.value(0).toByteArray();
}

class CoverResponse : public QQuickImageResponse, public QRunnable
{
public:
    CoverResponse(CoverImageProvider *provider, QString id, QSize size)
        : m_provider(provider)
        , m_id(std::move(id))
        , m_size(size)
    {
        setAutoDelete(false);
    }

    void run() override
    {
        m_image = m_provider->load(m_id, m_size);
        Q_EMIT finished();
    }

    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

private:
    CoverImageProvider *m_provider;
    QString m_id;
    QSize m_size;
    QImage m_image;
};

} // namespace

CoverImageProvider::CoverImageProvider(AppDelegate *delegate)
    : m_storePath(delegate ? delegate->persistentContainer().path() : QString())
{
    m_pool.setMaxThreadCount(2);
    m_cache.setMaxCost(kCacheBytes);
}

CoverImageProvider::~CoverImageProvider()
{
    m_pool.waitForDone();
}

QQuickImageResponse *CoverImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *response = new CoverResponse(this, id, requestedSize);
    m_pool.start(response);
    return response;
}

QImage CoverImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QImage image = load(id, requestedSize);
    if (size)
        *size = image.size();
    return image;
}

QImage CoverImageProvider::load(const QString &id, const QSize &requestedSize)
{
    const QString key = id + u'@' + QString::number(requestedSize.width()) + u'x'
        + QString::number(requestedSize.height());
    {
        QMutexLocker lock(&m_mutex);
        if (const QImage *hit = m_cache.object(key))
            return *hit;
    }
    bool ok = false;
    const qint64 pk = id.section(u'/', 0, 0).toLongLong(&ok);
    if (!ok || m_storePath.isEmpty())
        return {};
    const auto bytes = readCover(m_storePath, pk);
    if (!bytes)
        return {};
    // The one safe decoder for cover bytes, then the size shown.
    QImage image = CoverImage::decode(*bytes).image;
    if (image.isNull())
        return {};
    if (requestedSize.isValid())
        image = image.scaled(requestedSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QMutexLocker lock(&m_mutex);
    m_cache.insert(key, new QImage(image), qMax<qsizetype>(1, image.sizeInBytes()));
    return image;
}

qsizetype CoverImageProvider::cachedBytes() const
{
    QMutexLocker lock(&m_mutex);
    return m_cache.totalCost();
}

} // namespace tomewise
