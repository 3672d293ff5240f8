#include "ratesharetableviewcontroller.h"

#include "feedback/feedbackconfig.h"

#include <QRegularExpression>
#include <QUrlQuery>

namespace tomewise {

namespace {

struct RowEntry
{
    const char *label;
    const char *detail;
    const char *icon;
};

// Laid out in Row order.
constexpr RowEntry kRows[] = {
    {"Rate Tomewise", "Write a review in the app store", "star_rate"},
    {"Share Tomewise", "Send a friend the app's store page", "share"},
    {"Share the Website", "Send a friend the Tomewise web site", "public"},
    {"Visit the Website", "Open the Tomewise web site", "language"},
    {"Write to Us", "Questions, ideas and problems", "mail"},
};

} // namespace

RateShareTableViewController::RateShareTableViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Rate & Share"));
}

QVariantList RateShareTableViewController::rows() const
{
    QVariantList list;
    for (const RowEntry &r : kRows) {
        list.append(QVariantMap{{QStringLiteral("label"), QLatin1String(r.label)},
                                {QStringLiteral("detail"), QLatin1String(r.detail)},
                                {QStringLiteral("icon"), QLatin1String(r.icon)}});
    }
    return list;
}

void RateShareTableViewController::viewDidLoad()
{
    const FeedbackConfig config = FeedbackConfig::load(app().userDefaults());
    m_productURL = QUrl(config.productURL, QUrl::StrictMode);
    m_instructions = QLatin1String(kInstructions);
    // The configured text starts with a blank, which a strict parser refuses;
    // the web site is then left out of what is shared.
    const QUrl website(config.website, QUrl::StrictMode);
    m_website = website.isValid() && !website.isEmpty() ? std::optional(website) : std::nullopt;
    m_webPage = QUrl(config.webPage, QUrl::StrictMode);
    m_supportMail = config.supportMail;
}

QUrl RateShareTableViewController::writeReviewURL() const
{
    if (!m_productURL.isValid() || m_productURL.isEmpty())
        return {};
    QUrl address = m_productURL;
    QUrlQuery query(address);
    query.addQueryItem(QStringLiteral("action"), QStringLiteral("write-review"));
    address.setQuery(query);
    return address.isValid() ? address : QUrl();
}

QUrl RateShareTableViewController::mailURL() const
{
    // A mailto: address carries no markup: the desktop's mail program gets the body as plain text.
    static const QRegularExpression tags(QStringLiteral("<[^>]*>"));
    QUrl address;
    address.setScheme(QStringLiteral("mailto"));
    address.setPath(m_supportMail);
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("body"), QString::fromLatin1(kMailBody).remove(tags));
    address.setQuery(query);
    return address;
}

void RateShareTableViewController::didSelectRow(int row)
{
    switch (row) {
    case Rate:
        open(writeReviewURL());
        break;
    case ShareApp: {
        if (!m_productURL.isValid() || m_productURL.isEmpty())
            break;
        ShareItems items;
        items.links = {m_productURL};
        share(items);
        break;
    }
    case ShareWebsite: {
        ShareItems items;
        items.text = m_instructions;
        if (m_website)
            items.links = {*m_website};
        share(items);
        break;
    }
    case VisitWebsite:
        open(m_webPage);
        break;
    case WriteToUs:
        if (app().platform().canSendMail())
            open(mailURL());
        else
            showAlert(QStringLiteral("Can't Send Email"), QStringLiteral("Your Device is not able to send Email."));
        break;
    default:
        break;
    }
}

void RateShareTableViewController::open(const QUrl &address)
{
    // An address that does not form opens nothing and says nothing.
    if (!address.isValid() || address.isEmpty())
        return;
    const bool handled = app().platform().openUrl(address);
    Q_EMIT opened(address, handled);
}

void RateShareTableViewController::share(const ShareItems &items)
{
    // Refused without text messaging even though the sheet offers other ways.
    if (!app().platform().canSendText()) {
        showAlert(QStringLiteral("Can't Send Text Message"),
                  QStringLiteral("Your Device is not able to send text messages."));
        return;
    }
    app().platform().share(items);
}

} // namespace tomewise
