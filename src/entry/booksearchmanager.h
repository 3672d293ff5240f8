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
    // Fetches a cover; the completion runs only for an HTTP 200 answer with data.
    void downloadCover(const QUrl &url, CoverCompletion completion);

    // Queries and downloads sent and not yet finished.
    int pendingCount() const { return m_pending; }

    // Only for tests that cannot wait a minute for the time-out.
    void setTimeoutMs(int milliseconds) { m_timeoutMs = milliseconds; }

Q_SIGNALS:
    // Every query and cover download ends with this, whatever became of it.
    void finished();

private:
    QNetworkReply *get(const QUrl &url);
    void handleSearchAnswer(QNetworkReply *reply, const Completion &completion);
    void handleCoverAnswer(QNetworkReply *reply, const CoverCompletion &completion);

    Settings *m_userDefaults = nullptr;
    QNetworkAccessManager *m_network = nullptr;
    int m_timeoutMs = kTimeoutMs;
    int m_pending = 0;
};

} // namespace tomewise
