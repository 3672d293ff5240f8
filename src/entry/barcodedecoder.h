#pragma once

#include <QImage>
#include <QList>
#include <QPolygonF>
#include <QRect>
#include <QString>

#include <optional>

namespace tomewise {

// The symbologies the screens accept, named as the platform names its barcode types.
enum class Symbology {
    EAN8,
    EAN13,
    PDF417,
    QRCode,
    Aztec,
    Code39,
    Code93,
    Code128,
    DataMatrix,
    ITF,
    Codabar,
    DataBar,
    DataBarExpanded,
    UPCA,
    UPCE,
    MaxiCode,
    MicroQRCode,
};

// One code found in a picture.
struct BarcodeRead
{
    QString text;
    Symbology symbology = Symbology::EAN13;
    // Where it is, in the picture's pixels: top-left, top-right, bottom-right,
    // bottom-left. A linear code is given its bars' height, not just the lines scanned.
    QPolygonF corners;

    QRectF bounds() const { return corners.boundingRect(); }
    qreal area() const;
    // An EAN-13 in the book land prefixes 978 and 979.
    bool isISBN() const;
};

// A grey or colour picture the decoder reads in place: a camera's luma plane,
// packed YUV, or 32-bit RGB.
struct PixelView
{
    enum class Layout { Luma, XRGB, BGRX, RGBX, XBGR };
    const uchar *data = nullptr;
    int width = 0;
    int height = 0;
    int rowStride = 0;
    int pixelStride = 1;
    Layout layout = Layout::Luma;

    // A Grayscale8 or 32-bit RGB image; anything else must be converted first.
    static PixelView of(const QImage &image);
};

// Reads barcodes with ZXing-cpp.
//
// Debian's ZXing-cpp 1.4 keeps its assertions on, and reading several symbols
// in one call (ReadBarcodes) merges the lines it found with Result::operator==,
// which aborts the process ("lineCount() == 1") on ordinary camera frames: a
// plain, blurred, rotated or noisy EAN-13. With at most one symbol per call the
// reader stops as soon as a symbol has its second line, before any line can be
// compared with a merged one, and never merges the results of several passes,
// so that assertion cannot be reached. Hence every
// call here asks for one symbol of one format family; a family is read again
// with the codes already found painted out, to find the others in view.
class BarcodeDecoder
{
public:
    // The capture session's types, in the order it lists them.
    static const QList<Symbology> &captureSessionTypes();
    // The scan-area screen's: those and the other types the program links.
    static const QList<Symbology> &scanAreaTypes();

    // No types: every symbology the decoder knows.
    explicit BarcodeDecoder(QList<Symbology> accepted = {});

    // Every code found, within `area` of the picture when it is not empty.
    QList<BarcodeRead> readAll(const PixelView &picture, QRect area = {}) const;
    // The code a screen takes: see preferred().
    std::optional<BarcodeRead> read(const PixelView &picture, QRect area = {}) const;
    std::optional<BarcodeRead> read(const QImage &picture, QRect area = {}) const;

    // Of several codes in view: the ISBN (an EAN-13 starting 978 or 979),
    // else the largest code.
    static std::optional<BarcodeRead> preferred(const QList<BarcodeRead> &reads);

private:
    QList<BarcodeRead> scan(const PixelView &picture, QRect area, bool untilISBN) const;

    QList<Symbology> m_accepted;
};

} // namespace tomewise
