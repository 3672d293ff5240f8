// The book detail screen: showing, saving in place, the cover, sharing, returning.
#include "entry/detailviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QFile>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

Books dune()
{
    Books b = book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert"));
    const QVariantMap fields{
        {"dt", "March 4, 2021"}, // a long-style text, as the picker writes it
        {"year", 2021}, {"month", 3}, {"day", 4}, {"subTitle", "Book One"}, {"bookPublisher", "Chilton"},
        {"isbn", "9780441013593"}, {"category", "Science Fiction"}, {"rating", "*****"}, {"series", "Dune Chronicles"},
        {"seriesNumber", 1}, {"publishDate", 1965}, {"numberPages", 412}, {"bookFormat", "Paperback"},
        {"notes", "Spice must flow.\nRead in one week."}};
    for (auto it = fields.begin(); it != fields.end(); ++it)
        setAttributeValue(b, *booksAttribute(it.key()), it.value());
    return b;
}

QString golden(const char *name)
{
    QFile f(QStringLiteral(TOMEWISE_TEST_DATA "/detail/") + QLatin1String(name));
    if (!f.open(QIODevice::ReadOnly))
        qFatal("missing golden file %s", name);
    return QString::fromUtf8(f.readAll());
}

// The screen opened on a stored book as a tap in a list does it: the book's
// fields (not its format) become currentBook.
std::unique_ptr<DetailViewController> open(TestApp &t, const Books &stored)
{
    Books current = stored;
    current.bookFormat.reset();
    current.dateRead.reset();
    t.app().state().currentBook = current;
    auto detail = std::make_unique<DetailViewController>(&t.app());
    detail->viewDidLoad();
    return detail;
}

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
        const auto detail = open(t, t.insert(b));
        QCOMPARE(detail->dateTextField(), QStringLiteral("Mar 4, 2021"));
        QCOMPARE(detail->readDate(), t.app().dateText().startOfDay(2021, 3, 4).value());
        QCOMPARE(detail->property("numberOfPagesTextField").toString(), QStringLiteral("412"));
        // Not copied by the list, but the stored book has it.
        QCOMPARE(detail->property("BookFormatTextField").toString(), QStringLiteral("Paperback"));
        QCOMPARE(detail->imageView().size(), BookForm::kCoverSize);
    }

    void secondSaveFindsTheBookAgain()
    {
        TestApp t;
        const Books b = t.insert(dune());
        const auto detail = open(t, b);
        QSignalSpy notices(detail.get(), &BookForm::notice);
        detail->setProperty("bookNameTextField", QStringLiteral("  Dune Messiah "));
        detail->dateChanged(2019, 5, 6);
        QVERIFY(detail->UpdateBook());
        detail->setProperty("bookAuthorTextField", QStringLiteral("F. Herbert"));
        QVERIFY(detail->UpdateBook());

        const QList<Books> all = t.allBooks();
        QCOMPARE(all.size(), 1);
        Books expected = dune();
        expected.pk = b.pk;
        expected.name = QStringLiteral("Dune Messiah");
        expected.author = QStringLiteral("F. Herbert");
        // The date read moves the book to another year at once, its text with it.
        expected.dt = QStringLiteral("May 6, 2019");
        expected.dateRead = t.app().dateText().startOfDay(2019, 5, 6);
        expected.year = 2019;
        expected.month = 5;
        expected.day = 6;
        QCOMPARE(all.first(), expected);
        QCOMPARE(t.app().state().currentBook.name, QStringLiteral("Dune Messiah"));
        QCOMPARE(notices.size(), 2);
        QCOMPARE(notices.last().first().toString(), QStringLiteral("Saved \u201CDune Messiah\u201D"));
    }

    // One field edited, then saved: the attribute as stored afterwards
    // ("-" for absent), or the form's alert with nothing written.
    void edits_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("attribute");
        QTest::addColumn<QString>("stored");
        const QString refused = QStringLiteral("refused");
        QTest::newRow("empty title") << QByteArray("bookNameTextField") << QString() << "name" << refused;
        QTest::newRow("empty author") << QByteArray("bookAuthorTextField") << QString() << "author" << refused;
        QTest::newRow("empty date") << QByteArray("dateTextField") << QString() << "dt" << refused;
        QTest::newRow("99999 pages") << QByteArray("numberOfPagesTextField") << "99999" << "numberPages" << "412";
        QTest::newRow("40000 published") << QByteArray("datePublishedTextField") << "40000" << "publishDate" << "1965";
        QTest::newRow("pages emptied") << QByteArray("numberOfPagesTextField") << QString() << "numberPages" << "-";
        QTest::newRow("notes emptied") << QByteArray("NotesTextView") << QString() << "notes" << "-";
        QTest::newRow("series number 2b") << QByteArray("SeriesNumberTextField") << "2b" << "seriesNumber" << "2";
        QTest::newRow("series number of letters") << QByteArray("SeriesNumberTextField") << "bis" << "seriesNumber" << "1";
        // A stored date text that does not parse is shown as it is and kept so
        // ("dt" here sets the stored text, not a field).
        QTest::newRow("date not understood") << QByteArray("dt") << "4 mars 2021" << "dt" << "4 mars 2021";
    }

    void edits()
    {
        QFETCH(QByteArray, field);
        QFETCH(QString, text);
        QFETCH(QString, attribute);
        QFETCH(QString, stored);
        TestApp t;
        Books b = dune();
        if (field == "dt")
            b.dt = text;
        const auto detail = open(t, t.insert(b));
        const QList<Books> before = t.allBooks();
        if (field != "dt")
            detail->setProperty(field.constData(), text);
        const bool saved = detail->UpdateBook();
        if (stored == QLatin1String("refused")) {
            QVERIFY(!saved);
            QCOMPARE(detail->alertTitle(), QStringLiteral("Book Not Saved"));
            QCOMPARE(detail->alertMessage(), QStringLiteral("Required Fields Labeled in RED Not Entered"));
            QCOMPARE(t.allBooks(), before);
            return;
        }
        QVERIFY(saved);
        const BooksAttribute &a = *booksAttribute(attribute);
        const QVariant value = attributeValue(t.allBooks().value(0), a);
        QCOMPARE(value.isValid() ? value.toString() : QStringLiteral("-"), stored);
        if (a.type() == AttributeType::Integer) // the screen shows the number kept, not the one refused
            QCOMPARE(detail->property(field.constData()).toString(), value.toString());
        QCOMPARE(t.allBooks().value(0).day, qint16(4)); // the date is written whole or not at all
    }

    // The book was deleted or renamed elsewhere meanwhile: neither the save nor
    // a pasted cover writes anything.
    void noMatchChangesNothing_data()
    {
        QTest::addColumn<bool>("deleted");
        QTest::newRow("deleted meanwhile") << true;
        QTest::newRow("renamed meanwhile") << false;
    }

    void noMatchChangesNothing()
    {
        QFETCH(bool, deleted);
        TestApp t;
        Books b = t.insert(dune());
        const auto detail = open(t, b);
        b.name = QStringLiteral("Renamed");
        QVERIFY(deleted ? t.store().deleteBook(b.pk) : t.store().updateBook(b));
        const QList<Books> before = t.allBooks();
        detail->setProperty("bookNameTextField", QStringLiteral("Changed"));
        QVERIFY(!detail->UpdateBook());
        detail->PasteFromClipboard(); // no clipboard image: alert only
        t.platform().clipboard = coverImage();
        detail->PasteFromClipboard();
        QCOMPARE(t.allBooks(), before);
    }

    void ofTwoMatchesTheTappedOneIsSaved()
    {
        TestApp t;
        t.insert(dune());
        const Books second = t.insert(dune());
        const auto detail = open(t, second);
        detail->setProperty("RatingTextField", QStringLiteral("**"));
        QVERIFY(detail->UpdateBook());
        QStringList ratings;
        for (const Books &b : t.allBooks())
            ratings << (b.pk == second.pk ? "tapped " : "other ") + b.rating.value_or(QString());
        QCOMPARE(ratings, (QStringList{"other *****", "tapped **"}));
    }

    void coverIsSavedOnItsOwn()
    {
        TestApp t;
        const auto detail = open(t, t.insert(dune()));
        detail->setProperty("bookNameTextField", QStringLiteral("Not saved yet"));
        t.platform().clipboard = coverImage(QSize(300, 200));
        detail->PasteFromClipboard();
        Books saved = t.allBooks().value(0);
        QVERIFY(saved.pictureImage);
        QCOMPARE(QImage::fromData(*saved.pictureImage).size(), BookForm::kCoverSize);
        QCOMPARE(saved.name, QStringLiteral("Dune"));

        detail->RemoveButtonTapped();
        detail->answerAlert(0); // "Yes"
        QCOMPARE(t.allBooks().value(0).pictureImage, std::nullopt);
        QCOMPARE(t.app().state().currentBook.pictureImage, std::nullopt);
    }

    // Leaving with edits not saved asks first; a pasted cover is saved at once.
    void leaving_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("asks");
        QTest::newRow("nothing") << "" << false;
        QTest::newRow("title edited") << "title" << true;
        QTest::newRow("date picked") << "date" << true;
        QTest::newRow("edited then saved") << "saved" << false;
        QTest::newRow("cover pasted") << "cover" << false;
    }

    void leaving()
    {
        QFETCH(QString, change);
        QFETCH(bool, asks);
        TestApp t;
        t.app().state().setCallingScreen(QStringLiteral("MainMenu"));
        const auto detail = open(t, t.insert(dune()));
        if (change != QLatin1String("date") && change != QLatin1String("cover"))
            detail->setProperty("bookNameTextField", change.isEmpty() ? QStringLiteral("Dune") : QStringLiteral("Dune!"));
        if (change == QLatin1String("date"))
            detail->dateChanged(2020, 1, 1);
        if (change == QLatin1String("saved"))
            QVERIFY(detail->UpdateBook());
        if (change == QLatin1String("cover")) {
            t.platform().clipboard = coverImage();
            detail->PasteFromClipboard();
        }
        QCOMPARE(detail->hasPendingChanges(), asks);
        QSignalSpy back(detail.get(), &DetailViewController::back);
        detail->leaveScreen();
        if (asks) {
            QCOMPARE(detail->alertTitle(), QStringLiteral("Discard changes?"));
            QCOMPARE(detail->alertButtons(), (QStringList{"Yes", "No"}));
            detail->answerAlert(1);
            QCOMPARE(back.size(), 0);
            detail->leaveScreen();
            detail->answerAlert(0);
        }
        QCOMPARE(back.size(), 1);
        QCOMPARE(t.allBooks().value(0).name.value_or(QString()),
                 QLatin1String(change == QLatin1String("saved") ? "Dune!" : "Dune"));
    }

    void failedSaveKeepsTheEditsPending()
    {
        TestApp t;
        const auto detail = open(t, t.insert(dune()));
        QSqlQuery q(t.store().database());
        QVERIFY(q.exec(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON Books BEGIN SELECT RAISE(ABORT, 'busy'); END")));
        QSignalSpy notices(detail.get(), &BookForm::notice);
        detail->setProperty("bookNameTextField", QStringLiteral("Dune Messiah"));
        LogCapture log;
        QVERIFY(!detail->UpdateBook());
        QCOMPARE(log.lines("tomewise.store").size(), 1);
        QVERIFY(notices.isEmpty());
        QVERIFY(detail->hasPendingChanges());
        // The book is still found by what it was, once the store takes writes again.
        QVERIFY(q.exec(QStringLiteral("DROP TRIGGER refuse")));
        QVERIFY(detail->UpdateBook());
        QCOMPARE(t.allBooks().value(0).name, QStringLiteral("Dune Messiah"));
        QCOMPARE(notices.size(), 1);
    }

    void share_data()
    {
        QTest::addColumn<bool>("full");
        QTest::addColumn<bool>("textAvailable");
        QTest::addColumn<QString>("golden"); // empty: refused with an alert
        QTest::newRow("every field") << true << true << golden("share-full.txt");
        QTest::newRow("no fields: N/A and Notes: None") << false << true << golden("share-empty.txt");
        QTest::newRow("cannot send text") << true << false << QString();
    }

    void share()
    {
        QFETCH(bool, full);
        QFETCH(bool, textAvailable);
        QFETCH(QString, golden);
        TestApp t;
        t.platform().textAvailable = textAvailable;
        Books b = full ? dune() : Books();
        if (full)
            b.pictureImage = BookForm::coverData(coverImage());
        const auto detail = open(t, t.insert(b));
        detail->ShareButtonTapped();
        if (golden.isEmpty()) {
            QCOMPARE(detail->alertTitle(), QStringLiteral("Can't Send Text Message"));
            QCOMPARE(detail->alertMessage(), QStringLiteral("Your device is not able to send text messages."));
            QVERIFY(t.platform().shares.isEmpty());
            return;
        }
        QCOMPARE(t.platform().shares.size(), 1);
        QCOMPARE(t.platform().shares.first().text, golden);
        QCOMPARE(t.platform().shares.first().image.isNull(), !full);
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
        detail.coverDoubleTapped(); // zoomed: back to the whole cover
        QCOMPARE(detail.coverScale(), 1.0);
        QCOMPARE(detail.coverOffset(), QPointF());
        detail.ZoomButtonTapped();
        QCOMPARE(detail.coverScale(), DetailViewController::kZoomedScale);
    }
};

QTEST_MAIN(TestDetail)
#include "tst_detailviewcontroller.moc"
