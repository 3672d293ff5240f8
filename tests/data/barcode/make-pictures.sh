#!/bin/sh
# Makes the barcode pictures the decoder tests read: clean symbols from zint,
# then camera-like 1280x720 grey frames made with ImageMagick (rotated, scaled,
# blurred, noisy, low contrast, in a corner, two codes at once, no code).
# Run from anywhere; writes into this folder. Needs zint and imagemagick.
set -eu
cd "$(dirname "$0")"

zint -b EANX -d "9780060853983+51599" --scale=2 -o ean13-addon.png
zint -b EANX -d "9780060853983" --scale=2 -o ean13.png
zint -b EANX -d "9638507" --scale=3 -o ean8.png
zint -b QRCODE -d "https://example.org/books/42" --scale=6 -o qr.png
zint -b PDF417 -d "ISBN 9780060853983" --scale=2 -o pdf417.png
zint -b AZTEC -d "Tomewise 42" --scale=6 -o aztec.png
zint -b CODE39 -d "TOMEWISE-42" --scale=2 -o code39.png
zint -b CODE93 -d "TOMEWISE 93" --scale=2 -o code93.png
zint -b CODE128 -d "Tomewise-128" --scale=2 -o code128.png
zint -b DATAMATRIX -d "Tomewise DM" --scale=6 --quietzones -o datamatrix.png
zint -b ITF14 -d "1540014128876" --scale=2 -o itf14.png
zint -b EANX -d "4006381333931" --scale=2 -o ean13-other.png

frame="-size 1280x720 xc:gray85"
gray="-colorspace Gray -depth 8 -strip -define png:exclude-chunk=date,time"
convert $frame ean13.png -gravity center -composite $gray frame-plain.png
convert $frame \( ean13.png -background gray85 -rotate 10 \) -gravity center -composite $gray frame-rotated.png
convert $frame \( ean13.png -resize 60% \) -gravity center -composite $gray frame-scaled.png
convert $frame ean13.png -gravity center -composite -blur 0x1.5 $gray frame-blurred.png
# Noise on the whole frame would make a 1.7 MB file; JPEG keeps it small and camera-like.
convert $frame ean13.png -gravity center -composite -seed 7 -attenuate 0.6 +noise Gaussian $gray -quality 80 frame-noise.jpg
convert $frame \( ean13.png +level 35%,70% \) -gravity center -composite $gray frame-lowcontrast.png
convert $frame ean13.png -gravity northwest -geometry +20+20 -composite $gray frame-corner.png
convert $frame \( ean13.png -resize 80% \) -gravity west -geometry +40+0 -composite \
        qr.png -gravity east -geometry +60+0 -composite $gray frame-ean13-qr.png
convert $frame ean13-other.png -gravity north -geometry +0+40 -composite \
        \( ean13.png -resize 70% \) -gravity south -geometry +0+40 -composite $gray frame-two-ean13.png
convert $frame \( qr.png -resize 50% \) -gravity northeast -geometry +40+40 -composite \
        \( pdf417.png -resize 200% \) -gravity southwest -geometry +40+40 -composite $gray frame-qr-pdf417.png
convert $frame $gray frame-empty.png
# A phone held upright sees a portrait frame.
convert -size 720x1280 xc:gray80 \( ean13.png -resize 75% -background gray80 -rotate -4 \) -gravity center \
        -geometry +0+60 -composite $gray frame-portrait.png
