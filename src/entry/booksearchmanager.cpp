#include "booksearchmanager.h"

#include "app/log.h"
#include "app/settings.h"
#include "model/coverimage.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
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

// Why a request was cut short by its limits; absent when it ran its course.
constexpr auto kAbortReason = "tomewiseAbortReason";

QString abortReason(const QNetworkReply *reply)
{
    return reply->property(kAbortReason).toString();
}

void abortWith(QNetworkReply *reply, const QString &reason)
{
    if (!abortReason(reply).isEmpty())
        return;
    reply->setProperty(kAbortReason, reason);
    reply->abort();
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

QNetworkReply *BookSearchManager::get(const QUrl &url, qint64 maxBytes)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(m_limits.timeoutMs);
    ++m_pending;
    QNetworkReply *reply = m_network->get(request);
    // An answer is never read past its cap, and never waited for past the
    // deadline: an endless or dripping server must not hold memory or the form.
    const QString tooLarge = QStringLiteral("The answer is larger than %1 MB.").arg(maxBytes / (1024 * 1024));
    connect(reply, &QNetworkReply::metaDataChanged, reply, [reply, maxBytes, tooLarge] {
        if (reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > maxBytes)
            abortWith(reply, tooLarge);
    });
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply, maxBytes, tooLarge](qint64 received, qint64 total) {
        if (received > maxBytes || total > maxBytes)
            abortWith(reply, tooLarge);
    });
    QTimer::singleShot(m_limits.deadlineMs, reply, [reply, seconds = m_limits.deadlineMs / 1000.0] {
        abortWith(reply, QStringLiteral("The answer took longer than %1 seconds.").arg(seconds));
    });
    return reply;
}

void BookSearchManager::search(const QString &isbn, Completion completion)
{
    QNetworkReply *reply = get(searchURL(isbn), m_limits.answerBytes);
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
    if (const QString reason = abortReason(reply); !reason.isEmpty()) {
        qCInfo(lcEntry).noquote() << "URL Session Task Failed: " + reason;
        return;
    }
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
    QNetworkReply *reply = get(url, m_limits.coverBytes);
    connect(reply, &QNetworkReply::finished, this, [this, reply, completion = std::move(completion)] {
        reply->deleteLater();
        --m_pending;
        handleCoverAnswer(reply, completion);
        Q_EMIT finished();
    });
}

void BookSearchManager::handleCoverAnswer(QNetworkReply *reply, const CoverCompletion &completion)
{
    if (const QString reason = abortReason(reply); !reason.isEmpty()) {
        qCInfo(lcEntry).noquote() << "Failed fetching image: " + reason;
        return;
    }
    if (!answeredOverHttp(reply) && reply->error() != QNetworkReply::NoError) {
        qCInfo(lcEntry).noquote() << "Failed fetching image: " + reply->errorString();
        return;
    }
    const QByteArray data = reply->readAll();
    if (answeredOverHttp(reply) && statusCode(reply) == 200 && !data.isEmpty()) {
        // Bytes that are no picture leave the form's cover as it was.
        const CoverImage::Decoded cover = CoverImage::decode(data);
        if (cover)
            completion(cover.image);
        else
            qCInfo(lcEntry).noquote() << cover.error;
        return;
    }
    qCInfo(lcEntry) << "Not a proper HTTPURLResponse of statusCode";
}

} // namespace tomewise
