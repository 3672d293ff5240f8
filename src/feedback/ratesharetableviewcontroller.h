#pragma once

#include "app/screencontroller.h"
#include "platform/platformservices.h"

#include <QUrl>
#include <QVariantList>

#include <optional>

namespace tomewise {

// The "Rate & Share" screen: five fixed rows that rate the app in the store,
// share it or its web site, open the web site, or write to its makers.
class RateShareTableViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QVariantList rows READ rows CONSTANT)

public:
    enum Row { Rate, ShareApp, ShareWebsite, VisitWebsite, WriteToUs };
    Q_ENUM(Row)

    static constexpr auto kInstructions = "Click the following link to visit the Tomewise App website";
    static constexpr auto kMailBody = "<p>Enter your comments about the Tomewise App below: </p>";

    explicit RateShareTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    // Each row's label, detail line and icon, in row order.
    QVariantList rows() const;

    // Builds the three values from the configured addresses.
    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void didSelectRow(int row);

    QUrl productURL() const { return m_productURL; }
    QString instructions() const { return m_instructions; }
    std::optional<QUrl> website() const { return m_website; }
    // The store's write-a-review page; empty when it cannot be formed.
    QUrl writeReviewURL() const;
    QUrl mailURL() const;

Q_SIGNALS:
    // An address handed to the platform's opener, and whether anything took it.
    void opened(const QUrl &address, bool handled);

private:
    void open(const QUrl &address);
    void share(const ShareItems &items);

    QUrl m_productURL;
    QString m_instructions;
    std::optional<QUrl> m_website;
    QUrl m_webPage;
    QString m_supportMail;
};

} // namespace tomewise
