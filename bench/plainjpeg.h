#pragma once

#include <QByteArray>

#include <cstddef>

// The plain tool the benchmarks compare with: libjpeg-turbo decoding a JPEG
// to pixels and encoding it again at `quality` (1-100), all in memory, on one
// thread; the encoded size.
size_t plainReencode(const QByteArray &in, int quality);
