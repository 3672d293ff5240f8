#pragma once

#include "platformservices.h"

namespace tomewise {

// Desktop stand-ins: the system clipboard, a real camera through Qt Multimedia,
// the user's mail program through xdg-email when one is registered, and a
// share sheet of our own.
class DesktopPlatform : public PlatformServices
{
    Q_OBJECT
public:
    using PlatformServices::PlatformServices;

    bool cameraAvailable() const override;
    std::optional<QImage> clipboardImage() const override;
    bool canSendMail() const override;
    void composeMail(const MailDraft &draft) override;
    bool canSendText() const override;
    void composeMessage(const QString &body, const QList<QUrl> &attachments) override;
    void share(const ShareItems &items) override;
    void requestStoreReview() override;
    bool openUrl(const QUrl &url) override;
};

} // namespace tomewise
