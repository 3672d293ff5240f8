#include "coverpdf.h"

#include "model/coverimage.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>

namespace tomewise {

namespace {

constexpr int kStandInWidth = 8;
constexpr char kStandInTag[] = "Tw";
constexpr char kStandInEnd[] = "pd";
constexpr int kEncodeQuality = 90;

// How Qt's PDF engine opens every image object it writes.
constexpr QByteArrayView kImageHead = "<<\n/Type /XObject\n/Subtype /Image\n";
constexpr QByteArrayView kStreamHead = ">>\nstream\n";
constexpr QByteArrayView kStreamEnd = "\nendstream";
constexpr qsizetype kXrefEntry = 20;

quint8 byteAt(QByteArrayView bytes, qsizetype i)
{
    return quint8(bytes[i]);
}

int wordAt(QByteArrayView bytes, qsizetype i)
{
    return (byteAt(bytes, i) << 8) | byteAt(bytes, i + 1);
}

// The token a stand-in's inflated RGB rows carry, if they are one.
std::optional<quint32> tokenOf(QByteArrayView rgb)
{
    if (rgb.size() != 3 * kStandInWidth)
        return std::nullopt;
    QByteArray grey;
    for (int x = 0; x < kStandInWidth; ++x) {
        if (rgb[3 * x] != rgb[3 * x + 1] || rgb[3 * x] != rgb[3 * x + 2])
            return std::nullopt;
        grey += rgb[3 * x];
    }
    if (!grey.startsWith(kStandInTag) || !grey.endsWith(kStandInEnd))
        return std::nullopt;
    quint32 token = 0;
    for (int i = 0; i < 4; ++i)
        token |= quint32(quint8(grey[2 + i])) << (8 * i);
    return token;
}

std::optional<qint64> numberAt(QByteArrayView text, qsizetype at, qsizetype *end = nullptr)
{
    qsizetype i = at;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\n' || text[i] == '\r'))
        ++i;
    const qsizetype first = i;
    while (i < text.size() && text[i] >= '0' && text[i] <= '9')
        ++i;
    if (i == first || i - first > 15)
        return std::nullopt;
    if (end)
        *end = i;
    return text.sliced(first, i - first).toLongLong();
}

QByteArray imageObject(qint64 number, const CoverPdf::Jpeg &jpeg)
{
    const char *space = jpeg.components == 1 ? "/DeviceGray" : "/DeviceRGB";
    return QByteArray::number(number) + " 0 obj\n" + kImageHead.toByteArray()
        + QStringLiteral("/Width %1\n/Height %2\n/BitsPerComponent 8\n/ColorSpace %3\n/Filter /DCTDecode\n"
                         "/Length %4\n")
              .arg(jpeg.size.width())
              .arg(jpeg.size.height())
              .arg(QLatin1String(space))
              .arg(jpeg.bytes.size())
              .toLatin1()
        + kStreamHead.toByteArray() + jpeg.bytes + kStreamEnd.toByteArray() + "\nendobj\n";
}

} // namespace

std::optional<CoverPdf::Jpeg> CoverPdf::embeddable(QByteArray bytes)
{
    if (bytes.size() < 8 || byteAt(bytes, 0) != 0xFF || byteAt(bytes, 1) != 0xD8)
        return std::nullopt;
    // A cut-off file would show as grey noise in a reader, where the decoder
    // would have refused it.
    if (!bytes.right(32).contains("\xFF\xD9"))
        return std::nullopt;
    std::optional<Jpeg> found;
    qsizetype pos = 2;
    while (pos + 4 <= bytes.size()) {
        if (byteAt(bytes, pos) != 0xFF)
            return std::nullopt;
        const quint8 marker = byteAt(bytes, pos + 1);
        if (marker == 0xFF) {
            ++pos;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {
            pos += 2;
            continue;
        }
        if (marker == 0xDA) {
            if (found)
                found->bytes = std::move(bytes);
            return found;
        }
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            // Lossless, hierarchical and arithmetic-coded JPEGs are not for PDF readers.
            if ((marker != 0xC0 && marker != 0xC1 && marker != 0xC2) || found || pos + 10 > bytes.size())
                return std::nullopt;
            const int precision = byteAt(bytes, pos + 4);
            const QSize size(wordAt(bytes, pos + 7), wordAt(bytes, pos + 5));
            const int components = byteAt(bytes, pos + 9);
            if (precision != 8 || (components != 1 && components != 3) || size.isEmpty()
                || size.width() > CoverImage::kMaxSide || size.height() > CoverImage::kMaxSide)
                return std::nullopt;
            found = Jpeg{{}, size, components};
        }
        pos += 2 + wordAt(bytes, pos + 2);
    }
    return std::nullopt;
}

CoverPdf::Jpeg CoverPdf::encode(const QImage &image)
{
    QImage flat(image.isNull() ? QSize(1, 1) : image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    if (!image.isNull()) {
        QPainter painter(&flat);
        painter.drawImage(0, 0, image);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(kEncodeQuality);
    writer.write(flat);
    buffer.close();
    return embeddable(bytes).value_or(Jpeg{});
}

QImage CoverPdf::standIn(quint32 token)
{
    const char bytes[4] = {char(token), char(token >> 8), char(token >> 16), char(token >> 24)};
    const QByteArray grey = QByteArray(kStandInTag) + QByteArray(bytes, 4) + QByteArray(kStandInEnd);
    QImage image(kStandInWidth, 1, QImage::Format_RGB32);
    for (int x = 0; x < kStandInWidth; ++x) {
        const int v = quint8(grey[x]);
        image.setPixel(x, 0, qRgb(v, v, v));
    }
    return image;
}

bool CoverPdf::swapStandIns(QIODevice &in, QIODevice &out, const std::function<Jpeg(quint32)> &jpegFor,
                            QString *error)
{
    const auto fail = [&](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    // Text, fonts and stand-ins only: a few kB per page.
    const QByteArray file = in.readAll();
    const QByteArrayView pdf(file);

    // The cross-reference table Qt writes: one section "0 N", then the trailer.
    const qsizetype startxref = pdf.lastIndexOf(QByteArrayView("startxref"));
    const auto xrefAt = startxref < 0 ? std::nullopt : numberAt(pdf, startxref + 9);
    if (!xrefAt || *xrefAt <= 0 || *xrefAt >= startxref || !pdf.sliced(*xrefAt).startsWith("xref"))
        return fail(QStringLiteral("no cross-reference table"));
    qsizetype at = *xrefAt + 4;
    const auto first = numberAt(pdf, at, &at);
    const auto count = first ? numberAt(pdf, at, &at) : std::nullopt;
    if (!count || *first != 0 || *count <= 0)
        return fail(QStringLiteral("an unexpected cross-reference section"));
    while (at < pdf.size() && (pdf[at] == ' ' || pdf[at] == '\r' || pdf[at] == '\n'))
        ++at;
    const qsizetype entriesAt = at;
    const qsizetype trailerAt = entriesAt + *count * kXrefEntry;
    if (trailerAt > startxref || !pdf.sliced(trailerAt).startsWith("trailer"))
        return fail(QStringLiteral("an unexpected cross-reference section"));

    struct Object
    {
        qint64 offset;
        qint64 number;
    };
    std::vector<Object> objects;
    for (qint64 n = 0; n < *count; ++n) {
        const QByteArrayView entry = pdf.sliced(entriesAt + n * kXrefEntry, kXrefEntry);
        if (entry[17] != 'n')
            continue;
        const auto offset = numberAt(entry, 0);
        if (!offset || *offset >= *xrefAt
            || !pdf.sliced(*offset).startsWith(QByteArray::number(n) + " 0 obj\n"))
            return fail(QStringLiteral("object %1 is not where the table says").arg(n));
        objects.push_back({*offset, n});
    }
    if (objects.empty())
        return fail(QStringLiteral("no objects"));
    std::sort(objects.begin(), objects.end(), [](const Object &a, const Object &b) { return a.offset < b.offset; });

    qint64 written = 0;
    bool ok = true;
    const auto write = [&](QByteArrayView bytes) {
        ok = ok && out.write(bytes.data(), bytes.size()) == bytes.size();
        written += bytes.size();
    };
    std::vector<qint64> newOffset(*count, 0);
    write(pdf.first(objects.front().offset));
    for (size_t i = 0; i < objects.size() && ok; ++i) {
        const qint64 begin = objects[i].offset;
        const qint64 end = i + 1 < objects.size() ? objects[i + 1].offset : *xrefAt;
        const QByteArrayView object = pdf.sliced(begin, end - begin);
        newOffset[objects[i].number] = written;
        const qsizetype bodyAt = object.indexOf('\n') + 1;
        if (!object.sliced(bodyAt).startsWith(kImageHead)) {
            write(object);
            continue;
        }
        const qsizetype dataAt = object.indexOf(kStreamHead);
        const qsizetype dataEnd = object.lastIndexOf(kStreamEnd);
        if (dataAt < 0 || dataEnd < dataAt + kStreamHead.size())
            return fail(QStringLiteral("image %1 has no stream").arg(objects[i].number));
        const QByteArrayView dictionary = object.first(dataAt);
        std::optional<quint32> token;
        if (dictionary.contains(QByteArrayView("/Width 8\n/Height 1\n"))
            && dictionary.contains(QByteArrayView("/Filter /FlateDecode\n")) && !dictionary.contains("/SMask")
            && !dictionary.contains("/Mask")) {
            // qUncompress wants the inflated size first: 3 bytes a pixel.
            const qsizetype dataStart = dataAt + kStreamHead.size();
            const QByteArray zipped = QByteArray("\0\0\0\x18", 4)
                + object.sliced(dataStart, dataEnd - dataStart).toByteArray();
            token = tokenOf(qUncompress(zipped));
        }
        if (!token)
            return fail(QStringLiteral("image %1 is not a stand-in").arg(objects[i].number));
        const Jpeg jpeg = jpegFor(*token);
        if (jpeg.bytes.isEmpty())
            return fail(QStringLiteral("no picture for image %1").arg(objects[i].number));
        write(imageObject(objects[i].number, jpeg));
    }

    const qint64 newXrefAt = written;
    write(QByteArray("xref\n0 ") + QByteArray::number(*count) + "\n");
    for (qint64 n = 0; n < *count && ok; ++n) {
        const QByteArrayView entry = pdf.sliced(entriesAt + n * kXrefEntry, kXrefEntry);
        if (entry[17] == 'n')
            write(QByteArray::number(newOffset[n]).rightJustified(10, '0') + entry.sliced(10).toByteArray());
        else
            write(entry);
    }
    write(pdf.sliced(trailerAt, startxref - trailerAt));
    write(QByteArray("startxref\n") + QByteArray::number(newXrefAt) + "\n%%EOF\n");
    return ok || fail(out.errorString());
}

} // namespace tomewise
