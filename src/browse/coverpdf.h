#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <functional>
#include <optional>

class QIODevice;

namespace tomewise {

// Puts stored JPEG covers into a PDF byte for byte. Qt's PDF engine decodes
// every picture it is given and encodes it again at full size, which makes a
// long list slow and its file huge. So the pages are drawn with a tiny
// stand-in picture per cover that carries a number in its pixels, and the
// written file is copied with each stand-in's image object replaced by the
// cover's own JPEG data (the page draws an image into its box whatever its
// pixel size, so nothing else on the page changes).
class CoverPdf
{
public:
    // A JPEG a PDF reader can show as it is: baseline or progressive, 8 bits,
    // grey or colour (a CMYK one would need its inversion guessed).
    struct Jpeg
    {
        QByteArray bytes;
        QSize size;
        int components = 0;
    };
    static std::optional<Jpeg> embeddable(QByteArray bytes);
    // A picture as a JPEG for the file, on white where it is transparent.
    static Jpeg encode(const QImage &image);

    // The stand-in to draw for `token`; drawn with lossless image rendering
    // so its pixels reach the file unchanged.
    static QImage standIn(quint32 token);

    // Copies the PDF `in` to `out`, each stand-in replaced by jpegFor(token).
    // False, with `out` unusable, when the file holds anything unexpected: an
    // image that is not a stand-in, or a layout this copier does not know.
    static bool swapStandIns(QIODevice &in, QIODevice &out, const std::function<Jpeg(quint32)> &jpegFor,
                             QString *error);
};

} // namespace tomewise
