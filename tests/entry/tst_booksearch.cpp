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
using Answer = BooksApiServer::Answer;
using Stream = Answer::Stream;

Q_DECLARE_METATYPE(BooksApiServer::Answer)

namespace {

const QString kToday = QStringLiteral("Nov 21, 2026");
const QString kSucceeded200 = QStringLiteral("URL Session Task Succeeded: HTTP 200");
const QString kNotFound = QStringLiteral("Book Not Found");
const QString kNoResults = QStringLiteral("The Scanned Barcode returned no Results");
const QString kGoodOmens = QStringLiteral("9780060853983");

QString missing(const QString &path)
{
    return QStringLiteral("The answer could not be read because a required key is missing. (key: %1)").arg(path);
}

QString wrongType(const char *what, const QString &path)
{
    return QStringLiteral("The answer could not be read because a value has the wrong type: %1. (key: %2)")
        .arg(QLatin1String(what), path);
}

// A volumes answer with one item holding the required keys; `key` is left out
// (value empty) or given `value` instead, and `extra` is added.
QByteArray oneItem(const QByteArray &key = {}, const QByteArray &value = {}, const QByteArray &extra = {})
{
    const std::pair<QByteArray, QByteArray> required[] = {
        {"title", "\"T\""}, {"authors", "[\"A\"]"}, {"publishedDate", "\"2001\""}, {"pageCount", "10"}};
    QByteArrayList parts;
    for (const auto &[k, v] : required) {
        if (k != key || !value.isEmpty())
            parts << "\"" + k + "\": " + (k == key ? value : v);
    }
    if (!extra.isEmpty())
        parts << extra;
    return R"({"items": [{"id": "x1", "volumeInfo": {)" + parts.join(", ") + "}}]}";
}

// One value of the wrong type: a required key's (`key`, `value`) or an optional one (`extra`).
struct WrongType
{
    const char *tag, *key, *value, *extra, *what, *path;
};

// A port on which nobody listens.
quint16 closedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

// One search as the form runs it: the completion hands the items to the held answer.
bool searchAndWait(BookSearchManager &manager, AppState &state, const QString &isbn)
{
    bool completed = false;
    bool finished = false;
    QObject::connect(&manager, &BookSearchManager::finished, &manager, [&finished] { finished = true; });
    manager.search(isbn, [&](const std::optional<QList<BookItem>> &items) {
        completed = true;
        state.setScannedBookItems(items);
    });
    if (!QTest::qWaitFor([&finished] { return finished; }, 10000))
        qWarning("search of %s did not finish", qPrintable(isbn));
    manager.disconnect();
    return completed;
}

// The form's queries and downloads have all ended.
bool settled(BookForm &form)
{
    return QTest::qWaitFor([&form] { return form.searchManager().pendingCount() == 0; }, 10000);
}

// Every request in these tests gives up after 1.5 s, however it trickles.
BookSearchManager::Limits shortDeadline(int timeoutMs = BookSearchManager::kTimeoutMs)
{
    BookSearchManager::Limits limits;
    limits.timeoutMs = timeoutMs;
    limits.deadlineMs = 1500;
    return limits;
}

Answer streamed(Stream stream, qint64 declaredLength = -1)
{
    Answer answer{200, {}, "image/jpeg", 0};
    answer.stream = stream;
    answer.declaredLength = declaredLength;
    return answer;
}

// What the form shows for the fixture with a subtitle, two authors, categories and a cover.
Fields goodOmensFields(const QString &today)
{
    return {{"dateTextField", today},
            {"bookNameTextField", "Good Omens"},
            {"SubTitleTextField", "The Nice and Accurate Prophecies of Agnes Nutter, Witch"},
            {"datePublishedTextField", "2006"},
            {"numberOfPagesTextField", "432"},
            {"bookAuthorTextField", "Neil Gaiman, Terry Pratchett"},
            {"publishersNameTextField", "HarperCollins"},
            {"bookCategoryTextField", "Fiction, Fantasy"},
            {"NotesTextView", "The world ends on a Saturday.\nNext Saturday, in fact."},
            {"imageView", "{{server}}/covers/9780060853983.jpg"}};
}

} // namespace

class TestBookSearch : public QObject
{
    Q_OBJECT

    std::unique_ptr<BooksApiServer> m_server;

    QString withServer(QString text) const
    {
        return text.replace(QLatin1String("{{server}}"), m_server->baseAddress().toString());
    }
    void serveCover()
    {
        m_server->setAnswer("/covers/" + kGoodOmens + ".jpg",
                            {200, encode(coverImage(QSize(128, 192)), "JPEG", 90), "image/jpeg", 0});
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<BooksApiServer>();
        qputenv("TOMEWISE_BOOKS_API", m_server->volumesAddress().toEncoded());
    }

    void decode_data();
    void decode()
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

    // One search: the log it leaves, whether it completed, the items held.
    void answers_data()
    {
        QTest::addColumn<QString>("isbn");
        QTest::addColumn<Answer>("answer"); // for every query; status 0: the fixtures
        QTest::addColumn<int>("timeoutMs"); // -1: nobody listens
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<bool>("completed");
        QTest::addColumn<int>("itemCount"); // -1: nothing held

        const Answer fixtures{0, {}, {}, 0};
        const int minute = BookSearchManager::kTimeoutMs;
        QTest::newRow("two items") << kGoodOmens << fixtures << minute << QStringList{kSucceeded200} << true << 2;
        QTest::newRow("items absent") << QStringLiteral("9780000000019") << fixtures << minute << QStringList{kSucceeded200}
                                      << true << -1;
        QTest::newRow("no pageCount") << QStringLiteral("9780000000002") << fixtures << minute
                                      << QStringList{kSucceeded200, missing("items[0].volumeInfo.pageCount")} << false << -1;
        // The service's error answer is an object without items: it decodes, and holds nothing.
        QTest::newRow("quota 429") << QStringLiteral("9780000000033") << fixtures << minute
                                   << QStringList{QStringLiteral("URL Session Task Succeeded: HTTP 429")} << true << -1;
        QTest::newRow("html page") << QStringLiteral("9780000000040") << fixtures << minute
                                   << QStringList{kSucceeded200, QStringLiteral("The answer could not be read because it is "
                                                                                "not valid JSON: illegal value at offset 1.")}
                                   << false << -1;
        QTest::newRow("empty body") << QStringLiteral("9780000000064") << fixtures << minute << QStringList{kSucceeded200}
                                    << false << -1;

        // The fixture for this one answers after 3 s; every request gives up after 1.5 s.
        const QString slow = QStringLiteral("9780000000057");
        const QString failed = QStringLiteral("URL Session Task Failed: ");
        const QStringList tooLarge{failed + QStringLiteral("The answer is larger than 5 MB.")};
        QTest::newRow("connection refused") << slow << fixtures << -1 << QStringList{failed + "Connection refused"} << false
                                            << -1;
        QTest::newRow("silent server") << slow << fixtures << 300 << QStringList{failed + "Operation canceled"} << false << -1;
        QTest::newRow("endless answer") << slow << streamed(Stream::Endless) << minute << tooLarge << false << -1;
        QTest::newRow("declared too long") << slow << streamed(Stream::Endless, 6 << 20) << minute << tooLarge << false << -1;
        QTest::newRow("dripping answer") << slow << streamed(Stream::Drip) << 1000
                                         << QStringList{failed + "The answer took longer than 1.5 seconds."} << false << -1;
    }

    void answers()
    {
        QFETCH(QString, isbn);
        QFETCH(Answer, answer);
        QFETCH(int, timeoutMs);
        QFETCH(QStringList, log);
        QFETCH(bool, completed);
        QFETCH(int, itemCount);

        if (timeoutMs < 0)
            qputenv("TOMEWISE_BOOKS_API", "http://127.0.0.1:" + QByteArray::number(closedPort()) + "/books/v1/volumes");
        m_server->setDelay(QStringLiteral("9780000000057"), 3000);
        if (answer.status)
            m_server->setAnswer(QStringLiteral("/books/v1/volumes"), answer);
        TestApp t;
        LogCapture capture;
        BookSearchManager manager;
        manager.setLimits(shortDeadline(timeoutMs < 0 ? BookSearchManager::kTimeoutMs : timeoutMs));
        QCOMPARE(searchAndWait(manager, t.app().state(), isbn), completed);
        QCOMPARE(capture.lines("tomewise.entry"), log);
        const auto &held = t.app().state().scannedBookItems();
        QCOMPARE(held ? int(held->size()) : -1, itemCount);
        QCOMPARE(BookFill::from(held, kToday).has_value(), itemCount > 0);
    }

    void fill_data()
    {
        QTest::addColumn<QString>("isbn");
        QTest::addColumn<Fields>("fields");

        QTest::newRow("subtitle, two authors, categories, cover") << kGoodOmens << goodOmensFields(kToday);
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
        QTest::newRow("required keys only") << QStringLiteral("9780141036144")
                                            << Fields{{"dateTextField", kToday},
                                                      {"bookNameTextField", "Nineteen Eighty-Four"},
                                                      {"datePublishedTextField", "2008"},
                                                      {"numberOfPagesTextField", "336"},
                                                      {"bookAuthorTextField", "George Orwell"}};
    }

    void fill()
    {
        QFETCH(QString, isbn);
        QFETCH(Fields, fields);

        TestApp t;
        BookSearchManager manager;
        QVERIFY(searchAndWait(manager, t.app().state(), isbn));
        const auto filled = BookFill::from(t.app().state().scannedBookItems(), kToday);
        QVERIFY(filled);
        for (auto &field : fields)
            field.second = withServer(field.second);
        QCOMPARE(filled->fields(), fields);
    }

    void queryAsTyped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("apiKey"); // sent only when set
        QTest::newRow("hyphens") << QStringLiteral("978-0-14-103614-4") << QString();
        QTest::newRow("untrimmed") << QStringLiteral("  9780141036144 ") << QString();
        QTest::newRow("query delimiters") << QStringLiteral("978+0&key=1#x%20/?") << QString();
        QTest::newRow("QR text") << QStringLiteral("Ünïcode, \"quoted\"") << QString();
        QTest::newRow("with API key") << QStringLiteral("9780141036144") << QStringLiteral("AIza-test+key");
    }

    void queryAsTyped()
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

    void coverDownload_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<QString>("log"); // empty: the picture is shown

        const QByteArray jpeg = encode(coverImage(QSize(128, 192)), "JPEG", 90);
        const QString improper = QStringLiteral("Not a proper HTTPURLResponse of statusCode");
        const QString failed = QStringLiteral("Failed fetching image: ");
        const QString tooLarge = failed + QStringLiteral("The answer is larger than 10 MB.");
        QTest::newRow("200 with picture") << Answer{200, jpeg, "image/jpeg", 0} << false << QString();
        QTest::newRow("404") << Answer{404, jpeg, "image/jpeg", 0} << false << improper;
        QTest::newRow("200 without data") << Answer{200, {}, "image/jpeg", 0} << false << improper;
        QTest::newRow("connection refused") << Answer{200, jpeg, "image/jpeg", 0} << true << failed + "Connection refused";
        QTest::newRow("not a picture") << Answer{200, "%PDF-1.4\n%%EOF\n", "image/jpeg", 0} << false
                                       << CoverImage::notAPicture();
        QTest::newRow("endless") << streamed(Stream::Endless) << false << tooLarge;
        QTest::newRow("declared too long") << streamed(Stream::Endless, 11 << 20) << false << tooLarge;
        QTest::newRow("dripping") << streamed(Stream::Drip) << false
                                  << failed + "The answer took longer than 1.5 seconds.";
    }

    void coverDownload()
    {
        QFETCH(Answer, answer);
        QFETCH(bool, closed);
        QFETCH(QString, log);

        const QString path = "/covers/" + kGoodOmens + ".jpg";
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

        QCOMPARE(capture.lines("tomewise.entry"), log.isEmpty() ? QStringList() : QStringList{log});
        QCOMPARE(shown.has_value(), log.isEmpty());
        if (shown)
            QCOMPARE(shown->size(), QSize(128, 192));
    }

    void cliLookup_data()
    {
        QTest::addColumn<QString>("isbn");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("out");
        QTest::addColumn<QStringList>("err");

        const QString today = QLocale(QLocale::English, QLocale::UnitedStates)
                                  .toString(QDate::currentDate(), QStringLiteral("MMM d, yyyy"));
        QStringList found;
        for (const auto &[name, value] : goodOmensFields(today))
            found << name + ": " + QString(value).replace(u'\n', QLatin1String("\\n"));
        QTest::newRow("found") << QStringLiteral("978-0-06-085398-3") << 0 << found << QStringList{kSucceeded200};
        QTest::newRow("no pageCount") << QStringLiteral("9780000000002") << 1 << QStringList()
                                      << QStringList{kSucceeded200, missing("items[0].volumeInfo.pageCount"),
                                                     kNotFound + ": " + kNoResults};
    }

    void cliLookup()
    {
        QFETCH(QString, isbn);
        QFETCH(int, status);
        QFETCH(QStringList, out);
        QFETCH(QStringList, err);

        QTemporaryDir dir;
        const CliRun run = runCli(dir.path(), {QStringLiteral("lookup"), isbn}, m_server->cliEnvironment(dir.path()));
        QCOMPARE(run.status, status);
        for (auto &line : out)
            line = withServer(line);
        QCOMPARE(run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts), out);
        QCOMPARE(run.err.split(QLatin1Char('\n'), Qt::SkipEmptyParts), err);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->requests().first().q(), "ISBN:" + isbn);
    }

    // The form's search: double tap, fill step, return from the scanner.
    void emptyIsbnFieldAlerts()
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

    void firstDoubleTapFillsFromTheOldAnswer()
    {
        serveCover();
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

    void notFoundAfterTheDelay()
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
        QCOMPARE(alerts.first().mid(0, 2), (QVariantList{kNotFound, kNoResults}));
    }

    // The fill keeps what the answer lacks and shows today; the save keeps the
    // default read date the form opened on.
    void fillThenSave()
    {
        TestApp t;
        t.app().userDefaults().setValue(SettingsKey::UseDefaultDate, true);
        t.app().userDefaults().setValue(SettingsKey::DefaultDate, QStringLiteral("Jan 1, 2020"));
        NewBookViewController form(&t.app());
        form.viewDidLoad();
        form.setProperty("SubTitleTextField", QStringLiteral("typed subtitle"));
        form.setProperty("bookAuthorTextField", QStringLiteral("someone else"));
        BookSearchManager manager;
        searchAndWait(manager, t.app().state(), QStringLiteral("9780262033848"));
        form.fillFromHeldAnswer();
        QVERIFY(settled(form));
        QCOMPARE(form.property("SubTitleTextField").toString(), QStringLiteral("typed subtitle"));
        QCOMPARE(form.dateTextField(), kToday);
        QCOMPARE(form.property("datePublishedTextField").toString(), QStringLiteral("2009-07-31"));
        QVERIFY(form.SaveNewBook());

        const Books saved = t.allBooks().value(0);
        QCOMPARE(saved.dt, kToday);
        QCOMPARE(saved.dateRead, t.app().dateText().startOfDay(2020, 1, 1));
        QCOMPARE((QList<std::optional<qint16>>{saved.year, saved.month, saved.day, saved.publishDate, saved.numberPages}),
                 (QList<std::optional<qint16>>{2020, 1, 1, std::nullopt, 1292}));
        QCOMPARE(saved.author, QStringLiteral("Thomas H. Cormen, Charles E. Leiserson, Ronald L. Rivest, Clifford Stein"));
        QCOMPARE(saved.pictureImage, std::nullopt); // the cover address answered 404
    }

    void unwindFromScanner_data()
    {
        QTest::addColumn<QString>("searched"); // empty: no answer held
        QTest::addColumn<QString>("typedTitle");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("alert");

        const QString scanned = QStringLiteral("9780141036144");
        const QString noResults = kNoResults + " for: " + scanned;
        QTest::newRow("held, no title") << scanned << QString() << "Nineteen Eighty-Four" << QString();
        QTest::newRow("held, title typed") << scanned << "Mine" << "Nineteen Eighty-Four" << QString();
        QTest::newRow("nothing, no title") << QString() << QString() << QString() << noResults;
        QTest::newRow("nothing, title typed") << QString() << "Mine" << "Mine" << QString();
        QTest::newRow("no items, no title") << QStringLiteral("9780000000019") << QString() << QString() << noResults;
    }

    void unwindFromScanner()
    {
        QFETCH(QString, searched);
        QFETCH(QString, typedTitle);
        QFETCH(QString, title);
        QFETCH(QString, alert);

        TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 0.1);
        NewBookViewController form(&t.app());
        form.viewDidLoad();
        form.setProperty("bookNameTextField", typedTitle);
        BookSearchManager manager;
        if (!searched.isEmpty())
            searchAndWait(manager, t.app().state(), searched);
        t.app().state().setScannedISBN(QStringLiteral("9780141036144"));
        QSignalSpy alerts(&form, &ScreenController::alert);
        form.unwindFromScanner();

        QCOMPARE(form.property("ISBNTextField").toString(), QStringLiteral("9780141036144"));
        QCOMPARE(form.property("bookNameTextField").toString(), title);
        QCOMPARE(alerts.size(), 0); // 0.6 s (scaled here) after the return, if at all
        QTest::qWait(BookForm::kScannerNotFoundDelayMs / 10 + 100);
        QCOMPARE(alerts.size(), alert.isEmpty() ? 0 : 1);
        if (!alert.isEmpty())
            QCOMPARE(alerts.first().mid(0, 2), (QVariantList{kNotFound, alert}));
    }

    void cliAddWithLookup()
    {
        serveCover();
        QTemporaryDir dir;
        const auto run = [&](const QStringList &args) { return runCli(dir.path(), args, m_server->cliEnvironment(dir.path())); };

        const CliRun notFound = run({"book", "add", "--isbn", "9780000000019", "--lookup", "--title", "X", "--author", "Y"});
        QCOMPARE(notFound.status, 1);
        QVERIFY2(notFound.err.contains(kNotFound + ": " + kNoResults + "\n"), qPrintable(notFound.err));

        const CliRun added = run({"book", "add", "--isbn", "978-0-06-085398-3", "--lookup", "--rating", "****", "--notes",
                                  "Read it twice"});
        QCOMPARE(added.status, 0);
        QVERIFY2(added.out.startsWith("Saved \"Good Omens\""), qPrintable(added.out + added.err));

        BookStore store;
        QVERIFY(store.open(QDir(dir.path()).filePath(QLatin1String(AppDelegate::kStoreFileName))));
        FetchRequest request;
        request.includesCovers = true;
        const auto books = store.fetchBooks(request);
        QVERIFY(books);
        QCOMPARE(books->size(), 1); // the failed look-up saved nothing
        const Books &b = books->first();
        QCOMPARE((QList<std::optional<QString>>{b.name, b.author, b.isbn, b.rating, b.notes, b.bookPublisher}),
                 (QList<std::optional<QString>>{"Good Omens", "Neil Gaiman, Terry Pratchett", "978-0-06-085398-3", "****",
                                                "Read it twice", "HarperCollins"}));
        QCOMPARE(b.numberPages, qint16(432));
        QVERIFY(b.pictureImage);
        QCOMPARE(QImage::fromData(*b.pictureImage).size(), BookForm::kCoverSize);
    }
};

void TestBookSearch::decode_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("itemCount"); // -1: no items key

    QTest::newRow("items absent") << QByteArray(R"({"kind": "books#volumes", "totalItems": 0})") << QString() << -1;
    QTest::newRow("items null") << QByteArray(R"({"items": null})") << QString() << -1;
    QTest::newRow("items empty") << QByteArray(R"({"items": []})") << QString() << 0;
    QTest::newRow("required only") << oneItem() << QString() << 1;
    QTest::newRow("extra keys ignored") << oneItem({}, {}, R"("ratingsCount": 3, "panelization": {"x": [1]})")
                                        << QString() << 1;
    QTest::newRow("optional null") << oneItem({}, {}, R"("subtitle": null, "imageLinks": null)") << QString() << 1;
    QTest::newRow("whole-number double")
        << QByteArray(R"({"items": [{"id": "x1", "volumeInfo": {"title": "T", "authors": [], "publishedDate": "", )"
                      R"("pageCount": 320.0}}]})")
        << QString() << 1;

    QTest::newRow("no id") << QByteArray(R"({"items": [{"volumeInfo": {}}]})") << missing("items[0].id") << -1;
    QTest::newRow("no volumeInfo") << QByteArray(R"({"items": [{"id": "x"}]})") << missing("items[0].volumeInfo") << -1;
    for (const char *key : {"title", "authors", "publishedDate", "pageCount"})
        QTest::addRow("no %s", key) << oneItem(key) << missing("items[0].volumeInfo." + QLatin1String(key)) << -1;

    const WrongType wrong[] = {
        {"pageCount text", "pageCount", "\"10\"", "", "expected an integer, found a string", "pageCount"},
        {"pageCount fraction", "pageCount", "10.5", "", "expected an integer, found the number 10.5", "pageCount"},
        {"title null", "title", "null", "", "expected a string, found null", "title"},
        {"authors text", "authors", "\"A\"", "", "expected an array of strings, found a string", "authors"},
        {"author number", "authors", "[\"A\", 7]", "", "expected a string, found a number", "authors[1]"},
        {"subtitle number", "", "", "\"subtitle\": 2", "expected a string, found a number", "subtitle"},
        {"categories text", "", "", "\"categories\": \"Fiction\"", "expected an array of strings, found a string",
         "categories"},
        {"imageLinks text", "", "", "\"imageLinks\": \"http://x\"", "expected an object, found a string", "imageLinks"},
        {"thumbnail number", "", "", "\"imageLinks\": {\"thumbnail\": 1}", "expected a string, found a number",
         "imageLinks.thumbnail"},
    };
    for (const auto &w : wrong) {
        QTest::newRow(w.tag) << oneItem(w.key, w.value, w.extra)
                             << wrongType(w.what, "items[0].volumeInfo." + QLatin1String(w.path)) << -1;
    }
    QTest::newRow("second item broken")
        << QByteArray(R"({"items": [{"id": "a", "volumeInfo": {"title": "T", "authors": [], "publishedDate": "", )"
                      R"("pageCount": 1}}, {"id": "b", "volumeInfo": {"authors": [], "publishedDate": "", "pageCount": 1}}]})")
        << missing("items[1].volumeInfo.title") << -1;
    QTest::newRow("items object") << QByteArray(R"({"items": {}})") << wrongType("expected an array, found an object", "items")
                                  << -1;
    QTest::newRow("top-level array") << QByteArray("[]") << wrongType("expected an object, found an array", "(top level)")
                                     << -1;
}

QTEST_MAIN(TestBookSearch)
#include "tst_booksearch.moc"
