#pragma once

#include "platformservices.h"

namespace tomewise {

// A platform for tests: answers what it is told to and records every request.
class RecordingPlatform : public PlatformServices
{
    Q_OBJECT
public:
    using PlatformServices::PlatformServices;

    bool hasCamera = false;
    std::optional<QImage> clipboard;
    bool pictureSource = true;
    bool mailAvailable = true;
    bool textAvailable = true;

    QList<MailDraft> mails;
    QList<std::pair<QString, QList<QUrl>>> messages;
    QList<ShareItems> shares;
    int reviewRequests = 0;
    QList<QWindow *> reviewWindows; // the window of each request placed over one
    QList<QUrl> openedUrls;

    bool cameraAvailable() const override { return hasCamera; }
    std::optional<QImage> clipboardImage() const override { return clipboard; }
    bool canChoosePicture() const override { return pictureSource; }
    bool canSendMail() const override { return mailAvailable; }
    void composeMail(const MailDraft &draft) override { mails.append(draft); }
    bool canSendText() const override { return textAvailable; }
    void composeMessage(const QString &body, const QList<QUrl> &attachments) override
    {
        messages.append({body, attachments});
    }
    // Shown as the desktop shows it, so pages behave alike under test.
    void share(const ShareItems &items) override
    {
        shares.append(items);
        Q_EMIT shareRequested(items.text, items.image, items.files, items.links);
    }
    void requestStoreReview() override { ++reviewRequests; }
    void requestStoreReviewIn(QWindow *window) override
    {
        reviewWindows.append(window);
        ++reviewRequests;
    }
    bool openUrl(const QUrl &url) override
    {
        openedUrls.append(url);
        return true;
    }
};

} // namespace tomewise
