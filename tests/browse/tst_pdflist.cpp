// The PDF list of books: read back from real files with poppler's tools.
#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/grouptableviewcontroller.h"
#include "browse/pagedpainter.h"
#include "browse/pdflistbuilder.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/poppler.h"
#include "support/testapp.h"

#include <QDir>
#include <QPageLayout>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>

using namespace tomewise;
using namespace tomewise::test;

Q_DECLARE_METATYPE(tomewise::GroupKind)

namespace {

Books shelf(TestApp &t, const QString &name, const QVariantMap &fields, const QByteArray &cover = {})
{
    Books b = book(name, QStringLiteral("Anne"));
    b.category = QStringLiteral("Mystery");
    b.rating = QStringLiteral("***");
    b.bookFormat = QStringLiteral("Kindle");
    b.publishDate = 1999;
    b.dateRead = t.app().dateText().startOfDay(2021, 3, 4);
    b.dt = t.app().dateText().format(*b.dateRead, DateText::Style::Medium);
    b.year = 2021;
    for (auto it = fields.begin(); it != fields.end(); ++it)
        setAttributeValue(b, *booksAttribute(it.key()), it.value());
    b = t.insert(b);
    if (!cover.isEmpty())
        t.store().setCover(b.pk, cover);
    return b;
}

std::unique_ptr<GroupBreakdownTableViewController> breakdownOf(TestApp &t, GroupKind kind, const QString &value)
{
    GroupTableViewController summary(kind, &t.app(), nullptr);
    summary.viewDidLoad();
    summary.selectValue(value);
    auto b = std::make_unique<GroupBreakdownTableViewController>(kind, &t.app(), nullptr);
    b->viewDidLoad();
    b->viewWillAppear();
    return b;
}

const QSize kPlaceholder(240, 360);
const QSize kCover(250, 360);
const QSize kScaledCover(130, 187); // twice the 65 points a cover is drawn

QImage solid(QSize size, QColor colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(colour);
    return image;
}

// Pixels of `colour` below the text of the first page, rendered at 36 dpi;
// -1 when the reader had to repair the file.
int renderedPixels(const QString &pdf, QColor colour)
{
    QTemporaryDir dir;
    const QString png = dir.filePath("page");
    QProcess render;
    render.start("pdftoppm", {"-r", "36", "-singlefile", "-png", pdf, png});
    if (!render.waitForFinished() || !render.readAllStandardError().isEmpty())
        return -1;
    const QImage page = QImage(png + ".png").convertToFormat(QImage::Format_RGB32);
    int below = 0;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x)
            below = qGray(page.pixel(x, y)) < 50 ? y + 1 : below;
    }
    int count = 0;
    for (int y = below; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x) {
            const QColor c = page.pixelColor(x, y);
            count += qAbs(c.red() - colour.red()) < 12 && qAbs(c.green() - colour.green()) < 12
                && qAbs(c.blue() - colour.blue()) < 12;
        }
    }
    return count;
}

} // namespace

class TestPdfList : public QObject
{
    Q_OBJECT
    QTemporaryDir m_documents;

private Q_SLOTS:
    void initTestCase() { qputenv(PdfListBuilder::kDocumentsEnv, m_documents.path().toLocal8Bit()); }

    // The share action, through the event loop: title, file, log line, share sheet.
    void shared_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QVariantMap>("fields");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("file");
        QTest::newRow("rating") << GroupKind::Rating << QVariantMap{} << "***"
                                << "Books Filtered by Rating: ***" << "BookListByRating.pdf";
        QTest::newRow("format keeps its small f") << GroupKind::Format << QVariantMap{} << "Kindle"
                                                  << "Books Filtered by format: Kindle" << "BookListByFormat.pdf";
        QTest::newRow("year published") << GroupKind::YearPublished << QVariantMap{} << "1999"
                                        << "Books Filtered by Year: 1999" << "BookListByYear.pdf";
        QTest::newRow("year read") << GroupKind::YearRead << QVariantMap{} << "2021"
                                   << "Books Filtered by Year: 2021" << "BookListByYearRead.pdf";
        QTest::newRow("markup stays text")
            << GroupKind::Author << QVariantMap{{"author", "<b>x</b> & y"}} << "<b>x</b> & y"
            << "Books Filtered by Author: <b>x</b> & y" << "BookListByAuthor.pdf";
    }
    void shared()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QVariantMap, fields);
        QFETCH(QString, value);
        QFETCH(QString, title);
        QFETCH(QString, file);
        TestApp t;
        shelf(t, QStringLiteral("First"), fields);
        shelf(t, QStringLiteral("Second"), fields);
        auto screen = breakdownOf(t, kind, value);
        LogCapture log;
        screen->ShareButtonTapped();
        QVERIFY(screen->busy());
        QTRY_VERIFY(!screen->busy());

        const QString path = QDir(m_documents.path()).filePath(file);
        QCOMPARE(log.lines(), QStringList{"wrote PDF file with multiple pages to: " + path});
        QCOMPARE(t.platform().shares.size(), 1);
        QCOMPARE(t.platform().shares.first().files, QList<QUrl>{QUrl::fromLocalFile(path)});
        QVERIFY2(pdfText(path).contains(title), qPrintable(pdfText(path)));
        // A4 with no margins; the PDF's boxes are in whole points.
        QCOMPARE(pdfInfo(path).value("Page size"), QStringLiteral("595 x 842 pts (A4)"));
    }

    // Blocks in order, one picture per book (the placeholder where there is
    // none), pages as many as it takes, and a second list in place of the first.
    void blocks()
    {
        TestApp t;
        const QByteArray cover = encode(coverImage(kCover), "JPEG");
        shelf(t, QStringLiteral("<i>Covered</i> & co"),
              {{"series", "Saga"}, {"seriesNumber", 2}, {"numberPages", 321}, {"bookPublisher", "Pub"},
               {"notes", "Kept"}},
              cover);
        for (int i = 0; i < 15; ++i)
            shelf(t, QStringLiteral("Plain %1").arg(i), {});
        auto screen = breakdownOf(t, GroupKind::Genre, QStringLiteral("Mystery"));
        const QString path = screen->pdfFilePath();
        QVERIFY(screen->writePdfList(path));

        const QString text = pdfText(path);
        const QStringList order{"Books Filtered by Genre: Mystery", "Book Name: <i>Covered</i> & co", "Author: Anne",
                                "Genre: Mystery", "Date Read: Mar 4, 2021", "Date Published: 1999",
                                "Series: Saga", "Series #: 2", "# Pages: 321", "Rating: ***",
                                "Publisher: Pub", "Notes: Kept", "Book Name: Plain 0"};
        qsizetype at = -1;
        for (const QString &s : order) {
            const qsizetype next = text.indexOf(s, at + 1);
            QVERIFY2(next > at, qPrintable(s));
            at = next;
        }
        QVERIFY(pdfInfo(path).value("Pages").toInt() >= 2);
        QList<QSize> images = pdfImages(path);
        QCOMPARE(images.size(), 16);
        QCOMPARE(images.count(kCover), 1);
        QCOMPARE(images.count(kPlaceholder), 15);

        screen->setSearchText(QStringLiteral("plain 1"));
        QVERIFY(screen->writePdfList(path));
        QCOMPARE(pdfImages(path).size(), 6); // "Plain 1", "Plain 10" .. "Plain 14"
        QVERIFY(!pdfText(path).contains("Covered"));
        QCOMPARE(QDir(m_documents.path()).entryList({"*.pdf"}).count(QStringLiteral("BookListByGenre.pdf")), 1);
    }

    // Whatever the stored picture, the file holds one no larger than the page
    // needs, and a reader shows it in colour over the whole cover box.
    void coverKinds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<QSize>("inFile");
        const QColor red(200, 40, 40), grey(90, 90, 90);
        QTest::newRow("JPEG as stored") << encode(solid(kCover, red), "JPEG") << red << kCover;
        QTest::newRow("JPEG far too large") << encode(solid(kCover * 4, red), "JPEG") << red << kScaledCover;
        QTest::newRow("grey JPEG") << encode(solid(kCover, grey, QImage::Format_Grayscale8), "JPEG") << grey
                                   << kCover;
        QTest::newRow("PNG") << encode(solid(kCover, red), "PNG") << red << kScaledCover;
        QTest::newRow("PNG half transparent")
            << encode(solid(kCover, QColor(0, 0, 0, 128), QImage::Format_ARGB32), "PNG") << QColor(127, 127, 127)
            << kScaledCover;
    }
    void coverKinds()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QColor, colour);
        QFETCH(QSize, inFile);
        TestApp t;
        const Books b = shelf(t, QStringLiteral("Only"), {}, bytes);
        QTemporaryDir dir;
        const QString path = dir.filePath("list.pdf");
        QVERIFY(PdfListBuilder(groupKind(GroupKind::Rating), {b}, t.store()).write(path, nullptr));
        QCOMPARE(pdfImages(path), QList<QSize>{inFile});
        const double box = (65 * 36 / 72.0) * (65 * 1.44 * 36 / 72.0);
        const int shown = renderedPixels(path, colour);
        QVERIFY2(shown > 0.8 * box && shown < 1.2 * box, qPrintable(QString::number(shown)));
    }

    // Each page starts where the layout broke it, however many came before.
    void pagesStayOnTheLayoutsGrid()
    {
        QTextDocument document;
        document.setDocumentMargin(0);
        document.setPageSize(QSizeF(300, 100.015)); // 1/64 pt grid: 0.015 pt off per page
        QTextCursor cursor(&document);
        QTextBlockFormat newPage;
        newPage.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        for (int i = 1; i <= 200; ++i) {
            if (i > 1)
                cursor.insertBlock(newPage);
            cursor.insertText(QStringLiteral("P%1").arg(i));
        }
        QTemporaryDir dir;
        const QString path = dir.filePath("pages.pdf");
        QPdfWriter writer(path);
        writer.setPageLayout(QPageLayout(QPageSize(document.pageSize(), QPageSize::Point), QPageLayout::Portrait,
                                         QMarginsF(), QPageLayout::Point));
        writer.setResolution(72);
        PagedPainter painter(document, writer);
        QVERIFY(painter.begin());
        while (!painter.atEnd())
            painter.drawNextPage();
        QVERIFY(painter.end());
        QProcess bbox;
        bbox.start("pdftotext", {"-bbox", path, "-"});
        QVERIFY(bbox.waitForFinished());
        const QString html = QString::fromUtf8(bbox.readAllStandardOutput());
        const QRegularExpression word(R"re(yMin="([\d.-]+)"[^>]*>(P1|P200)<)re");
        QMap<QString, double> top;
        for (const auto &m : word.globalMatch(html))
            top[m.captured(2)] = m.captured(1).toDouble();
        QCOMPARE(top.size(), 2);
        QVERIFY2(qAbs(top["P200"] - top["P1"]) < 0.5, qPrintable(QString::number(top["P200"] - top["P1"])));
    }

    void failedWriteStillShares()
    {
        TestApp t;
        shelf(t, QStringLiteral("Only"), {});
        QTemporaryDir dir;
        const QString notADirectory = dir.filePath(QStringLiteral("file"));
        QFile(notADirectory).open(QIODevice::WriteOnly);
        qputenv(PdfListBuilder::kDocumentsEnv, notADirectory.toLocal8Bit());
        auto screen = breakdownOf(t, GroupKind::Rating, QStringLiteral("***"));
        LogCapture log;
        screen->ShareButtonTapped();
        QTRY_VERIFY(!screen->busy());
        qputenv(PdfListBuilder::kDocumentsEnv, m_documents.path().toLocal8Bit());
        QCOMPARE(log.lines().size(), 1);
        QVERIFY(log.lines().first().startsWith("Could not create PDF file:"));
        QCOMPARE(t.platform().shares.size(), 1);
    }

    // The text-message gate, the year-read breakdown's share completion and mail results.
    void messagesAndMail_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("year read: cancelled") << GroupKind::YearRead << "cancel" << QStringList{"Activity canceled"};
        QTest::newRow("year read: saved")
            << GroupKind::YearRead << "save" << QStringList{"Activity completed: SaveToFiles"};
        QTest::newRow("rating: silent") << GroupKind::Rating << "save" << QStringList{};
        using R = GroupBreakdownTableViewController::MailResult;
        QTest::newRow("mail cancelled") << GroupKind::YearRead << QString::number(int(R::Cancelled))
                                        << QStringList{"Email was cancelled."};
        QTest::newRow("mail saved") << GroupKind::YearRead << QString::number(int(R::Saved))
                                    << QStringList{"Email was saved as draft."};
        QTest::newRow("mail sent") << GroupKind::YearRead << QString::number(int(R::Sent))
                                   << QStringList{"Email was sent successfully."};
        QTest::newRow("mail failed") << GroupKind::YearRead << QString::number(int(R::Failed))
                                     << QStringList{"Email sending failed."};
        QTest::newRow("mail error") << GroupKind::YearRead << "error" << QStringList{"Error sending mail: refused"};
    }
    void messagesAndMail()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QString, action);
        QFETCH(QStringList, lines);
        TestApp t;
        shelf(t, QStringLiteral("Only"), {});
        auto screen = breakdownOf(t, kind, kind == GroupKind::YearRead ? "2021" : "***");
        LogCapture log;
        using R = GroupBreakdownTableViewController::MailResult;
        if (action == QLatin1String("cancel"))
            screen->shareCompleted(QString(), false);
        else if (action == QLatin1String("save"))
            screen->shareCompleted(QStringLiteral("SaveToFiles"), true);
        else if (action == QLatin1String("error"))
            screen->mailComposeController(R::Failed, QStringLiteral("refused"));
        else
            screen->mailComposeController(R(action.toInt()));
        QCOMPARE(log.lines(), lines);
    }

    void mailAndMessageCarryTheFile()
    {
        TestApp t;
        shelf(t, QStringLiteral("Only"), {});
        auto screen = breakdownOf(t, GroupKind::YearRead, QStringLiteral("2021"));
        QVERIFY(screen->offersMail());
        screen->MailButtonTapped();
        QTRY_COMPARE(t.platform().mails.size(), 1);
        QCOMPARE(t.platform().mails.first().subject, QStringLiteral("Selected List of Books"));
        QCOMPARE(t.platform().mails.first().attachments.first().path, screen->pdfFilePath());

        screen->TextMessageButtonTapped();
        QTRY_COMPARE(t.platform().messages.size(), 1);
        t.platform().textAvailable = false;
        screen->TextMessageButtonTapped();
        QCOMPARE(screen->alertTitle(), QStringLiteral("Can't Send Text Message"));
        QCOMPARE(screen->alertMessage(), QStringLiteral("Your device is not able to send text messages."));
        QCOMPARE(t.platform().messages.size(), 1);
    }

    void leavingAbandonsTheList()
    {
        TestApp t;
        for (int i = 0; i < 300; ++i)
            shelf(t, QStringLiteral("Book %1").arg(i), {});
        auto screen = breakdownOf(t, GroupKind::Rating, QStringLiteral("***"));
        QFile::remove(screen->pdfFilePath());
        LogCapture log;
        screen->ShareButtonTapped();
        QVERIFY(screen->busy());
        screen->viewWillDisappear();
        QVERIFY(!screen->busy());
        QTest::qWait(50);
        QVERIFY(log.lines().isEmpty());
        QVERIFY(t.platform().shares.isEmpty());
        QVERIFY(!QFile::exists(screen->pdfFilePath()));
    }

    // Nothing to list: the actions do nothing (the page disables them).
    void emptyListIsNotShared()
    {
        TestApp t;
        shelf(t, QStringLiteral("Only"), {});
        auto screen = breakdownOf(t, GroupKind::Rating, QStringLiteral("***"));
        screen->setSearchText(QStringLiteral("nothing like it"));
        QVERIFY(!screen->canShare());
        screen->ShareButtonTapped();
        screen->PrintButtonTapped();
        QVERIFY(!screen->busy());
        QVERIFY(t.platform().shares.isEmpty());
    }
};

QTEST_MAIN(TestPdfList)
#include "tst_pdflist.moc"
