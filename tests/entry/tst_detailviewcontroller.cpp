// The book detail screen: showing, saving in place, the cover, sharing, returning.
#include "entry/detailviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

Books dune()
{
    Books b = book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert"));
    b.dt = QStringLiteral("March 4, 2021"); // a long-style text, as the picker writes it
    b.subTitle = QStringLiteral("Book One");
    b.bookPublisher = QStringLiteral("Chilton");
    b.isbn = QStringLiteral("9780441013593");
    b.category = QStringLiteral("Science Fiction");
    b.rating = QStringLiteral("*****");
    b.series = QStringLiteral("Dune Chronicles");
    b.seriesNumber = 1;
    b.publishDate = 1965;
    b.numberPages = 412;
    b.bookFormat = QStringLiteral("Paperback");
    b.notes = QStringLiteral("Spice must flow.\nRead in one week.");
    return b;
}

QString golden(const char *name)
{
    QFile f(QStringLiteral(TOMEWISE_TEST_DATA "/detail/") + QLatin1String(name));
    if (!f.open(QIODevice::ReadOnly))
        qFatal("missing golden file %s", name);
    return QString::fromUtf8(f.readAll());
}

// A tap in a list: the book's fields (not its format) become currentBook.
void select(TestApp &t, const Books &b)
{
    Books current = b;
    current.bookFormat.reset();
    current.dateRead.reset();
    t.app().state().currentBook = current;
}

struct CountingReview : ReviewRequester
{
    int *count;
    explicit CountingReview(int *c) : count(c) {}
    void requestReview() override { ++*count; }
};

} // namespace

class TestDetail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheBookWithItsDateInMediumStyle()
    {
        TestApp t;
        Books b = dune();
        b.pictureImage = BookForm::coverData(coverImage());
        b = t.insert(b);
        select(t, b);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        QCOMPARE(detail.dateTextField(), QStringLiteral("Mar 4, 2021"));
        QCOMPARE(detail.readDate(), t.app().dateText().startOfDay(2021, 3, 4).value());
        QCOMPARE(detail.property("bookNameTextField").toString(), QStringLiteral("Dune"));
        QCOMPARE(detail.property("SubTitleTextField").toString(), QStringLiteral("Book One"));
        QCOMPARE(detail.property("datePublishedTextField").toString(), QStringLiteral("1965"));
        QCOMPARE(detail.property("numberOfPagesTextField").toString(), QStringLiteral("412"));
        QCOMPARE(detail.property("SeriesNumberTextField").toString(), QStringLiteral("1"));
        // Not copied by the list, but the stored book has it.
        QCOMPARE(detail.property("BookFormatTextField").toString(), QStringLiteral("Paperback"));
        QCOMPARE(detail.imageView().size(), BookForm::kCoverSize);
    }

    void secondSaveFindsTheBookAgain()
    {
        TestApp t;
        const Books b = t.insert(dune());
        select(t, b);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.setProperty("bookNameTextField", QStringLiteral("  Dune Messiah "));
        detail.dateChanged(2019, 5, 6);
        QVERIFY(detail.UpdateBook());
        detail.setProperty("bookAuthorTextField", QStringLiteral("F. Herbert"));
        QVERIFY(detail.UpdateBook());

        const QList<Books> all = t.allBooks();
        QCOMPARE(all.size(), 1);
        const Books &saved = all.first();
        QCOMPARE(saved.pk, b.pk);
        QCOMPARE(saved.name, QStringLiteral("Dune Messiah"));
        QCOMPARE(saved.author, QStringLiteral("F. Herbert"));
        // The date read moves the book to another year at once, its text with it.
        QCOMPARE(saved.dt, QStringLiteral("May 6, 2019"));
        QCOMPARE(saved.year, qint16(2019));
        QCOMPARE(saved.month, qint16(5));
        QCOMPARE(saved.day, qint16(6));
        QCOMPARE(saved.bookFormat, QStringLiteral("Paperback"));
        QCOMPARE(saved.notes, dune().notes);
        QCOMPARE(t.app().state().currentBook.name, QStringLiteral("Dune Messiah"));
    }

    void emptiedFieldsAndUnparsableNumbersAreUnset()
    {
        TestApp t;
        select(t, t.insert(dune()));
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.setProperty("SubTitleTextField", QString());
        detail.setProperty("NotesTextView", QString());
        detail.setProperty("datePublishedTextField", QStringLiteral("1965-06-01"));
        detail.setProperty("SeriesNumberTextField", QStringLiteral("2b"));
        QVERIFY(detail.UpdateBook());
        const Books saved = t.allBooks().value(0);
        QCOMPARE(saved.subTitle, std::nullopt);
        QCOMPARE(saved.notes, std::nullopt);
        QCOMPARE(saved.publishDate, std::nullopt);
        QCOMPARE(saved.seriesNumber, qint16(2));
        QCOMPARE(saved.rating, QStringLiteral("*****"));
    }

    void noMatchChangesNothing_data()
    {
        QTest::addColumn<bool>("deleted"); // else renamed elsewhere meanwhile
        QTest::newRow("deleted meanwhile") << true;
        QTest::newRow("renamed meanwhile") << false;
    }

    void noMatchChangesNothing()
    {
        QFETCH(bool, deleted);
        TestApp t;
        Books b = t.insert(dune());
        select(t, b);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        if (deleted) {
            QVERIFY(t.store().deleteBook(b.pk));
        } else {
            b.name = QStringLiteral("Renamed");
            QVERIFY(t.store().updateBook(b));
        }
        const QList<Books> before = t.allBooks();
        detail.setProperty("bookNameTextField", QStringLiteral("Changed"));
        QVERIFY(!detail.UpdateBook());
        detail.PasteFromClipboard(); // no clipboard image: alert only
        t.platform().clipboard = coverImage();
        detail.PasteFromClipboard();
        QCOMPARE(t.allBooks(), before);
    }

    void ofTwoMatchesTheTappedOneIsSaved()
    {
        TestApp t;
        const Books first = t.insert(dune());
        const Books second = t.insert(dune());
        select(t, second);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.setProperty("RatingTextField", QStringLiteral("**"));
        QVERIFY(detail.UpdateBook());
        const QList<Books> all = t.allBooks();
        for (const Books &b : all)
            QCOMPARE(b.rating, b.pk == second.pk ? QStringLiteral("**") : QStringLiteral("*****"));
        QCOMPARE(all.size(), 2);
        QVERIFY(first.pk != second.pk);
    }

    void coverIsSavedOnItsOwn()
    {
        TestApp t;
        select(t, t.insert(dune()));
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.setProperty("bookNameTextField", QStringLiteral("Not saved yet"));
        t.platform().clipboard = coverImage(QSize(300, 200));
        detail.PasteFromClipboard();
        Books saved = t.allBooks().value(0);
        QVERIFY(saved.pictureImage);
        QCOMPARE(QImage::fromData(*saved.pictureImage).size(), BookForm::kCoverSize);
        QCOMPARE(saved.name, QStringLiteral("Dune"));

        detail.RemoveButtonTapped();
        detail.answerAlert(0); // "Yes"
        saved = t.allBooks().value(0);
        QCOMPARE(saved.pictureImage, std::nullopt);
        QCOMPARE(t.app().state().currentBook.pictureImage, std::nullopt);
    }

    void shareText_data()
    {
        QTest::addColumn<bool>("full");
        QTest::addColumn<QString>("golden");
        QTest::newRow("every field") << true << golden("share-full.txt");
        QTest::newRow("no fields: N/A and Notes: None") << false << golden("share-empty.txt");
    }

    void shareText()
    {
        QFETCH(bool, full);
        QFETCH(QString, golden);
        TestApp t;
        Books b = full ? dune() : Books();
        if (full)
            b.pictureImage = BookForm::coverData(coverImage());
        select(t, t.insert(b));
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.ShareButtonTapped();
        QCOMPARE(t.platform().shares.size(), 1);
        QCOMPARE(t.platform().shares.first().text, golden);
        QCOMPARE(t.platform().shares.first().image.isNull(), !full);
    }

    void cannotSendText()
    {
        TestApp t;
        t.platform().textAvailable = false;
        select(t, t.insert(dune()));
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.ShareButtonTapped();
        QCOMPARE(detail.alertTitle(), QStringLiteral("Can't Send Text Message"));
        QCOMPARE(detail.alertMessage(), QStringLiteral("Your device is not able to send text messages."));
        QVERIFY(t.platform().shares.isEmpty());
    }

    void returning_data()
    {
        QTest::addColumn<QString>("callingScreen");
        QTest::addColumn<bool>("unwinds");
        for (const char *caller : {"Master", "AuthorBreakdown", "GenreBreakdown", "YearBreakdown", "RatingBreakdown",
                                   "SeriesBreakdown", "FormatBreakdown"})
            QTest::newRow(caller) << QString::fromLatin1(caller) << true;
        QTest::newRow("MainMenu") << QStringLiteral("MainMenu") << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("case differs") << QStringLiteral("master") << false;
    }

    void returning()
    {
        QFETCH(QString, callingScreen);
        QFETCH(bool, unwinds);
        TestApp t;
        t.app().state().setCallingScreen(callingScreen);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        QSignalSpy unwound(&detail, &ScreenController::unwind);
        QCOMPARE(detail.BackButtonTapped(), unwinds);
        QCOMPARE(unwound.size(), unwinds ? 1 : 0);
        if (unwinds)
            QCOMPARE(unwound.first().first().toString(), QStringLiteral("unwindToList"));
    }

    void coverGestures()
    {
        TestApp t;
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.pinchedView(1.5);
        detail.pannedView(10, -4);
        detail.pannedView(5, 2);
        QCOMPARE(detail.coverOffset(), QPointF(15, -2));
        QVERIFY(detail.zoomed());
        detail.coverDoubleTapped(); // zoomed: back to the whole cover
        QCOMPARE(detail.coverScale(), 1.0);
        QCOMPARE(detail.coverOffset(), QPointF());
        detail.ZoomButtonTapped();
        QCOMPARE(detail.coverScale(), DetailViewController::kZoomedScale);
        detail.ZoomButtonTapped();
        QCOMPARE(detail.coverScale(), 1.0);
    }

    void reviewIsAskedFiveSecondsAfterLoad()
    {
        TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 0.02); // 5 s -> 100 ms
        int requests = 0;
        t.app().setReviewService(std::make_unique<CountingReview>(&requests));
        {
            DetailViewController gone(&t.app());
            gone.viewDidLoad();
        }
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        QTest::qWait(50);
        QCOMPARE(requests, 0);
        QTRY_COMPARE(requests, 1); // the screen that went asks nothing
        QTest::qWait(150);
        QCOMPARE(requests, 1);
    }

    void withoutReviewServiceNothingHappens()
    {
        TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 0.01);
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        QTest::qWait(100);
        QCOMPARE(t.platform().reviewRequests, 0);
    }

    void emptyIsbnOnTheDetailScreen()
    {
        TestApp t;
        select(t, t.insert(book(QStringLiteral("No ISBN"), QStringLiteral("A"))));
        DetailViewController detail(&t.app());
        detail.viewDidLoad();
        detail.ISBNDoubleTapped();
        QCOMPARE(detail.alertTitle(), QStringLiteral("ISBN Field Empty"));
        QCOMPARE(detail.alertMessage(), QStringLiteral("There is no isbn number entered"));
    }
};

QTEST_MAIN(TestDetail)
#include "tst_detailviewcontroller.moc"
