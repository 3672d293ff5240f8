#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

class QWindow;

namespace tomewise {

struct MailAttachment
{
    QString path;
    QString mimeType;
    QString fileName;
};

struct MailDraft
{
    QStringList recipients;
    QString subject;
    QString body;
    QList<MailAttachment> attachments;
};

// What a share sheet is handed: any of a text, an image, files and web
// addresses, each address an item of its own after the text.
struct ShareItems
{
    QString text;
    QImage image;
    QList<QUrl> files;
    QList<QUrl> links;
    QStringList excludedActivities;
};

// What a phone platform provides around the app: sharing, mail and messages,
// the store review prompt, the camera, the clipboard and opening addresses.
// The desktop build and the tests each provide their own.
class PlatformServices : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual bool cameraAvailable() const = 0;
    virtual std::optional<QImage> clipboardImage() const = 0;
    // Whether the user can pick a picture file (a file chooser or a gallery).
    virtual bool canChoosePicture() const { return true; }
    virtual bool canSendMail() const = 0;
    virtual void composeMail(const MailDraft &draft) = 0;
    virtual bool canSendText() const = 0;
    virtual void composeMessage(const QString &body, const QList<QUrl> &attachments) = 0;
    virtual void share(const ShareItems &items) = 0;
    virtual void requestStoreReview() = 0;
    // The prompt placed over one window; where windows make no difference, the plain request.
    virtual void requestStoreReviewIn(QWindow *window) { Q_UNUSED(window) requestStoreReview(); }
    virtual bool openUrl(const QUrl &url) = 0;

Q_SIGNALS:
    // The desktop shows its own sheet for these; the page listens.
    void shareRequested(const QString &text, const QImage &image, const QList<QUrl> &files, const QList<QUrl> &links);
    void storeReviewRequested();
};

} // namespace tomewise
