#pragma once

#include <QByteArray>
#include <QImage>

namespace tomewise::test {

// A picture with detail (gradients and stripes), so that JPEG quality shows in its size.
QImage coverImage(QSize size = QSize(250, 360), int seed = 0);
QByteArray encode(const QImage &image, const char *format, int quality = -1);

} // namespace tomewise::test
