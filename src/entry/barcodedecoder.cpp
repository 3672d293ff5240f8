#include "barcodedecoder.h"

#include <ZXing/ReadBarcode.h>


#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace tomewise {

namespace {

struct SymbologyInfo
{
    Symbology symbology;
    ZXing::BarcodeFormat format;
    const char *name;
    bool linear;
};

// ZXing reads all linear formats with one reader; each matrix format has its own.
constexpr SymbologyInfo kSymbologies[]{
    {Symbology::EAN8, ZXing::BarcodeFormat::EAN8, "EAN-8", true},
    {Symbology::EAN13, ZXing::BarcodeFormat::EAN13, "EAN-13", true},
    {Symbology::PDF417, ZXing::BarcodeFormat::PDF417, "PDF417", false},
    {Symbology::QRCode, ZXing::BarcodeFormat::QRCode, "QR code", false},
    {Symbology::Aztec, ZXing::BarcodeFormat::Aztec, "Aztec", false},
    {Symbology::Code39, ZXing::BarcodeFormat::Code39, "Code 39", true},
    {Symbology::Code93, ZXing::BarcodeFormat::Code93, "Code 93", true},
    {Symbology::Code128, ZXing::BarcodeFormat::Code128, "Code 128", true},
    {Symbology::DataMatrix, ZXing::BarcodeFormat::DataMatrix, "Data Matrix", false},
    {Symbology::ITF, ZXing::BarcodeFormat::ITF, "ITF", true},
    {Symbology::Codabar, ZXing::BarcodeFormat::Codabar, "Codabar", true},
    {Symbology::DataBar, ZXing::BarcodeFormat::DataBar, "DataBar", true},
    {Symbology::DataBarExpanded, ZXing::BarcodeFormat::DataBarExpanded, "DataBar Expanded", true},
    {Symbology::UPCA, ZXing::BarcodeFormat::UPCA, "UPC-A", true},
    {Symbology::UPCE, ZXing::BarcodeFormat::UPCE, "UPC-E", true},
    {Symbology::MaxiCode, ZXing::BarcodeFormat::MaxiCode, "MaxiCode", false},
    {Symbology::MicroQRCode, ZXing::BarcodeFormat::MicroQRCode, "Micro QR code", false},
};

constexpr bool inEnumOrder()
{
    for (int i = 0; i < int(std::size(kSymbologies)); ++i) {
        if (int(kSymbologies[i].symbology) != i)
            return false;
    }
    return true;
}
static_assert(inEnumOrder(), "kSymbologies is indexed by Symbology");

const SymbologyInfo &info(Symbology s)
{
    return kSymbologies[int(s)];
}

const SymbologyInfo *info(ZXing::BarcodeFormat format)
{
    for (const auto &i : kSymbologies) {
        if (i.format == format)
            return &i;
    }
    return nullptr;
}

struct Family
{
    ZXing::BarcodeFormats formats;
    // Bars and PDF417 rows are read along lines, so a turned picture helps them;
    // the other matrix codes are found at any angle anyway.
    bool tryRotate;
};

// Each call reads one family; a linear family holds every accepted linear format.
QList<Family> families(const QList<Symbology> &accepted)
{
    QList<Family> list;
    ZXing::BarcodeFormats linear;
    int linearAt = -1;
    for (Symbology s : accepted) {
        const auto &i = info(s);
        if (!i.linear) {
            list.append({i.format, s == Symbology::PDF417});
        } else {
            linear |= i.format;
            if (linearAt < 0)
                linearAt = int(list.size());
        }
    }
    if (linearAt >= 0)
        list.insert(linearAt, {linear, true});
    return list;
}

ZXing::ImageFormat imageFormat(PixelView::Layout layout)
{
    switch (layout) {
    case PixelView::Layout::Luma: return ZXing::ImageFormat::Lum;
    case PixelView::Layout::XRGB: return ZXing::ImageFormat::XRGB;
    case PixelView::Layout::BGRX: return ZXing::ImageFormat::BGRX;
    case PixelView::Layout::RGBX: return ZXing::ImageFormat::RGBX;
    case PixelView::Layout::XBGR: return ZXing::ImageFormat::XBGR;
    }
    return ZXing::ImageFormat::Lum;
}

// A private grey copy of the picture, on which found codes can be painted out.
QImage greyCopy(const PixelView &p)
{
    QImage grey(p.width, p.height, QImage::Format_Grayscale8);
    const ZXing::ImageFormat f = imageFormat(p.layout);
    for (int y = 0; y < p.height; ++y) {
        const uchar *src = p.data + qsizetype(y) * p.rowStride;
        uchar *dst = grey.scanLine(y);
        if (p.layout == PixelView::Layout::Luma && p.pixelStride == 1) {
            std::memcpy(dst, src, size_t(p.width));
            continue;
        }
        for (int x = 0; x < p.width; ++x, src += p.pixelStride) {
            dst[x] = p.layout == PixelView::Layout::Luma
                ? *src
                : ZXing::RGBToLum(src[ZXing::RedIndex(f)], src[ZXing::GreenIndex(f)], src[ZXing::BlueIndex(f)]);
        }
    }
    return grey;
}

int lumaAt(const PixelView &p, int x, int y)
{
    const uchar *px = p.data + qsizetype(y) * p.rowStride + qsizetype(x) * p.pixelStride;
    if (p.layout == PixelView::Layout::Luma)
        return *px;
    const ZXing::ImageFormat f = imageFormat(p.layout);
    return ZXing::RGBToLum(px[ZXing::RedIndex(f)], px[ZXing::GreenIndex(f)], px[ZXing::BlueIndex(f)]);
}

// Luma at a point, interpolated between pixels so a sub-pixel shift shows; -1 off the picture.
int lumaAt(const PixelView &p, QPointF at)
{
    const int x = int(std::floor(at.x()));
    const int y = int(std::floor(at.y()));
    if (x < 0 || y < 0 || x + 1 >= p.width || y + 1 >= p.height)
        return -1;
    const qreal fx = at.x() - x, fy = at.y() - y;
    const qreal top = lumaAt(p, x, y) * (1 - fx) + lumaAt(p, x + 1, y) * fx;
    const qreal bottom = lumaAt(p, x, y + 1) * (1 - fx) + lumaAt(p, x + 1, y + 1) * fx;
    return qRound(top * (1 - fy) + bottom * fy);
}

// The dark and light pattern along a segment, two samples a pixel.
QList<int> profile(const PixelView &p, QPointF from, QPointF to, int samples)
{
    QList<int> values(samples);
    for (int i = 0; i < samples; ++i)
        values[i] = lumaAt(p, from + (to - from) * (i + 0.5) / samples);
    return values;
}

// Whether a line shows the same bars as the scanned one: the two profiles
// correlate well (blur and tilt soften the edges, so no exact match).
bool sameBars(const QList<int> &scanned, const QList<int> &other)
{
    const qsizetype n = scanned.size();
    double sa = 0, sb = 0;
    for (qsizetype i = 0; i < n; ++i) {
        if (other[i] < 0)
            return false;
        sa += scanned[i];
        sb += other[i];
    }
    const double ma = sa / n, mb = sb / n;
    double ab = 0, aa = 0, bb = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const double a = scanned[i] - ma, b = other[i] - mb;
        ab += a * b;
        aa += a * a;
        bb += b * b;
    }
    return aa > 0 && bb > 0 && ab / std::sqrt(aa * bb) > 0.6;
}

// ZXing gives a linear code only the span of the two lines it scanned, which
// may lie anywhere along the bars: follow the bars up and down from there.
QPolygonF withBars(const PixelView &p, const QPolygonF &q)
{
    const QPointF from = (q[0] + q[3]) / 2;
    const QPointF to = (q[1] + q[2]) / 2;
    const QPointF along = to - from;
    const qreal length = std::hypot(along.x(), along.y());
    if (length < 8)
        return q;
    QPointF normal(-along.y() / length, along.x() / length);
    if (QPointF::dotProduct(q[3] - q[0], normal) < 0)
        normal = -normal;
    const int samples = int(2 * length);
    const QList<int> scanned = profile(p, from, to, samples);
    // A tilted code's bars drift sideways line by line: follow the drift.
    const QPointF unit = along / length;
    const auto reach = [&](qreal direction) {
        qreal d = 0;
        qreal drift = 0;
        while (d < length) {
            const QPointF step = normal * (d + 1) * direction;
            bool followed = false;
            for (const qreal nudge : {0.0, -0.25, 0.25}) {
                const QPointF shift = step + unit * (drift + nudge);
                if (sameBars(scanned, profile(p, from + shift, to + shift, samples))) {
                    drift += nudge;
                    followed = true;
                    break;
                }
            }
            if (!followed)
                break;
            d += 1;
        }
        return normal * d * direction + unit * drift;
    };
    const QPointF up = reach(-1);
    const QPointF down = reach(1);
    return QPolygonF{from + up, to + up, to + down, from + down};
}

void paintOut(QImage &grey, const QRectF &bounds)
{
    const qreal margin = std::max(bounds.width(), bounds.height()) * 0.05;
    const QRect r = bounds.adjusted(-margin, -margin, margin, margin).toAlignedRect() & grey.rect();
    for (int y = r.top(); y <= r.bottom(); ++y)
        std::memset(grey.scanLine(y) + r.left(), 0xff, size_t(r.width()));
}

} // namespace

qreal BarcodeRead::area() const
{
    // Shoelace formula over the four corners.
    qreal twice = 0;
    for (int i = 0; i < corners.size(); ++i) {
        const QPointF &a = corners[i];
        const QPointF &b = corners[(i + 1) % corners.size()];
        twice += a.x() * b.y() - b.x() * a.y();
    }
    return std::abs(twice) / 2;
}

bool BarcodeRead::isISBN() const
{
    return symbology == Symbology::EAN13
        && (text.startsWith(QLatin1String("978")) || text.startsWith(QLatin1String("979")));
}

PixelView PixelView::of(const QImage &image)
{
    PixelView v{image.constBits(), image.width(), image.height(), int(image.bytesPerLine()), 1, Layout::Luma};
    switch (image.format()) {
    case QImage::Format_Grayscale8:
        break;
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        // 0xAARRGGBB words: B, G, R, A in memory on little-endian machines.
        v.layout = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? Layout::BGRX : Layout::XRGB;
        v.pixelStride = 4;
        break;
    case QImage::Format_RGBX8888:
    case QImage::Format_RGBA8888:
    case QImage::Format_RGBA8888_Premultiplied:
        v.layout = Layout::RGBX;
        v.pixelStride = 4;
        break;
    default:
        Q_ASSERT_X(false, "PixelView::of", "convert the image to Grayscale8 or 32-bit RGB first");
        return {};
    }
    return v;
}

const QList<Symbology> &BarcodeDecoder::captureSessionTypes()
{
    static const QList<Symbology> list{Symbology::EAN8, Symbology::EAN13, Symbology::PDF417, Symbology::QRCode};
    return list;
}

const QList<Symbology> &BarcodeDecoder::scanAreaTypes()
{
    static const QList<Symbology> list = captureSessionTypes()
        + QList<Symbology>{Symbology::Aztec,   Symbology::Code39,     Symbology::Code93,
                           Symbology::Code128, Symbology::DataMatrix, Symbology::ITF};
    return list;
}

BarcodeDecoder::BarcodeDecoder(QList<Symbology> accepted)
    : m_accepted(std::move(accepted))
{
    if (m_accepted.isEmpty()) {
        for (const auto &i : kSymbologies)
            m_accepted.append(i.symbology);
    }
}

QList<BarcodeRead> BarcodeDecoder::readAll(const PixelView &picture, QRect area) const
{
    return scan(picture, area, false);
}

QList<BarcodeRead> BarcodeDecoder::scan(const PixelView &picture, QRect area, bool untilISBN) const
{
    QList<BarcodeRead> reads;
    if (!picture.data || picture.width <= 0 || picture.height <= 0)
        return reads;
    const QRect whole(0, 0, picture.width, picture.height);
    area = area.isEmpty() ? whole : area & whole;
    if (area.isEmpty())
        return reads;

    QImage grey; // made once a code has been found and must be painted out
    // More codes of one family than this in one frame is not a book's back cover.
    constexpr int kMostPerFamily = 4;
    for (const Family &family : families(m_accepted)) {
        for (int n = 0; n < kMostPerFamily; ++n) {
            const ZXing::ImageView view = grey.isNull()
                ? ZXing::ImageView(picture.data, picture.width, picture.height, imageFormat(picture.layout),
                                   picture.rowStride, picture.pixelStride)
                : ZXing::ImageView(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                                   int(grey.bytesPerLine()));
            ZXing::DecodeHints hints;
            hints.setFormats(family.formats).setTryHarder(true).setTryRotate(family.tryRotate).setMaxNumberOfSymbols(1);
            const ZXing::Result r =
                ZXing::ReadBarcode(view.cropped(area.x(), area.y(), area.width(), area.height()), hints);
            const SymbologyInfo *found = r.isValid() ? info(r.format()) : nullptr;
            if (!found)
                break;
            BarcodeRead read;
            read.text = QString::fromStdString(r.text());
            read.symbology = found->symbology;
            const auto &p = r.position();
            for (int i = 0; i < 4; ++i)
                read.corners << QPointF(p[i].x + area.x(), p[i].y + area.y());
            if (found->linear)
                read.corners = withBars(picture, read.corners);
            // The same code again means painting it out did not hide it: stop there.
            const bool again = std::any_of(reads.cbegin(), reads.cend(), [&](const BarcodeRead &o) {
                return o.symbology == read.symbology && o.text == read.text && o.bounds().intersects(read.bounds());
            });
            if (again)
                break;
            reads.append(read);
            // Nothing is taken before an ISBN, so a screen need not look further.
            if (untilISBN && read.isISBN())
                return reads;
            if (grey.isNull())
                grey = greyCopy(picture);
            paintOut(grey, read.bounds());
        }
    }
    return reads;
}

std::optional<BarcodeRead> BarcodeDecoder::read(const PixelView &picture, QRect area) const
{
    return preferred(scan(picture, area, true));
}

std::optional<BarcodeRead> BarcodeDecoder::read(const QImage &picture, QRect area) const
{
    if (picture.isNull())
        return std::nullopt;
    const QImage::Format f = picture.format();
    const bool direct = f == QImage::Format_Grayscale8 || f == QImage::Format_RGB32 || f == QImage::Format_ARGB32
        || f == QImage::Format_ARGB32_Premultiplied || f == QImage::Format_RGBX8888 || f == QImage::Format_RGBA8888
        || f == QImage::Format_RGBA8888_Premultiplied;
    const QImage usable = direct ? picture : picture.convertToFormat(QImage::Format_Grayscale8);
    return read(PixelView::of(usable), area);
}

std::optional<BarcodeRead> BarcodeDecoder::preferred(const QList<BarcodeRead> &reads)
{
    const BarcodeRead *best = nullptr;
    for (const auto &r : reads) {
        if (!best || std::pair(r.isISBN(), r.area()) > std::pair(best->isISBN(), best->area()))
            best = &r;
    }
    return best ? std::optional(*best) : std::nullopt;
}

} // namespace tomewise
