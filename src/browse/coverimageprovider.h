#pragma once

#include <QPointer>
#include <QQuickImageProvider>

namespace tomewise {

class AppDelegate;

// Serves "image://cover/<pk>" from the store one cover at a time, so that no
// list ever holds every cover.
class CoverImageProvider : public QQuickImageProvider
{
public:
    explicit CoverImageProvider(AppDelegate *delegate);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    QPointer<AppDelegate> m_delegate;
};

} // namespace tomewise
