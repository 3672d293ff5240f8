#include "plainjpeg.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

size_t plainReencode(const QByteArray &in, int quality)
{
    jpeg_decompress_struct d{};
    jpeg_error_mgr errors{};
    d.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&d);
    jpeg_mem_src(&d, reinterpret_cast<const unsigned char *>(in.constData()), in.size());
    jpeg_read_header(&d, TRUE);
    jpeg_start_decompress(&d);
    const int stride = int(d.output_width * d.output_components);
    std::vector<unsigned char> pixels(size_t(stride) * d.output_height);
    while (d.output_scanline < d.output_height) {
        unsigned char *row = pixels.data() + size_t(d.output_scanline) * stride;
        jpeg_read_scanlines(&d, &row, 1);
    }
    jpeg_compress_struct c{};
    c.err = jpeg_std_error(&errors);
    jpeg_create_compress(&c);
    unsigned char *out = nullptr;
    unsigned long outSize = 0;
    jpeg_mem_dest(&c, &out, &outSize);
    c.image_width = d.output_width;
    c.image_height = d.output_height;
    c.input_components = d.output_components;
    c.in_color_space = d.out_color_space;
    jpeg_set_defaults(&c);
    jpeg_set_quality(&c, quality, TRUE);
    jpeg_start_compress(&c, TRUE);
    while (c.next_scanline < c.image_height) {
        unsigned char *row = pixels.data() + size_t(c.next_scanline) * stride;
        jpeg_write_scanlines(&c, &row, 1);
    }
    jpeg_finish_compress(&c);
    jpeg_finish_decompress(&d);
    jpeg_destroy_decompress(&d);
    jpeg_destroy_compress(&c);
    free(out);
    return outSize;
}

