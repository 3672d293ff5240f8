#pragma once

#include "entry/bookscan.h"

#include <QImage>
#include <QObject>
#include <QUrl>

#include <functional>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;

namespace tomewise {

class Settings;

// Looks a book up by ISBN in the Google Books volumes service and downloads
// covers, without ever blocking the user-interface thread.
class BookSearchManager : public QObject
{
    Q_OBJECT

public:
    using Completion = std::function<void(const std::optional<QList<BookItem>> &items)>;
    using CoverCompletion = std::function<void(const QImage &image)>;

    static constexpr auto kDefaultVolumesAddress = "https://www.googleapis.com/books/v1/volumes";
    static constexpr int kTimeoutMs = 60000;

    // What one request may take. The time-out ends a request that sends nothing
    // for that long; the deadline ends one that still trickles a byte now and then.
    struct Limits
    {
        int timeoutMs = kTimeoutMs;
        int deadlineMs = kTimeoutMs;
        qint64 answerBytes = 5 * 1024 * 1024;
        qint64 coverBytes = 10 * 1024 * 1024;
    };

    // The settings supply the optional API key; null means none is ever sent.
    explicit BookSearchManager(Settings *userDefaults = nullptr, QObject *parent = nullptr);
    ~BookSearchManager() override;

    // TOMEWISE_BOOKS_API when set (tests point it at a local server), else the public address.
    static QUrl volumesAddress();
    // The query for one ISBN exactly as typed or scanned.
    QUrl searchURL(const QString &isbn) const;

    // Sends the query; the completion runs on this object's thread with the
    // decoded items, and is not called at all when the answer cannot be used.
    void search(const QString &isbn, Completion completion);
    // Fetches a cover; the completion runs only for an HTTP 200 answer that is a picture.
    void downloadCover(const QUrl &url, CoverCompletion completion);

    // Queries and downloads sent and not yet finished.
    int pendingCount() const { return m_pending; }

    // Only for tests that cannot wait a minute, or send megabytes.
    void setLimits(const Limits &limits) { m_limits = limits; }

Q_SIGNALS:
    // Every query and cover download ends with this, whatever became of it.
    void finished();

private:
    QNetworkReply *get(const QUrl &url, qint64 maxBytes);
    void handleSearchAnswer(QNetworkReply *reply, const Completion &completion);
    void handleCoverAnswer(QNetworkReply *reply, const CoverCompletion &completion);

    Settings *m_userDefaults = nullptr;
    QNetworkAccessManager *m_network = nullptr;
    Limits m_limits;
    int m_pending = 0;
};

} // namespace tomewise
