#include "support/booksapiserver.h"
#include "support/clirun.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include "entry/bookfill.h"
#include "entry/booksearchmanager.h"
#include "entry/newbookviewcontroller.h"
#include "model/coverimage.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

using Fields = QList<std::pair<QString, QString>>;

Q_DECLARE_METATYPE(BooksApiServer::Answer)

namespace {

const QString kToday = QStringLiteral("Nov 21, 2026");
const QString kSucceeded200 = QStringLiteral("URL Session Task Succeeded: HTTP 200");

QString missing(const char *path)
{
    return QStringLiteral("The answer could not be read because a required key is missing. (key: %1)")
        .arg(QLatin1String(path));
}

QString wrongType(const char *what, const char *path)
{
    return QStringLiteral("The answer could not be read because a value has the wrong type: %1. (key: %2)")
        .arg(QLatin1String(what), QLatin1String(path));
}

// A volumes answer with one item whose volumeInfo body is given.
QByteArray oneItem(const char *volumeInfo)
{
    return QByteArray(R"({"items": [{"id": "x1", "volumeInfo": {)") + volumeInfo + "}}]}";
}

constexpr auto kRequired = R"("title": "T", "authors": ["A"], "publishedDate": "2001", "pageCount": 10)";

QByteArray withRequired(const char *extra)
{
    return oneItem((QByteArray(kRequired) + ", " + extra).constData());
}

// A port on which nobody listens.
quint16 closedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    const quint16 port = probe.serverPort();
    probe.close();
    return port;
}

// One search as the form runs it: the completion hands the items to the held answer.
struct SearchRun
{
    bool completed = false;
    std::optional<QList<BookItem>> items;
};

SearchRun searchAndWait(BookSearchManager &manager, AppState &state, const QString &isbn)
{
    SearchRun run;
    bool finished = false;
    QObject::connect(&manager, &BookSearchManager::finished, &manager, [&finished] { finished = true; });
    manager.search(isbn, [&](const std::optional<QList<BookItem>> &items) {
        run.completed = true;
        run.items = items;
        state.setScannedBookItems(items);
    });
    if (!QTest::qWaitFor([&finished] { return finished; }, 10000))
        qWarning("search of %s did not finish", qPrintable(isbn));
    manager.disconnect();
    return run;
}

} // namespace

class TestBookSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void decode_data();
    void decode();
    void answers_data();
    void answers();
    void fill_data();
    void fill();
    void queryAsTyped_data();
    void queryAsTyped();
    void transportFailures_data();
    void transportFailures();
    void coverDownload_data();
    void coverDownload();
    void cliLookup_data();
    void cliLookup();

    // The form's search: double tap, fill step, return from the scanner.
    void emptyIsbnFieldAlerts();
    void firstDoubleTapFillsFromTheOldAnswer();
    void notFoundAfterTheDelay();
    void nothingHeld_data();
    void nothingHeld();
    void fillKeepsFieldsTheAnswerLacks();
    void savedAfterFill();
    void unwindFromScanner_data();
    void unwindFromScanner();
    void cliAddWithLookup();

private:
    std::unique_ptr<BooksApiServer> m_server;
};

void TestBookSearch::init()
{
    m_server = std::make_unique<BooksApiServer>();
    qputenv("TOMEWISE_BOOKS_API", m_server->volumesAddress().toEncoded());
}

void TestBookSearch::decode_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("itemCount"); // -1: no items key

    QTest::newRow("items absent") << QByteArray(R"({"kind": "books#volumes", "totalItems": 0})") << QString() << -1;
    QTest::newRow("items null") << QByteArray(R"({"items": null})") << QString() << -1;
    QTest::newRow("items empty") << QByteArray(R"({"items": []})") << QString() << 0;
    QTest::newRow("required only") << oneItem(kRequired) << QString() << 1;
    QTest::newRow("extra keys ignored") << withRequired(R"("ratingsCount": 3, "panelization": {"x": [1]})")
                                        << QString() << 1;
    QTest::newRow("optional null") << withRequired(R"("subtitle": null, "imageLinks": null)") << QString() << 1;
    QTest::newRow("whole-number double") << oneItem(R"("title": "T", "authors": [], "publishedDate": "", "pageCount": 320.0)")
                                         << QString() << 1;

    QTest::newRow("no id") << QByteArray(R"({"items": [{"volumeInfo": {}}]})") << missing("items[0].id") << -1;
    QTest::newRow("no volumeInfo") << QByteArray(R"({"items": [{"id": "x"}]})") << missing("items[0].volumeInfo") << -1;
    QTest::newRow("no title") << oneItem(R"("authors": ["A"], "publishedDate": "2001", "pageCount": 10)")
                              << missing("items[0].volumeInfo.title") << -1;
    QTest::newRow("no authors") << oneItem(R"("title": "T", "publishedDate": "2001", "pageCount": 10)")
                                << missing("items[0].volumeInfo.authors") << -1;
    QTest::newRow("no publishedDate") << oneItem(R"("title": "T", "authors": ["A"], "pageCount": 10)")
                                      << missing("items[0].volumeInfo.publishedDate") << -1;
    QTest::newRow("no pageCount") << oneItem(R"("title": "T", "authors": ["A"], "publishedDate": "2001")")
                                  << missing("items[0].volumeInfo.pageCount") << -1;

    QTest::newRow("pageCount text") << oneItem(R"("title": "T", "authors": ["A"], "publishedDate": "2001", "pageCount": "10")")
                                    << wrongType("expected an integer, found a string", "items[0].volumeInfo.pageCount") << -1;
    QTest::newRow("pageCount fraction") << oneItem(R"("title": "T", "authors": ["A"], "publishedDate": "2001", "pageCount": 10.5)")
                                        << wrongType("expected an integer, found the number 10.5", "items[0].volumeInfo.pageCount")
                                        << -1;
    QTest::newRow("title null") << oneItem(R"("title": null, "authors": ["A"], "publishedDate": "2001", "pageCount": 10)")
                                << wrongType("expected a string, found null", "items[0].volumeInfo.title") << -1;
    QTest::newRow("authors text") << oneItem(R"("title": "T", "authors": "A", "publishedDate": "2001", "pageCount": 10)")
                                  << wrongType("expected an array of strings, found a string", "items[0].volumeInfo.authors")
                                  << -1;
    QTest::newRow("author number") << oneItem(R"("title": "T", "authors": ["A", 7], "publishedDate": "2001", "pageCount": 10)")
                                   << wrongType("expected a string, found a number", "items[0].volumeInfo.authors[1]") << -1;
    QTest::newRow("subtitle number") << withRequired(R"("subtitle": 2)")
                                     << wrongType("expected a string, found a number", "items[0].volumeInfo.subtitle") << -1;
    QTest::newRow("categories text") << withRequired(R"("categories": "Fiction")")
                                     << wrongType("expected an array of strings, found a string",
                                                  "items[0].volumeInfo.categories")
                                     << -1;
    QTest::newRow("imageLinks text") << withRequired(R"("imageLinks": "http://x")")
                                     << wrongType("expected an object, found a string", "items[0].volumeInfo.imageLinks")
                                     << -1;
    QTest::newRow("thumbnail number") << withRequired(R"("imageLinks": {"thumbnail": 1})")
                                      << wrongType("expected a string, found a number",
                                                   "items[0].volumeInfo.imageLinks.thumbnail")
                                      << -1;
    QTest::newRow("second item broken")
        << QByteArray(R"({"items": [{"id": "a", "volumeInfo": {"title": "T", "authors": [], "publishedDate": "", "pageCount": 1}},
                                    {"id": "b", "volumeInfo": {"authors": [], "publishedDate": "", "pageCount": 1}}]})")
        << missing("items[1].volumeInfo.title") << -1;
    QTest::newRow("items object") << QByteArray(R"({"items": {}})")
                                  << wrongType("expected an array, found an object", "items") << -1;
    QTest::newRow("top-level array") << QByteArray("[]")
                                     << wrongType("expected an object, found an array", "(top level)") << -1;
}

void TestBookSearch::decode()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QFETCH(int, itemCount);

    const BookScan::Decoded decoded = BookScan::decode(json);
    QCOMPARE(decoded.error, error);
    QCOMPARE(decoded.scan.has_value(), error.isEmpty());
    if (decoded.scan)
        QCOMPARE(decoded.scan->items ? int(decoded.scan->items->size()) : -1, itemCount);
}

void TestBookSearch::answers_data()
{
    QTest::addColumn<QString>("isbn");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<bool>("completed");
    QTest::addColumn<int>("itemCount"); // -1: nothing held

    QTest::newRow("two items") << QStringLiteral("9780060853983") << QStringList{kSucceeded200} << true << 2;
    QTest::newRow("items absent") << QStringLiteral("9780000000019") << QStringList{kSucceeded200} << true << -1;
    QTest::newRow("unknown isbn") << QStringLiteral("9781111111111") << QStringList{kSucceeded200} << true << -1;
    QTest::newRow("no pageCount") << QStringLiteral("9780000000002")
                                  << QStringList{kSucceeded200, missing("items[0].volumeInfo.pageCount")} << false << -1;
    QTest::newRow("pageCount text") << QStringLiteral("9780000000026")
                                    << QStringList{kSucceeded200, wrongType("expected an integer, found a string",
                                                                            "items[0].volumeInfo.pageCount")}
                                    << false << -1;
    // The service's error answer is an object without items: it decodes, and holds nothing.
    QTest::newRow("quota 429") << QStringLiteral("9780000000033")
                               << QStringList{QStringLiteral("URL Session Task Succeeded: HTTP 429")} << true << -1;
    QTest::newRow("html page") << QStringLiteral("9780000000040")
                               << QStringList{kSucceeded200,
                                              QStringLiteral("The answer could not be read because it is not valid JSON: "
                                                             "illegal value at offset 1.")}
                               << false << -1;
    QTest::newRow("empty body") << QStringLiteral("9780000000064") << QStringList{kSucceeded200} << false << -1;
}

void TestBookSearch::answers()
{
    QFETCH(QString, isbn);
    QFETCH(QStringList, log);
    QFETCH(bool, completed);
    QFETCH(int, itemCount);

    TestApp t;
    LogCapture capture;
    BookSearchManager manager;
    const SearchRun run = searchAndWait(manager, t.app().state(), isbn);

    QCOMPARE(capture.lines("tomewise.entry"), log);
    QCOMPARE(run.completed, completed);
    const auto &held = t.app().state().scannedBookItems();
    QCOMPARE(held ? int(held->size()) : -1, itemCount);
    QCOMPARE(BookFill::from(held, kToday).has_value(), itemCount > 0);
}

void TestBookSearch::fill_data()
{
    QTest::addColumn<QString>("isbn");
    QTest::addColumn<Fields>("fields");

    QTest::newRow("subtitle, two authors, categories, cover")
        << QStringLiteral("9780060853983")
        << Fields{{"dateTextField", kToday},
                  {"bookNameTextField", "Good Omens"},
                  {"SubTitleTextField", "The Nice and Accurate Prophecies of Agnes Nutter, Witch"},
                  {"datePublishedTextField", "2006"},
                  {"numberOfPagesTextField", "432"},
                  {"bookAuthorTextField", "Neil Gaiman, Terry Pratchett"},
                  {"publishersNameTextField", "HarperCollins"},
                  {"bookCategoryTextField", "Fiction, Fantasy"},
                  {"NotesTextView", "The world ends on a Saturday.\nNext Saturday, in fact."},
                  {"imageView", "{{server}}/covers/9780060853983.jpg"}};
    QTest::newRow("four authors, full date")
        << QStringLiteral("9780262033848")
        << Fields{{"dateTextField", kToday},
                  {"bookNameTextField", "Introduction to Algorithms"},
                  {"datePublishedTextField", "2009-07-31"},
                  {"numberOfPagesTextField", "1292"},
                  {"bookAuthorTextField", "Thomas H. Cormen, Charles E. Leiserson, Ronald L. Rivest, Clifford Stein"},
                  {"publishersNameTextField", "MIT Press"},
                  {"bookCategoryTextField", "Computers"},
                  {"NotesTextView", "A broad survey of algorithms, each described in pseudocode and analysed with care."},
                  {"imageView", "{{server}}/covers/9780262033848.jpg"}};
    QTest::newRow("required keys only")
        << QStringLiteral("9780141036144")
        << Fields{{"dateTextField", kToday},
                  {"bookNameTextField", "Nineteen Eighty-Four"},
                  {"datePublishedTextField", "2008"},
                  {"numberOfPagesTextField", "336"},
                  {"bookAuthorTextField", "George Orwell"}};
}

void TestBookSearch::fill()
{
    QFETCH(QString, isbn);
    QFETCH(Fields, fields);

    TestApp t;
    BookSearchManager manager;
    QVERIFY(searchAndWait(manager, t.app().state(), isbn).completed);
    const auto filled = BookFill::from(t.app().state().scannedBookItems(), kToday);
    QVERIFY(filled);
    for (auto &[name, value] : fields)
        value.replace(QLatin1String("{{server}}"), m_server->baseAddress().toString());
    QCOMPARE(filled->fields(), fields);
}

void TestBookSearch::queryAsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("apiKey"); // sent only when set
    QTest::newRow("digits") << QStringLiteral("9780141036144") << QString();
    QTest::newRow("hyphens") << QStringLiteral("978-0-14-103614-4") << QString();
    QTest::newRow("blanks") << QStringLiteral("978 0 14 103614 4") << QString();
    QTest::newRow("untrimmed") << QStringLiteral("  9780141036144 ") << QString();
    QTest::newRow("ISBN-10 with X") << QStringLiteral("080442957X") << QString();
    QTest::newRow("query delimiters") << QStringLiteral("978+0&key=1#x%20/?") << QString();
    QTest::newRow("QR text") << QStringLiteral("Ünïcode, \"quoted\"") << QString();
    QTest::newRow("with API key") << QStringLiteral("9780141036144") << QStringLiteral("AIza-test+key");
}

void TestBookSearch::queryAsTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, apiKey);

    TestApp t;
    t.app().userDefaults().setValue(SettingsKey::GoogleBooksApiKey, apiKey);
    BookSearchManager manager(&t.app().userDefaults());
    searchAndWait(manager, t.app().state(), typed);
    QCOMPARE(m_server->requests().size(), 1);
    const auto &request = m_server->requests().first();
    QCOMPARE(request.method, QByteArray("GET"));
    QCOMPARE(request.path, QStringLiteral("/books/v1/volumes"));
    QList<std::pair<QString, QString>> query{{"q", "ISBN:" + typed}};
    if (!apiKey.isEmpty())
        query.append({"key", apiKey});
    QCOMPARE(request.query, query);
}

namespace {

// Every request in these tests gives up after 1.5 s, however it trickles.
BookSearchManager::Limits shortDeadline(int timeoutMs = BookSearchManager::kTimeoutMs)
{
    BookSearchManager::Limits limits;
    limits.timeoutMs = timeoutMs;
    limits.deadlineMs = 1500;
    return limits;
}

using Stream = BooksApiServer::Answer::Stream;

BooksApiServer::Answer streamed(Stream stream, qint64 declaredLength = -1, const QByteArray &type = "image/jpeg")
{
    BooksApiServer::Answer answer{200, {}, type, 0};
    answer.stream = stream;
    answer.declaredLength = declaredLength;
    return answer;
}

} // namespace

void TestBookSearch::transportFailures_data()
{
    QTest::addColumn<bool>("closed");
    QTest::addColumn<int>("timeoutMs");
    QTest::addColumn<BooksApiServer::Answer>("answer"); // for every query; none: the fixtures
    QTest::addColumn<QString>("log");

    const QString failed = QStringLiteral("URL Session Task Failed: ");
    const QString tooLarge = failed + QStringLiteral("The answer is larger than 5 MB.");
    const int minute = BookSearchManager::kTimeoutMs;
    const BooksApiServer::Answer fixtures{0, {}, {}, 0};
    QTest::newRow("connection refused") << true << minute << fixtures << failed + "Connection refused";
    QTest::newRow("silent server") << false << 300 << fixtures << failed + "Operation canceled";
    QTest::newRow("endless answer") << false << minute << streamed(Stream::Endless) << tooLarge;
    QTest::newRow("declared too long") << false << minute << streamed(Stream::Endless, 6 << 20) << tooLarge;
    QTest::newRow("dripping answer") << false << 1000 << streamed(Stream::Drip)
                                     << failed + "The answer took longer than 1.5 seconds.";
}

void TestBookSearch::transportFailures()
{
    QFETCH(bool, closed);
    QFETCH(int, timeoutMs);
    QFETCH(BooksApiServer::Answer, answer);
    QFETCH(QString, log);

    if (closed)
        qputenv("TOMEWISE_BOOKS_API", QByteArray("http://127.0.0.1:") + QByteArray::number(closedPort()) + "/books/v1/volumes");
    m_server->setDelay(QStringLiteral("9780000000057"), 3000);
    if (answer.status)
        m_server->setAnswer(QStringLiteral("/books/v1/volumes"), answer);
    TestApp t;
    LogCapture capture;
    BookSearchManager manager;
    manager.setLimits(shortDeadline(timeoutMs));
    const SearchRun run = searchAndWait(manager, t.app().state(), QStringLiteral("9780000000057"));
    QVERIFY(!run.completed);
    QCOMPARE(capture.lines("tomewise.entry"), QStringList{log});
}

void TestBookSearch::coverDownload_data()
{
    QTest::addColumn<BooksApiServer::Answer>("answer");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<QStringList>("log"); // empty: the picture is shown

    const QByteArray jpeg = encode(coverImage(QSize(128, 192)), "JPEG", 90);
    const QStringList improper{QStringLiteral("Not a proper HTTPURLResponse of statusCode")};
    const QStringList tooLarge{QStringLiteral("Failed fetching image: The answer is larger than 10 MB.")};
    using Answer = BooksApiServer::Answer;
    QTest::newRow("200 with picture") << Answer{200, jpeg, "image/jpeg", 0} << false << QStringList();
    QTest::newRow("404") << Answer{404, jpeg, "image/jpeg", 0} << false << improper;
    QTest::newRow("200 without data") << Answer{200, {}, "image/jpeg", 0} << false << improper;
    QTest::newRow("500") << Answer{500, jpeg, "image/jpeg", 0} << false << improper;
    QTest::newRow("connection refused") << Answer{200, jpeg, "image/jpeg", 0} << true
                                        << QStringList{QStringLiteral("Failed fetching image: Connection refused")};
    QTest::newRow("not a picture") << Answer{200, "%PDF-1.4\n%%EOF\n", "image/jpeg", 0} << false
                                   << QStringList{CoverImage::notAPicture()};
    QTest::newRow("endless") << streamed(Stream::Endless) << false << tooLarge;
    QTest::newRow("declared too long") << streamed(Stream::Endless, 11 << 20) << false << tooLarge;
    QTest::newRow("dripping") << streamed(Stream::Drip) << false
                              << QStringList{QStringLiteral("Failed fetching image: The answer took longer than 1.5 seconds.")};
}

void TestBookSearch::coverDownload()
{
    QFETCH(BooksApiServer::Answer, answer);
    QFETCH(bool, closed);
    QFETCH(QStringList, log);

    const QString path = QStringLiteral("/covers/9780060853983.jpg");
    m_server->setAnswer(path, answer);
    QUrl url = m_server->baseAddress().resolved(QUrl(path));
    if (closed)
        url.setPort(closedPort());

    LogCapture capture;
    BookSearchManager manager;
    manager.setLimits(shortDeadline());
    bool finished = false;
    std::optional<QImage> shown;
    connect(&manager, &BookSearchManager::finished, this, [&finished] { finished = true; });
    manager.downloadCover(url, [&shown](const QImage &image) { shown = image; });
    QTRY_VERIFY_WITH_TIMEOUT(finished, 10000);

    QCOMPARE(capture.lines("tomewise.entry"), log);
    QCOMPARE(shown.has_value(), log.isEmpty());
    if (shown)
        QCOMPARE(shown->size(), QSize(128, 192));
}

void TestBookSearch::cliLookup_data()
{
    QTest::addColumn<QString>("isbn");
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("out");
    QTest::addColumn<QStringList>("err");

    const QString today = QLocale(QLocale::English, QLocale::UnitedStates)
                              .toString(QDate::currentDate(), QStringLiteral("MMM d, yyyy"));
    const QString notFound = QStringLiteral("Book Not Found: The Scanned Barcode returned no Results");
    QTest::newRow("found") << QStringLiteral("978-0-06-085398-3") << 0
                           << QStringList{"dateTextField: " + today,
                                          "bookNameTextField: Good Omens",
                                          "SubTitleTextField: The Nice and Accurate Prophecies of Agnes Nutter, Witch",
                                          "datePublishedTextField: 2006",
                                          "numberOfPagesTextField: 432",
                                          "bookAuthorTextField: Neil Gaiman, Terry Pratchett",
                                          "publishersNameTextField: HarperCollins",
                                          "bookCategoryTextField: Fiction, Fantasy",
                                          "NotesTextView: The world ends on a Saturday.\\nNext Saturday, in fact.",
                                          "imageView: {{server}}/covers/9780060853983.jpg"}
                           << QStringList{kSucceeded200};
    QTest::newRow("items absent") << QStringLiteral("9780000000019") << 1 << QStringList()
                                  << QStringList{kSucceeded200, notFound};
    QTest::newRow("no pageCount") << QStringLiteral("9780000000002") << 1 << QStringList()
                                  << QStringList{kSucceeded200, missing("items[0].volumeInfo.pageCount"), notFound};
}

void TestBookSearch::cliLookup()
{
    QFETCH(QString, isbn);
    QFETCH(int, status);
    QFETCH(QStringList, out);
    QFETCH(QStringList, err);

    QTemporaryDir dir;
    const CliRun run = runCli(dir.path(), {QStringLiteral("lookup"), isbn}, m_server->cliEnvironment(dir.path()));

    for (auto &line : out)
        line.replace(QLatin1String("{{server}}"), m_server->baseAddress().toString());
    QCOMPARE(run.status, status);
    QCOMPARE(run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts), out);
    QCOMPARE(run.err.split(QLatin1Char('\n'), Qt::SkipEmptyParts), err);
    QCOMPARE(m_server->requests().size(), 1);
    QCOMPARE(m_server->requests().first().q(), "ISBN:" + isbn);
}

namespace {

// The form's queries and downloads have all ended.
bool settled(BookForm &form)
{
    return QTest::qWaitFor([&form] { return form.searchManager().pendingCount() == 0; }, 10000);
}

const QString kNotFound = QStringLiteral("Book Not Found");
const QString kNoResults = QStringLiteral("The Scanned Barcode returned no Results");

} // namespace

void TestBookSearch::emptyIsbnFieldAlerts()
{
    TestApp t;
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    QSignalSpy alerts(&form, &ScreenController::alert);
    form.ISBNDoubleTapped();
    QCOMPARE(alerts.size(), 1);
    QCOMPARE(form.alertTitle(), QStringLiteral("ISBN Field Empty"));
    QCOMPARE(form.alertMessage(), QStringLiteral("There is no isbn number entered"));
    QCOMPARE(form.alertButtons(), QStringList{"OK"});
    QTest::qWait(50);
    QVERIFY(m_server->requests().isEmpty());
}

void TestBookSearch::firstDoubleTapFillsFromTheOldAnswer()
{
    m_server->setAnswer(QStringLiteral("/covers/9780060853983.jpg"),
                        {200, encode(coverImage(QSize(128, 192)), "JPEG", 90), "image/jpeg", 0});
    TestApp t;
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    QSignalSpy alerts(&form, &ScreenController::alert);
    const QString typed = QStringLiteral("978-0-06-085398-3 ");
    form.setProperty("ISBNTextField", typed);

    // Nothing was held when the first tap filled: the answer arrives afterwards.
    form.ISBNDoubleTapped();
    QVERIFY(settled(form));
    QTRY_COMPARE(alerts.size(), 1);
    QCOMPARE(form.alertTitle(), kNotFound);
    QCOMPARE(form.property("bookNameTextField").toString(), QString());
    QCOMPARE(t.app().state().scannedBookItems()->size(), 2);

    form.ISBNDoubleTapped();
    QCOMPARE(form.property("bookNameTextField").toString(), QStringLiteral("Good Omens"));
    QCOMPARE(form.property("bookAuthorTextField").toString(), QStringLiteral("Neil Gaiman, Terry Pratchett"));
    QVERIFY(!t.app().state().scannedBookItems()); // cleared by the fill, until the new answer lands
    QVERIFY(settled(form));
    QCOMPARE(form.imageView().size(), QSize(128, 192));
    QCOMPARE(t.app().state().scannedBookItems()->size(), 2);
    QCOMPARE(alerts.size(), 1);

    QStringList sent;
    for (const auto &r : m_server->requests()) {
        if (r.path == QLatin1String("/books/v1/volumes"))
            sent << r.q();
    }
    QCOMPARE(sent, QStringList(2, "ISBN:" + typed));
}

void TestBookSearch::notFoundAfterTheDelay()
{
    TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 1.0);
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    QSignalSpy alerts(&form, &ScreenController::alert);
    QElapsedTimer clock;
    clock.start();
    form.fillFromHeldAnswer();
    QTest::qWait(900);
    QCOMPARE(alerts.size(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(alerts.size(), 1, 3000);
    QVERIFY(clock.elapsed() >= BookForm::kNotFoundDelayMs);
    QCOMPARE(alerts.first().at(0).toString(), kNotFound);
    QCOMPARE(alerts.first().at(1).toString(), kNoResults);
}

void TestBookSearch::nothingHeld_data()
{
    QTest::addColumn<QString>("isbn");
    QTest::newRow("items absent") << QStringLiteral("9780000000019");
    QTest::newRow("no pageCount") << QStringLiteral("9780000000002");
    QTest::newRow("quota 429") << QStringLiteral("9780000000033");
    QTest::newRow("not JSON") << QStringLiteral("9780000000040");
}

void TestBookSearch::nothingHeld()
{
    QFETCH(QString, isbn);
    TestApp t;
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    QSignalSpy alerts(&form, &ScreenController::alert);
    form.setProperty("ISBNTextField", isbn);
    form.ISBNDoubleTapped();
    QVERIFY(settled(form));
    form.ISBNDoubleTapped();
    QVERIFY(settled(form));
    QTRY_COMPARE(alerts.size(), 2);
    QCOMPARE(alerts.at(1).at(0).toString(), kNotFound);
    QCOMPARE(alerts.at(1).at(1).toString(), kNoResults);
    QCOMPARE(form.property("bookNameTextField").toString(), QString());
    QCOMPARE(form.dateTextField(), QStringLiteral("Nov 21, 2026"));
}

void TestBookSearch::fillKeepsFieldsTheAnswerLacks()
{
    TestApp t;
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    form.setProperty("SubTitleTextField", QStringLiteral("typed subtitle"));
    form.setProperty("publishersNameTextField", QStringLiteral("typed publisher"));
    form.setProperty("NotesTextView", QStringLiteral("typed notes"));
    form.setProperty("bookAuthorTextField", QStringLiteral("someone else"));
    BookSearchManager manager;
    searchAndWait(manager, t.app().state(), QStringLiteral("9780141036144"));
    form.fillFromHeldAnswer();
    QCOMPARE(form.property("SubTitleTextField").toString(), QStringLiteral("typed subtitle"));
    QCOMPARE(form.property("publishersNameTextField").toString(), QStringLiteral("typed publisher"));
    QCOMPARE(form.property("NotesTextView").toString(), QStringLiteral("typed notes"));
    QCOMPARE(form.property("bookAuthorTextField").toString(), QStringLiteral("George Orwell"));
    QCOMPARE(form.property("numberOfPagesTextField").toString(), QStringLiteral("336"));
}

void TestBookSearch::savedAfterFill()
{
    // The form opens on the default date; the fill shows today but ReadDate stays.
    TestApp t;
    t.app().userDefaults().setValue(SettingsKey::UseDefaultDate, true);
    t.app().userDefaults().setValue(SettingsKey::DefaultDate, QStringLiteral("Jan 1, 2020"));
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    BookSearchManager manager;
    searchAndWait(manager, t.app().state(), QStringLiteral("9780262033848"));
    form.fillFromHeldAnswer();
    QVERIFY(settled(form));
    QCOMPARE(form.dateTextField(), kToday);
    QCOMPARE(form.property("datePublishedTextField").toString(), QStringLiteral("2009-07-31"));
    QVERIFY(form.SaveNewBook());

    const Books saved = t.allBooks().value(0);
    QCOMPARE(saved.dt, kToday);
    QCOMPARE(saved.dateRead, t.app().dateText().startOfDay(2020, 1, 1));
    QCOMPARE(saved.year, qint16(2020));
    QCOMPARE(saved.month, qint16(1));
    QCOMPARE(saved.day, qint16(1));
    QCOMPARE(saved.publishDate, std::nullopt);
    QCOMPARE(saved.numberPages, qint16(1292));
    QCOMPARE(saved.author, QStringLiteral("Thomas H. Cormen, Charles E. Leiserson, Ronald L. Rivest, Clifford Stein"));
    QCOMPARE(saved.pictureImage, std::nullopt); // the cover address answered 404
}

void TestBookSearch::unwindFromScanner_data()
{
    QTest::addColumn<QString>("searched"); // empty: no answer held
    QTest::addColumn<QString>("typedTitle");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("alert");

    const QString scanned = QStringLiteral("9780141036144");
    QTest::newRow("held, no title") << scanned << QString() << "Nineteen Eighty-Four" << QString();
    QTest::newRow("held, title typed") << scanned << "Mine" << "Nineteen Eighty-Four" << QString();
    QTest::newRow("nothing, no title") << QString() << QString() << QString()
                                       << "The Scanned Barcode returned no Results for: " + scanned;
    QTest::newRow("nothing, title typed") << QString() << "Mine" << "Mine" << QString();
    QTest::newRow("no items, no title") << QStringLiteral("9780000000019") << QString() << QString()
                                        << "The Scanned Barcode returned no Results for: " + scanned;
}

void TestBookSearch::unwindFromScanner()
{
    QFETCH(QString, searched);
    QFETCH(QString, typedTitle);
    QFETCH(QString, title);
    QFETCH(QString, alert);

    TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 0.1);
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    form.setProperty("bookNameTextField", typedTitle);
    if (!searched.isEmpty()) {
        BookSearchManager manager;
        searchAndWait(manager, t.app().state(), searched);
    }
    t.app().state().setScannedISBN(QStringLiteral("9780141036144"));
    QSignalSpy alerts(&form, &ScreenController::alert);
    form.unwindFromScanner();

    QCOMPARE(form.property("ISBNTextField").toString(), QStringLiteral("9780141036144"));
    QCOMPARE(form.property("bookNameTextField").toString(), title);
    QCOMPARE(alerts.size(), 0); // 0.6 s (scaled here) after the return, if at all
    QTest::qWait(BookForm::kScannerNotFoundDelayMs / 10 + 100);
    QCOMPARE(alerts.size(), alert.isEmpty() ? 0 : 1);
    if (!alert.isEmpty()) {
        QCOMPARE(alerts.first().at(0).toString(), kNotFound);
        QCOMPARE(alerts.first().at(1).toString(), alert);
    }
}

void TestBookSearch::cliAddWithLookup()
{
    m_server->setAnswer(QStringLiteral("/covers/9780060853983.jpg"),
                        {200, encode(coverImage(QSize(128, 192)), "JPEG", 90), "image/jpeg", 0});
    QTemporaryDir dir;
    const auto run = [&](const QStringList &args) {
        const CliRun r = runCli(dir.path(), args, m_server->cliEnvironment(dir.path()));
        return std::tuple{r.status, r.out, r.err};
    };

    const auto [notFound, out1, err1] = run({"book", "add", "--isbn", "9780000000019", "--lookup", "--title", "X",
                                             "--author", "Y"});
    QCOMPARE(notFound, 1);
    QVERIFY2(err1.contains(kNotFound + ": " + kNoResults + "\n"), qPrintable(err1));

    const auto [added, out2, err2] = run({"book", "add", "--isbn", "978-0-06-085398-3", "--lookup", "--rating", "****",
                                          "--notes", "Read it twice"});
    QCOMPARE(added, 0);
    QVERIFY2(out2.startsWith("Saved \"Good Omens\""), qPrintable(out2 + err2));

    const auto [shown, out3, err3] = run({"book", "show", "--index", "0"});
    QCOMPARE(shown, 0);
    const QString today = QLocale(QLocale::English, QLocale::UnitedStates)
                              .toString(QDate::currentDate(), QStringLiteral("MMM d, yyyy"));
    QCOMPARE(out3, QStringLiteral("Book Name: Good Omens\nAuthor: Neil Gaiman, Terry Pratchett\nDate Read: %1\n"
                                  "Date Published: 2006\nSeries: N/A\nSeries #: N/A\n# Pages: 432\nRating: ****\n"
                                  "Publisher: HarperCollins\nGenre: Fiction, Fantasy\nNotes: Read it twice\n")
                       .arg(today));

    BookStore store;
    QVERIFY(store.open(QDir(dir.path()).filePath(QLatin1String(AppDelegate::kStoreFileName))));
    FetchRequest request;
    request.includesCovers = true;
    const auto books = store.fetchBooks(request);
    QVERIFY(books);
    QCOMPARE(books->size(), 1); // the failed look-up saved nothing
    QCOMPARE(books->first().isbn, QStringLiteral("978-0-06-085398-3"));
    QVERIFY(books->first().pictureImage);
    QCOMPARE(QImage::fromData(*books->first().pictureImage).size(), BookForm::kCoverSize);
}

QTEST_MAIN(TestBookSearch)
#include "tst_booksearch.moc"
