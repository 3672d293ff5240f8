#pragma once

#include <QByteArray>

#include <optional>

namespace tomewise {

// A JPEG cover decoded by libjpeg straight into the rows its encoder takes,
// set up as Qt's JPEG writer sets it up: the same bytes as decoding the cover
// to a QImage and writing that, without the image, its conversions or the
// plugin look-ups. Only covers whose QImage would hold nothing but pixels and
// a density are taken (no comment, Exif or ICC marker, no CMYK, nothing the
// cover decoder would refuse or read scaled); for the rest, and on any error,
// the answer is null and the caller goes the long way.
class JpegReencoder
{
public:
    // `quality` as Qt's writer takes it, 0 to 100.
    static std::optional<QByteArray> reencode(const QByteArray &jpeg, int quality);
};

} // namespace tomewise
