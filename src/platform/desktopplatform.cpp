#include "desktopplatform.h"

#include "model/coverimage.h"

#include <QCameraDevice>
#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMediaDevices>
#include <QMimeData>
#include <QProcess>
#include <QStandardPaths>

namespace tomewise {

bool DesktopPlatform::cameraAvailable() const
{
    return !QMediaDevices::videoInputs().isEmpty();
}

std::optional<QImage> DesktopPlatform::clipboardImage() const
{
    auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!app)
        return std::nullopt;
    const QMimeData *mime = QGuiApplication::clipboard()->mimeData();
    if (!mime)
        return std::nullopt;
    // Another program's clipboard is read only as PNG or JPEG bytes: asking Qt
    // for "an image" would hand a PDF or SVG to its plugins.
    for (const auto *type : {"image/png", "image/jpeg"}) {
        if (mime->hasFormat(QLatin1String(type))) {
            if (auto cover = CoverImage::decode(mime->data(QLatin1String(type))))
                return cover.image;
        }
    }
    // Data this program put there holds a picture already; only what the window
    // system brings in from elsewhere is a QInternalMimeData that decodes on demand.
    if (!mime->inherits("QInternalMimeData") && mime->hasImage()) {
        QImage image = qvariant_cast<QImage>(mime->imageData());
        if (!image.isNull())
            return image;
    }
    return std::nullopt;
}

bool DesktopPlatform::canSendMail() const
{
    // xdg-email exists on every desktop but only reaches a mail program when
    // one is registered for mailto: addresses.
    if (QStandardPaths::findExecutable(QStringLiteral("xdg-email")).isEmpty())
        return false;
    QProcess query;
    query.start(QStringLiteral("xdg-mime"),
                {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("x-scheme-handler/mailto")});
    if (!query.waitForFinished(3000)) {
        query.kill();
        query.waitForFinished(500);
        return false;
    }
    return query.exitStatus() == QProcess::NormalExit && query.exitCode() == 0
        && !query.readAllStandardOutput().trimmed().isEmpty();
}

void DesktopPlatform::composeMail(const MailDraft &draft)
{
    QStringList args;
    if (!draft.subject.isEmpty())
        args << QStringLiteral("--subject") << draft.subject;
    if (!draft.body.isEmpty())
        args << QStringLiteral("--body") << draft.body;
    for (const auto &a : draft.attachments)
        args << QStringLiteral("--attach") << a.path;
    args << draft.recipients;
    QProcess::startDetached(QStringLiteral("xdg-email"), args);
}

bool DesktopPlatform::canSendText() const
{
    // The desktop has no messages app; our own share sheet stands in for one,
    // and it needs a window to show in.
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

void DesktopPlatform::composeMessage(const QString &body, const QList<QUrl> &attachments)
{
    Q_EMIT shareRequested(body, QImage(), attachments, {});
}

void DesktopPlatform::share(const ShareItems &items)
{
    Q_EMIT shareRequested(items.text, items.image, items.files, items.links);
}

void DesktopPlatform::requestStoreReview()
{
    Q_EMIT storeReviewRequested();
}

bool DesktopPlatform::openUrl(const QUrl &url)
{
    // Without a window system (the command line runs offscreen) Qt opens
    // nothing and says so only in a warning; xdg-open still reaches the
    // user's browser or mail program. "Handled" means the opener started.
    const auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const QString platform = app ? QGuiApplication::platformName() : QString();
    if (app && platform != QLatin1String("offscreen") && platform != QLatin1String("minimal"))
        return QDesktopServices::openUrl(url);
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    return !opener.isEmpty() && QProcess::startDetached(opener, {url.toString(QUrl::FullyEncoded)});
}

} // namespace tomewise
