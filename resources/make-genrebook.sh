#!/bin/sh
# Draws GenreBook.jpg, the cover shown for a book without a picture: a plain
# cloth-bound book (spine band, gilt frame, title panel with ruled lines).
# Run by hand with ImageMagick when the picture should change; the JPEG is
# committed beside this script.
set -eu
cd "$(dirname "$0")"
convert -size 240x360 xc:'#2f4f6f' \
  -fill '#243e58' -draw 'rectangle 0,0 26,359' \
  -stroke '#c9a64b' -strokewidth 3 -fill none -draw 'rectangle 40,16 223,343' \
  -strokewidth 1 -draw 'rectangle 47,23 216,336' \
  -stroke none -fill '#f3ead2' -draw 'roundrectangle 66,96 197,196 6,6' \
  -stroke '#2f4f6f' -strokewidth 4 -draw 'line 84,126 179,126' \
  -strokewidth 2 -draw 'line 96,148 167,148' -draw 'line 104,166 159,166' \
  -stroke '#c9a64b' -strokewidth 2 -fill none -draw 'circle 131,262 131,282' \
  -stroke none -fill '#c9a64b' -draw 'circle 131,262 131,270' \
  -stroke '#1b2f43' -strokewidth 2 -draw 'line 26,0 26,359' \
  -strip -quality 88 GenreBook.jpg
