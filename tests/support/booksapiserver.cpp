#include "booksapiserver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrlQuery>

namespace tomewise::test {

namespace {

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 400: return "Bad Request";
    case 404: return "Not Found";
    case 429: return "Too Many Requests";
    case 500: return "Internal Server Error";
    default: return "Status";
    }
}

// The ISBN as the fixtures name it: digits (and a final X) only.
QString fixtureKey(const QString &isbn)
{
    QString key;
    for (const QChar c : isbn) {
        if (c.isDigit() || c == QLatin1Char('X'))
            key += c;
    }
    return key;
}

} // namespace

QString BooksApiServer::Request::q() const
{
    for (const auto &[key, value] : query) {
        if (key == QLatin1String("q"))
            return value;
    }
    return {};
}

BooksApiServer::BooksApiServer(const QString &fixtureDirectory, QObject *parent)
    : QObject(parent)
    , m_server(new QTcpServer(this))
    , m_fixtures(fixtureDirectory)
{
    connect(m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server->nextPendingConnection())
            serve(socket);
    });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("BooksApiServer cannot listen: %s", qPrintable(m_server->errorString()));
}

BooksApiServer::~BooksApiServer() = default;

QString BooksApiServer::defaultFixtures()
{
    return QStringLiteral(TOMEWISE_TEST_DATA "/books-api");
}

quint16 BooksApiServer::port() const
{
    return m_server->serverPort();
}

QUrl BooksApiServer::baseAddress() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port()));
}

QUrl BooksApiServer::volumesAddress() const
{
    return QUrl(baseAddress().toString() + QStringLiteral("/books/v1/volumes"));
}

QHash<QString, QString> BooksApiServer::cliEnvironment(const QString &runtimeDir) const
{
    return {{QStringLiteral("TOMEWISE_BOOKS_API"), volumesAddress().toString()},
            {QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{message}")},
            {QStringLiteral("XDG_RUNTIME_DIR"), runtimeDir}};
}

void BooksApiServer::setAnswer(const QString &path, const Answer &answer)
{
    m_answers.insert(path, answer);
}

void BooksApiServer::setDelay(const QString &isbnDigits, int milliseconds)
{
    m_delays.insert(isbnDigits, milliseconds);
}

void BooksApiServer::serve(QTcpSocket *socket)
{
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
        if (socket->property("answered").toBool())
            return;
        QByteArray buffer = socket->property("buffer").toByteArray() + socket->readAll();
        socket->setProperty("buffer", buffer);
        const qsizetype end = buffer.indexOf("\r\n\r\n");
        if (end < 0)
            return;
        socket->setProperty("answered", true);

        const QList<QByteArray> requestLine = buffer.left(buffer.indexOf("\r\n")).split(' ');
        Request request;
        request.method = requestLine.value(0);
        request.target = requestLine.value(1);
        const QUrl url = QUrl::fromEncoded(request.target);
        request.path = url.path();
        for (const auto &[key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded))
            request.query.append({key, value});
        m_requests.append(request);
        Q_EMIT requestReceived();

        const Answer answer = answerFor(request);
        if (answer.stream != Answer::Stream::None) {
            stream(socket, answer);
            return;
        }
        QByteArray body = answer.body;
        body.replace("{{server}}", baseAddress().toEncoded());
        QByteArray response = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + reasonPhrase(answer.status)
                              + "\r\nContent-Type: " + answer.contentType
                              + "\r\nContent-Length: " + QByteArray::number(body.size())
                              + "\r\nConnection: close\r\n\r\n" + body;
        QPointer<QTcpSocket> guarded(socket);
        QTimer::singleShot(answer.delayMs, this, [guarded, response] {
            if (!guarded)
                return;
            guarded->write(response);
            guarded->disconnectFromHost();
        });
    });
}

void BooksApiServer::stream(QTcpSocket *socket, const Answer &answer)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + reasonPhrase(answer.status)
                      + "\r\nContent-Type: " + answer.contentType;
    if (answer.declaredLength >= 0)
        head += "\r\nContent-Length: " + QByteArray::number(answer.declaredLength);
    socket->write(head + "\r\nConnection: close\r\n\r\n");
    if (answer.stream == Answer::Stream::Drip) {
        auto *timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [socket] { socket->write("x"); });
        timer->start(answer.dripMs);
        return;
    }
    const QByteArray chunk(64 * 1024, 'x');
    const auto topUp = [socket, chunk] {
        while (socket->state() == QAbstractSocket::ConnectedState && socket->bytesToWrite() < 4 * chunk.size())
            socket->write(chunk);
    };
    connect(socket, &QTcpSocket::bytesWritten, socket, topUp);
    topUp();
}

BooksApiServer::Answer BooksApiServer::answerFor(const Request &request) const
{
    if (m_answers.contains(request.path))
        return m_answers.value(request.path);
    if (request.path == QLatin1String("/books/v1/volumes"))
        return volumesAnswer(request.q());
    return {404, "Not Found", "text/plain", 0};
}

BooksApiServer::Answer BooksApiServer::volumesAnswer(const QString &q) const
{
    const QString key = fixtureKey(q.mid(q.indexOf(QLatin1Char(':')) + 1));
    Answer answer;
    answer.delayMs = m_delays.value(key, 0);
    const QStringList files = QDir(m_fixtures).entryList({key + QStringLiteral(".*")}, QDir::Files);
    if (key.isEmpty() || files.isEmpty()) {
        answer.body = R"({"kind": "books#volumes", "totalItems": 0})";
        return answer;
    }
    const QFileInfo file(QDir(m_fixtures).filePath(files.first()));
    QFile f(file.filePath());
    if (!f.open(QIODevice::ReadOnly))
        qFatal("BooksApiServer cannot read %s", qPrintable(file.filePath()));
    answer.body = f.readAll();
    const QStringList parts = file.fileName().split(QLatin1Char('.'));
    if (parts.size() == 3)
        answer.status = parts.at(1).toInt();
    if (file.suffix() != QLatin1String("json"))
        answer.contentType = "text/html; charset=UTF-8";
    return answer;
}

} // namespace tomewise::test
