#include "jpegreencoder.h"

#include "model/coverimage.h"

#include <QImage>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace tomewise {

namespace {

struct ErrorManager : jpeg_error_mgr
{
    std::jmp_buf jump;
};

extern "C" void jumpOnError(j_common_ptr info)
{
    std::longjmp(static_cast<ErrorManager *>(info->err)->jump, 1);
}

// Warnings (a damaged scan, a missing end) are what Qt's reader passes over too.
extern "C" void ignoreMessage(j_common_ptr) {}

// Everything libjpeg may still hold when it jumps out, kept outside the frame
// it jumps to.
struct Codec
{
    jpeg_decompress_struct in{};
    jpeg_compress_struct out{};
    ErrorManager errors{};
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    int quality = 75;
    int defaultDpmX = 0;
    int defaultDpmY = 0;
};

// What Qt's reader makes of a JFIF density, in dots per metre, and what its
// writer makes of that again.
void setDensity(Codec &c)
{
    int dpmX = 0, dpmY = 0;
    if (c.in.density_unit == 1) {
        dpmX = int(100. * c.in.X_density / 2.54);
        dpmY = int(100. * c.in.Y_density / 2.54);
    } else if (c.in.density_unit == 2) {
        dpmX = int(100. * c.in.X_density);
        dpmY = int(100. * c.in.Y_density);
    }
    // A QImage keeps its own density when it is given none.
    if (dpmX == 0)
        dpmX = c.defaultDpmX;
    if (dpmY == 0)
        dpmY = c.defaultDpmY;
    const qreal diffInch = qAbs(dpmX * 2.54 / 100. - qRound(dpmX * 2.54 / 100.))
        + qAbs(dpmY * 2.54 / 100. - qRound(dpmY * 2.54 / 100.));
    const qreal diffCm =
        (qAbs(dpmX / 100. - qRound(dpmX / 100.)) + qAbs(dpmY / 100. - qRound(dpmY / 100.))) * 2.54;
    if (diffInch < diffCm) {
        c.out.density_unit = 1;
        c.out.X_density = UINT16(qRound(dpmX * 2.54 / 100.));
        c.out.Y_density = UINT16(qRound(dpmY * 2.54 / 100.));
    } else {
        c.out.density_unit = 2;
        c.out.X_density = UINT16((dpmX + 50) / 100);
        c.out.Y_density = UINT16((dpmY + 50) / 100);
    }
}

// Only libjpeg's frames lie between the jump and here, and nothing here has
// a destructor. False when the cover is not one to take here.
bool run(Codec &c, const QByteArray &jpeg, qint64 coefficients)
{
    if (setjmp(c.errors.jump))
        return false;
    jpeg_mem_src(&c.in, reinterpret_cast<const unsigned char *>(jpeg.constData()), static_cast<unsigned long>(jpeg.size()));
    for (const int marker : {int(JPEG_COM), JPEG_APP0 + 1, JPEG_APP0 + 2})
        jpeg_save_markers(&c.in, marker, 1);
    if (jpeg_read_header(&c.in, TRUE) != JPEG_HEADER_OK || c.in.marker_list)
        return false;
    const bool gray = c.in.jpeg_color_space == JCS_GRAYSCALE && c.in.num_components == 1;
    const bool colour =
        (c.in.jpeg_color_space == JCS_YCbCr || c.in.jpeg_color_space == JCS_RGB) && c.in.num_components == 3;
    const qint64 width = c.in.image_width, height = c.in.image_height;
    if ((!gray && !colour) || width == 0 || height == 0 || width > CoverImage::kMaxSide
        || height > CoverImage::kMaxSide || width * height > CoverImage::kWholePixels
        || coefficients > qint64(CoverImage::kJpegCoefficientLimitMb) * 1024 * 1024)
        return false;
    c.in.out_color_space = gray ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&c.in);

    jpeg_mem_dest(&c.out, &c.bytes, &c.size);
    c.out.image_width = c.in.output_width;
    c.out.image_height = c.in.output_height;
    c.out.input_components = gray ? 1 : 3;
    c.out.in_color_space = gray ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&c.out);
    setDensity(c);
    jpeg_set_quality(&c.out, c.quality, TRUE);
    jpeg_start_compress(&c.out, TRUE);

    // Decoded whole, then encoded: handing each row on as it is decoded made
    // the encoder's colour conversion stall on rows just written, half as
    // much work again.
    JSAMPARRAY rows = (c.in.mem->alloc_sarray)(reinterpret_cast<j_common_ptr>(&c.in), JPOOL_IMAGE,
                                               c.in.output_width * JDIMENSION(c.out.input_components),
                                               c.in.output_height);
    while (c.in.output_scanline < c.in.output_height)
        jpeg_read_scanlines(&c.in, rows + c.in.output_scanline, c.in.output_height - c.in.output_scanline);
    while (c.out.next_scanline < c.out.image_height)
        jpeg_write_scanlines(&c.out, rows + c.out.next_scanline, c.out.image_height - c.out.next_scanline);
    jpeg_finish_compress(&c.out);
    jpeg_finish_decompress(&c.in);
    return true;
}

} // namespace

std::optional<QByteArray> JpegReencoder::reencode(const QByteArray &jpeg, int quality)
{
    const char *format = CoverImage::formatOf(jpeg);
    if (!format || qstrcmp(format, "jpeg") != 0)
        return std::nullopt;
    // The cover decoder looks this far for the frame header.
    const auto coefficients = CoverImage::jpegCoefficientBytes(QByteArrayView(jpeg).first(qMin(jpeg.size(), 1 << 20)));
    if (!coefficients)
        return std::nullopt;

    Codec c;
    c.quality = quality >= 0 ? qMin(quality, 100) : 75;
    // A picture without a density gets the one a new QImage has.
    const QImage blank(1, 1, QImage::Format_Grayscale8);
    c.defaultDpmX = blank.dotsPerMeterX();
    c.defaultDpmY = blank.dotsPerMeterY();
    c.in.err = jpeg_std_error(&c.errors);
    c.out.err = &c.errors;
    c.errors.error_exit = jumpOnError;
    c.errors.output_message = ignoreMessage;
    jpeg_create_decompress(&c.in);
    jpeg_create_compress(&c.out);
    const bool done = run(c, jpeg, *coefficients);
    jpeg_destroy_decompress(&c.in);
    jpeg_destroy_compress(&c.out);
    std::optional<QByteArray> result;
    if (done)
        result = QByteArray(reinterpret_cast<const char *>(c.bytes), qsizetype(c.size));
    std::free(c.bytes);
    return result;
}

} // namespace tomewise
