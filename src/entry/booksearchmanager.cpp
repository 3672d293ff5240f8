#include "booksearchmanager.h"

#include "app/log.h"
#include "app/settings.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrlQuery>

namespace tomewise {

namespace {

// A transport error is one that left no HTTP status: the server never answered.
bool answeredOverHttp(QNetworkReply *reply)
{
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
}

int statusCode(QNetworkReply *reply)
{
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// Query-item encoding leaves '+' alone, which servers read as a blank; the
// service must see the ISBN as typed, so it is encoded along with the rest.
QString queryValue(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, ":"));
}

} // namespace

BookSearchManager::BookSearchManager(Settings *userDefaults, QObject *parent)
    : QObject(parent)
    , m_userDefaults(userDefaults)
    , m_network(new QNetworkAccessManager(this))
{
}

BookSearchManager::~BookSearchManager() = default;

QUrl BookSearchManager::volumesAddress()
{
    const QString overridden = qEnvironmentVariable("TOMEWISE_BOOKS_API");
    return QUrl(overridden.isEmpty() ? QString::fromLatin1(kDefaultVolumesAddress) : overridden);
}

QUrl BookSearchManager::searchURL(const QString &isbn) const
{
    QUrl url = volumesAddress();
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("q"), queryValue(QStringLiteral("ISBN:") + isbn));
    // The keyless quota is small and shared; a user who runs out can add a key.
    if (m_userDefaults) {
        const QString key = m_userDefaults->stringValue(SettingsKey::GoogleBooksApiKey);
        if (!key.isEmpty())
            query.addQueryItem(QStringLiteral("key"), queryValue(key));
    }
    url.setQuery(query);
    return url;
}

QNetworkReply *BookSearchManager::get(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(m_timeoutMs);
    ++m_pending;
    return m_network->get(request);
}

void BookSearchManager::search(const QString &isbn, Completion completion)
{
    QNetworkReply *reply = get(searchURL(isbn));
    // The reply finishes on this object's (the user-interface) thread, so the
    // held answer the completion writes is never touched from another thread.
    connect(reply, &QNetworkReply::finished, this, [this, reply, completion = std::move(completion)] {
        reply->deleteLater();
        --m_pending;
        handleSearchAnswer(reply, completion);
        Q_EMIT finished();
    });
}

void BookSearchManager::handleSearchAnswer(QNetworkReply *reply, const Completion &completion)
{
    if (!answeredOverHttp(reply)) {
        if (reply->error() != QNetworkReply::NoError) {
            qCInfo(lcEntry).noquote() << "URL Session Task Failed: " + reply->errorString();
            return;
        }
        // Over http(s) every answer carries a status; only an address of another
        // scheme in TOMEWISE_BOOKS_API can get here.
        qFatal("The books service gave an answer that is not an HTTP response (%s)",
               qPrintable(reply->url().toString()));
    }
    qCInfo(lcEntry).noquote() << "URL Session Task Succeeded: HTTP " + QString::number(statusCode(reply));

    const QByteArray data = reply->readAll();
    if (data.isEmpty())
        return;
    const BookScan::Decoded decoded = BookScan::decode(data);
    if (!decoded.scan) {
        qCInfo(lcEntry).noquote() << decoded.error;
        return;
    }
    completion(decoded.scan->items);
}

void BookSearchManager::downloadCover(const QUrl &url, CoverCompletion completion)
{
    QNetworkReply *reply = get(url);
    connect(reply, &QNetworkReply::finished, this, [this, reply, completion = std::move(completion)] {
        reply->deleteLater();
        --m_pending;
        handleCoverAnswer(reply, completion);
        Q_EMIT finished();
    });
}

void BookSearchManager::handleCoverAnswer(QNetworkReply *reply, const CoverCompletion &completion)
{
    if (!answeredOverHttp(reply) && reply->error() != QNetworkReply::NoError) {
        qCInfo(lcEntry).noquote() << "Failed fetching image: " + reply->errorString();
        return;
    }
    const QByteArray data = reply->readAll();
    if (answeredOverHttp(reply) && statusCode(reply) == 200 && !data.isEmpty()) {
        // Bytes that are no picture give a null image; the form shows what it gets.
        completion(QImage::fromData(data));
        return;
    }
    qCInfo(lcEntry) << "Not a proper HTTPURLResponse of statusCode";
}

} // namespace tomewise
