#include "support/imagefixtures.h"
#include "support/testapp.h"

#include "app/launchtasks.h"
#include "browse/coverimageprovider.h"
#include "browse/liststyletableviewcontroller.h"
#include "entry/newbookviewcontroller.h"
#include "model/coverimage.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QTest>
#include <QtEndian>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tomewise;
using namespace tomewise::test;

namespace {

quint32 crc32(QByteArrayView bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= quint8(c);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320 & (0 - (crc & 1)));
    }
    return ~crc;
}

QByteArray pngChunk(const QByteArray &type, const QByteArray &data)
{
    QByteArray length(4, 0), crc(4, 0);
    qToBigEndian(quint32(data.size()), length.data());
    qToBigEndian(crc32(type + data), crc.data());
    return length + type + data + crc;
}

// A well-formed PNG header that promises a picture of any size; no pixel follows.
QByteArray pngDeclaring(quint32 width, quint32 height, char depth = 8)
{
    QByteArray ihdr(13, 0);
    qToBigEndian(width, ihdr.data());
    qToBigEndian(height, ihdr.data() + 4);
    ihdr[8] = depth;
    ihdr[9] = 6; // RGBA
    return QByteArray("\x89PNG\r\n\x1A\n", 8) + pngChunk("IHDR", ihdr)
        + pngChunk("IDAT", QByteArray("\x78\x9C\x03\x00\x00\x00\x00\x01", 8)) + pngChunk("IEND", {});
}

// A real JPEG whose frame header claims another size.
QByteArray jpegDeclaring(quint16 width, quint16 height, bool progressive = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(progressive);
    writer.write(coverImage(QSize(16, 16)));
    const qsizetype sof = bytes.indexOf(progressive ? "\xFF\xC2" : "\xFF\xC0");
    qToBigEndian(height, bytes.data() + sof + 5);
    qToBigEndian(width, bytes.data() + sof + 7);
    return bytes;
}

// A page of 200 x 200 inches: Qt's PDF plugin renders it whole.
const QByteArray kPdf = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                        "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                        "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 14400 14400]>>endobj\n"
                        "trailer<</Root 1 0 R>>\n%%EOF\n";
const QByteArray kSvg = R"(<svg xmlns="http://www.w3.org/2000/svg" width="60000" height="60000"><rect width="60000" height="60000"/></svg>)";

// A phone photo's size, red above and blue below.
QByteArray phonePhoto()
{
    QImage photo(6000, 8000, QImage::Format_RGB32);
    photo.fill(Qt::red);
    for (int y = 4000; y < 8000; ++y)
        std::fill_n(reinterpret_cast<QRgb *>(photo.scanLine(y)), 6000, qRgb(0, 0, 255));
    return encode(photo, "JPEG", 80);
}

long peakKb()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Runs `work` in a child process whose address space may grow by 1 GB at most
// (so that a runaway decode fails there, not here); true when it returned true
// and its peak memory grew by less than `growthMb`.
bool runsInLittleMemory(const std::function<bool()> &work, int growthMb)
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return false;
    const rlim_t used = rlim_t(statm.readAll().split(' ').value(0).toULongLong()) * rlim_t(sysconf(_SC_PAGESIZE));
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit cap{used + (rlim_t(1) << 30), used + (rlim_t(1) << 30)};
        setrlimit(RLIMIT_AS, &cap);
        alarm(60);
        const long before = peakKb();
        const bool ok = work();
        _exit(ok && peakKb() - before < growthMb * 1024 ? 0 : 1);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

class TestCoverImage : public QObject
{
    Q_OBJECT

    // The start-up re-encode and the form's "Folder" button refuse what the
    // decoder refuses, without decoding anything.
    static void refusedWithinMemory(const QByteArray &bytes)
    {
        TestApp t;
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("cover.jpg"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QVERIFY(runsInLittleMemory([&] { return !LaunchTasks::reencodeJpeg(bytes, 0.05); }, 64));
        QVERIFY(runsInLittleMemory(
            [&] {
                NewBookViewController form(&t.app());
                return !form.documentPicked(QUrl::fromLocalFile(path)) && !form.hasImage()
                    && form.alertTitle() == QLatin1String("Cover Not Changed")
                    && form.alertMessage().startsWith(QStringLiteral("\u201Ccover.jpg\u201D: This "));
            },
            64));
    }

private Q_SLOTS:
    void decode_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size"); // empty: refused
        QTest::addColumn<QString>("error");

        const QString notAPicture = CoverImage::notAPicture();
        const QByteArray jpeg = encode(coverImage(), "JPEG", 90);
        QTest::newRow("jpeg") << jpeg << QSize(250, 360) << QString();
        QTest::newRow("png") << encode(coverImage(), "PNG") << QSize(250, 360) << QString();
        QTest::newRow("phone photo, read scaled") << phonePhoto() << QSize(1536, 2048) << QString();
        QTest::newRow("gif") << encode(coverImage(), "GIF") << QSize() << notAPicture;
        QTest::newRow("pdf") << kPdf << QSize() << notAPicture;
        QTest::newRow("svg") << kSvg << QSize() << notAPicture;
        QTest::newRow("text") << QByteArray("not a picture") << QSize() << notAPicture;
        QTest::newRow("empty") << QByteArray() << QSize() << notAPicture;
        QTest::newRow("jpeg cut short") << jpeg.left(4) << QSize() << notAPicture;
        QTest::newRow("jpeg without its pixels") << jpeg.left(jpeg.indexOf("\xFF\xDA")) << QSize() << notAPicture;
        QByteArray png = encode(coverImage(), "PNG");
        png[png.size() / 2] = char(png[png.size() / 2] ^ 0x55);
        QTest::newRow("png damaged") << png << QSize() << QStringLiteral("This picture is damaged and cannot be read.");
        // A text chunk claiming 800 MB, which libpng would allocate and fill.
        QByteArray hugeText = encode(coverImage(QSize(8, 8)), "PNG");
        hugeText.chop(12);
        QTest::newRow("png text chunk past the end") << hugeText + QByteArray::fromHex("30000000") + "tEXtdate:modify"
                                                     << QSize() << QStringLiteral("This picture is damaged and cannot be read.");
        QTest::newRow("png 60000 x 60000") << pngDeclaring(60000, 60000) << QSize()
                                           << QStringLiteral("This picture is too large to use (60000 x 60000 pixels).");
        QTest::newRow("png 6000 x 8000, 16 bits") << pngDeclaring(6000, 8000, 16) << QSize()
                                                  << QStringLiteral("This picture is too large to use (6000 x 8000 pixels).");
        QTest::newRow("jpeg 60000 x 60000") << jpegDeclaring(60000, 60000) << QSize()
                                            << QStringLiteral("This picture is too large to use (60000 x 60000 pixels).");
        // Within the pixel limits, but its coefficients alone would take 1.2 GB.
        QTest::newRow("progressive jpeg 20000 x 10000") << jpegDeclaring(20000, 10000, true) << QSize()
                                                        << QStringLiteral("This picture is too large to use (20000 x 10000 pixels).");
    }

    void decode()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        QFETCH(QString, error);

        const CoverImage::Decoded decoded = CoverImage::decode(bytes);
        QCOMPARE(decoded.error, error);
        QCOMPARE(decoded.image.isNull(), size.isEmpty());
        if (size.isEmpty()) {
            refusedWithinMemory(bytes);
            return;
        }
        QCOMPARE(decoded.image.size(), size);
        if (size.width() <= 250) {
            // Ordinary pictures come out exactly as they always did.
            QCOMPARE(decoded.image, QImage::fromData(bytes));
        } else {
            QCOMPARE(QColor(decoded.image.pixel(10, 10)).red() > 200, true);
            QCOMPARE(QColor(decoded.image.pixel(10, 2040)).blue() > 200, true);
        }
    }

    void listShowsTheNewCoverAfterAChange()
    {
        TestApp t;
        const Books b = t.insert(book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert")));
        CoverImageProvider provider(&t.app());
        const auto shownColour = [&](ListStyleTableViewController &list) {
            const QString source = list.model()->data(list.model()->index(0), ListStyleModel::CoverSourceRole).toString();
            return std::pair{source, QColor(provider.requestImage(source.section(u'/', 3), nullptr, {}).pixel(5, 5))};
        };
        const auto solid = [](Qt::GlobalColor colour) {
            QImage image(BookForm::kCoverSize, QImage::Format_RGB32);
            image.fill(colour);
            return encode(image, "JPEG", 90);
        };

        QVERIFY(t.store().setCover(b.pk, solid(Qt::red)));
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        const auto [before, red] = shownColour(list);
        QVERIFY(red.red() > 200);

        // Changed elsewhere (the detail screen), then back to the list or a new one:
        // a new address, so that no cached picture stands in for the new cover.
        QVERIFY(t.store().setCover(b.pk, solid(Qt::blue)));
        list.viewWillAppear();
        const auto [after, blue] = shownColour(list);
        QVERIFY(after != before);
        QVERIFY(blue.blue() > 200);
        ListStyleTableViewController reopened(&t.app());
        reopened.viewDidLoad();
        reopened.viewWillAppear();
        QCOMPARE(shownColour(reopened).first, after);
    }
};

QTEST_MAIN(TestCoverImage)
#include "tst_coverimage.moc"
