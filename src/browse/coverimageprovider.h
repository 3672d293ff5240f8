#pragma once

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace tomewise {

class AppDelegate;

// Serves "image://cover/<pk>[/<revision>]" off the window's thread: each cover
// is read from the store over a reading connection of the worker's own and
// decoded at the size asked for, so scrolling never waits on a decode and no
// list holds every cover. Decoded covers are kept in a cache of bounded size.
class CoverImageProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr qsizetype kCacheBytes = 24 * 1024 * 1024;

    explicit CoverImageProvider(AppDelegate *delegate);
    ~CoverImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;
    // The same picture at once, for callers outside a view.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    // Reads and decodes one cover; callable from any thread.
    QImage load(const QString &id, const QSize &requestedSize);
    qsizetype cachedBytes() const;

private:
    QString m_storePath;
    QThreadPool m_pool;
    mutable QMutex m_mutex;
    QCache<QString, QImage> m_cache;
};

} // namespace tomewise
