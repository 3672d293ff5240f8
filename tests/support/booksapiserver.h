#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

class QTcpServer;
class QTcpSocket;

namespace tomewise::test {

// A stand-in for the books service on 127.0.0.1: answers volumes queries from
// fixture files named by ISBN and any other path from registered answers, and
// records what it was asked.
//
// Fixture names: "<isbn>.json" answers 200; "<isbn>.<status>.<ext>" answers
// with that status. "{{server}}" in a body becomes this server's base address.
class BooksApiServer : public QObject
{
    Q_OBJECT

public:
    struct Answer
    {
        int status = 200;
        QByteArray body;
        QByteArray contentType = "application/json; charset=UTF-8";
        int delayMs = 0;
        // A body that never ends: Endless sends as fast as the client reads,
        // Drip one byte every dripMs; either stops only when the client hangs up.
        enum class Stream { None, Endless, Drip } stream = Stream::None;
        int dripMs = 100;
        qint64 declaredLength = -1; // Content-Length of a stream; -1: none sent
    };

    struct Request
    {
        QByteArray method;
        QByteArray target; // path and query as sent, still percent-encoded
        QString path;
        QList<std::pair<QString, QString>> query; // decoded items in order
        QString q() const;
    };

    explicit BooksApiServer(const QString &fixtureDirectory = defaultFixtures(), QObject *parent = nullptr);
    ~BooksApiServer() override;

    static QString defaultFixtures();

    quint16 port() const;
    QUrl baseAddress() const;    // http://127.0.0.1:PORT
    QUrl volumesAddress() const; // .../books/v1/volumes
    // For a tomewise-cli run (runCli) that asks this server, its log lines bare.
    QHash<QString, QString> cliEnvironment(const QString &runtimeDir) const;

    // An exact path ("/covers/a.jpg") answered as given.
    void setAnswer(const QString &path, const Answer &answer);
    // Delays the answer to queries for this ISBN (digits only).
    void setDelay(const QString &isbnDigits, int milliseconds);

    const QList<Request> &requests() const { return m_requests; }

Q_SIGNALS:
    void requestReceived();

private:
    void serve(QTcpSocket *socket);
    void stream(QTcpSocket *socket, const Answer &answer);
    Answer answerFor(const Request &request) const;
    Answer volumesAnswer(const QString &q) const;

    QTcpServer *m_server = nullptr;
    QString m_fixtures;
    QHash<QString, Answer> m_answers;
    QHash<QString, int> m_delays;
    QList<Request> m_requests;
};

} // namespace tomewise::test
