// The printed report: the books chosen by the calling screen, in the order of
// the summaries' direction, built into text and printed to a real PDF.
#include "app/mainmenuviewcontroller.h"
#include "browse/grouptableviewcontroller.h"
#include "exchange/printgroupbybooksviewcontroller.h"
#include "exchange/reportbuilder.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/poppler.h"
#include "support/testapp.h"

#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

Books shelf(TestApp &t, const QString &name, const QString &author, const QVariantMap &fields = {})
{
    Books b = book(name, author);
    b.category = QStringLiteral("Mystery");
    b.rating = QStringLiteral("****");
    b.bookFormat = QStringLiteral("Paperback");
    b.publishDate = 2001;
    for (auto it = fields.begin(); it != fields.end(); ++it)
        setAttributeValue(b, *booksAttribute(it.key()), it.value());
    return t.insert(b);
}

// The book names in the order the report's text shows them.
QStringList namesIn(const QString &text, const QStringList &names)
{
    QList<std::pair<qsizetype, QString>> found;
    for (const QString &n : names) {
        if (const qsizetype at = text.indexOf(n); at >= 0)
            found.append({at, n});
    }
    std::sort(found.begin(), found.end());
    QStringList out;
    for (const auto &f : found)
        out << f.second;
    return out;
}

std::unique_ptr<PrintGroupByBooksViewController> reportFrom(TestApp &t, const QString &callingScreen, bool ascending)
{
    t.app().state().setCallingScreen(callingScreen);
    t.app().state().setGroupSortAscending(ascending);
    auto screen = std::make_unique<PrintGroupByBooksViewController>(&t.app(), nullptr);
    screen->viewDidLoad();
    return screen;
}

} // namespace

class TestReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void order_data()
    {
        QTest::addColumn<QString>("callingScreen");
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("names");
        const QStringList genre{"A1", "A2", "B0", "B1"};
        QTest::newRow("genre by author, then title") << "GenreBreakdown" << true << "Books Filtered by Genre: Mystery" << genre;
        QTest::newRow("genre, descending") << "GenreBreakdown" << false << "Books Filtered by Genre: Mystery"
                                           << QStringList{"B1", "B0", "A2", "A1"};
        QTest::newRow("series by number") << "SeriesBreakdown" << true << "Books Filtered by Series: Saga"
                                          << QStringList{"S-one", "S-two", "S-three"};
        QTest::newRow("series, descending") << "SeriesBreakdown" << false << "Books Filtered by Series: Saga"
                                            << QStringList{"S-three", "S-two", "S-one"};
        QTest::newRow("complete list by title") << "MainMenu" << true << "Complete List of Books"
                                                << QStringList{"A1", "A2", "B0", "B1", "Other", "S-one", "S-three", "S-two"};
    }
    // The fetch order shows in the text and in the printed PDF alike.
    void order()
    {
        QFETCH(QString, callingScreen);
        QFETCH(bool, ascending);
        QFETCH(QString, title);
        QFETCH(QStringList, names);
        TestApp t;
        shelf(t, "B1", "Bob");
        shelf(t, "A2", "Amy");
        shelf(t, "A1", "Amy");
        shelf(t, "B0", "Bob");
        shelf(t, "Other", "Amy", {{"category", "Poetry"}});
        shelf(t, "S-three", "Cy", {{"category", "Saga"}, {"series", "Saga"}, {"seriesNumber", 3}});
        shelf(t, "S-one", "Cy", {{"category", "Saga"}, {"series", "Saga"}, {"seriesNumber", 1}});
        shelf(t, "S-two", "Cy", {{"category", "Saga"}, {"series", "Saga"}, {"seriesNumber", 2}});
        t.app().state().currentBook.category = QStringLiteral("Mystery");
        t.app().state().currentBook.series = QStringLiteral("Saga");

        auto screen = reportFrom(t, callingScreen, ascending);
        screen->CreateFileButtonTapped();
        QTRY_VERIFY(screen->isBuilt());
        QVERIFY(screen->createFileButtonHidden());
        const QString text = screen->plainText();
        QCOMPARE(text.section(u'\n', 0, 0), title);
        const QStringList all{"A1", "A2", "B0", "B1", "Other", "S-one", "S-two", "S-three"};
        QCOMPARE(namesIn(text, all), names);

        QTemporaryDir dir;
        const QString path = dir.filePath("report.pdf");
        screen->setPrintDialog([&](QPrinter &printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(path);
            return true;
        });
        LogCapture log;
        screen->PrintButtonTapped();
        QCOMPARE(log.lines(), QStringList{"Image is Printed"});
        QCOMPARE(namesIn(pdfText(path), all), names);
    }

    // Printed through the printer path: the text, one picture per covered
    // book, and a cancelled dialog prints nothing.
    void printed()
    {
        TestApp t;
        const Books covered = shelf(t, "Covered <b>bold</b> & co", "Amy");
        t.store().setCover(covered.pk, encode(coverImage(QSize(250, 360)), "JPEG"));
        for (int i = 0; i < 20; ++i)
            shelf(t, QStringLiteral("Plain %1").arg(i, 2, 10, QLatin1Char('0')), "Amy");
        t.app().state().currentBook.author = QStringLiteral("Amy");
        auto screen = reportFrom(t, "AuthorBreakdown", true);
        screen->buildNow();

        QTemporaryDir dir;
        const QString path = dir.filePath("report.pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        QVERIFY(screen->printTo(printer));
        const QString text = pdfText(path);
        QVERIFY2(text.contains("Books Filtered by Author: Amy"), qPrintable(text));
        QVERIFY(text.contains("Covered <b>bold</b> & co"));
        QCOMPARE(text.count("Author: Amy"), 1); // only the title names the author
        QVERIFY(pdfInfo(path).value("Pages").toInt() >= 2);
        QCOMPARE(pdfImages(path), QList<QSize>{QSize(250, 360)});

        LogCapture log;
        screen->setPrintDialog([](QPrinter &) { return false; });
        screen->PrintButtonTapped();
        QVERIFY(log.lines().isEmpty());
    }

    void emptySet()
    {
        TestApp t;
        shelf(t, "Only", "Amy");
        t.app().state().currentBook.rating = QStringLiteral("*");
        auto screen = reportFrom(t, "RatingBreakdown", true);
        screen->CreateFileButtonTapped();
        QCOMPARE(screen->alertTitle(), QStringLiteral("Empty Data Set!"));
        QCOMPARE(screen->alertMessage(), QStringLiteral("No Books to Print!"));
        QVERIFY(!screen->createFileButtonHidden());
        QVERIFY(screen->fileTextView().isEmpty());
    }

    // The menu's entry is the complete list, whatever a breakdown left behind.
    void menuGivesCompleteList()
    {
        TestApp t;
        MainMenuViewController menu(&t.app(), nullptr);
        menu.viewDidLoad();
        t.app().state().setCallingScreen(QStringLiteral("Master"));
        const auto &entries = MainMenuViewController::menuEntries();
        const auto it = std::find_if(entries.begin(), entries.end(),
                                     [](const auto &e) { return QLatin1String(e.target) == QLatin1String("PrintReport"); });
        menu.openEntry(int(it - entries.begin()));
        QCOMPARE(t.app().state().callingScreen(), QStringLiteral("MainMenu"));
    }

    void shareBehindTextGate()
    {
        TestApp t;
        shelf(t, "Only", "Amy");
        auto screen = reportFrom(t, "MainMenu", true);
        screen->buildNow();
        screen->ShareButtonTapped();
        QCOMPARE(t.platform().shares.size(), 1);
        QCOMPARE(t.platform().shares.first().text, screen->plainText());
        t.platform().textAvailable = false;
        screen->ShareButtonTapped();
        QCOMPARE(screen->alertTitle(), QStringLiteral("Can't Send Text Message"));
        QCOMPARE(t.platform().shares.size(), 1);
    }

    // The command line: a report as text, and a breakdown's PDF list.
    void commandLine()
    {
        TestApp t;
        shelf(t, "Zed", "Amy");
        shelf(t, "Ada", "Bob");
        t.app().saveContext();
        QTemporaryDir docs;
        const auto cli = [&](const QStringList &args) {
            QProcess p;
            p.start(QStringLiteral(TOMEWISE_CLI), QStringList{"--data-dir", t.dataDirectory()} + args);
            p.waitForFinished(60000);
            return QString::fromUtf8(p.readAllStandardOutput());
        };
        QCOMPARE(namesIn(cli({"report", "--desc", "--text"}), {"Ada", "Zed"}), (QStringList{"Zed", "Ada"}));
        QVERIFY(cli({"report", "author", "Bob", "--text"}).startsWith("Books Filtered by Author: Bob\n"));
        const QString out = cli({"pdf", "author", "Amy", "--documents-dir", docs.path()});
        const QString path = docs.filePath("BookListByAuthor.pdf");
        QCOMPARE(out.trimmed(), "wrote PDF file with multiple pages to: " + path);
        QVERIFY(pdfText(path).contains("Book Name: Zed"));
    }
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
