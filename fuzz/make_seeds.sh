#!/bin/sh
# Makes the seeds of picture_reader_fuzz: a tiny picture in every format, and each cut in half.
# Needs ImageMagick; CONVERT names its program where it isn't "convert".
set -eu
convert=${CONVERT:-convert}
out=$(dirname "$0")/corpus/picture_reader
mkdir -p "$out"
rm -f "$out"/*

make() { # NAME OPTIONS...: a picture of 7 x 5 without the metadata that differs from run to run
  name=$1
  shift
  "$convert" -size 7x5 gradient:red-blue -strip "$@" -define png:exclude-chunks=date,time "${FORMAT:-}$out/$name"
}

make true.png -define png:color-type=2
make palette.png -colors 4 -type palette -define png:color-type=3
make alpha16.png -alpha set -channel A -evaluate set 50% +channel -define png:color-type=6 -define png:bit-depth=16
make interlaced.png -interlace PNG -define png:color-type=2
make grey.jpg -colorspace Gray -quality 50
make colour.jpg -quality 30
make progressive.jpg -interlace JPEG -quality 30
make cmyk.jpg -colorspace CMYK -quality 30
make arithmetic.jpg -define jpeg:arithmetic-coding=on -quality 30
make true.bmp -type TrueColor
make palette4.bmp -colors 4 -type palette -define bmp:format=bmp3
make rle.bmp -colors 4 -type palette -compress RLE -define bmp:format=bmp3
make alpha.bmp -alpha set -channel A -evaluate set 50% +channel
make sixteen.bmp -define bmp:subtype=RGB565
make plain.gif -colors 4
make interlaced.gif -interlace GIF -colors 8
make clear.gif -alpha set -transparent red -colors 4
make plain.xbm -monochrome
make one.ico -alpha set
make pointer.cur -colors 4
make plain.mng -define png:color-type=2
make jpeg.mng -quality 30 -compress JPEG
make plain.tif -compress None
make lzw.tif -compress LZW -colors 4 -type palette
make fax.tif -monochrome -compress Group4
make deep.tif -depth 16 -compress Zip -endian MSB
make tiled.tif -compress None -define tiff:tile-geometry=16x16
make whole32.tif -depth 32 -compress LZW
make half.tif -depth 16 -define quantum:format=floating-point -compress Zip
make single.tif -depth 32 -define quantum:format=floating-point -define tiff:tile-geometry=16x16 -compress Zip
make planes.tif -depth 16 -interlace plane -compress LZW
make ink16.tif -depth 16 -colorspace CMYK -compress Zip
make jpeg.tif -compress JPEG -quality 30
make true.pcx -type TrueColor
make palette.pcx -colors 20 -type palette
make mono.pcx -monochrome
FORMAT=tiff64: make large.tif -compress RLE
# A camera's note on how it was held, which ImageMagick doesn't write of itself, behind the start of a jpeg.
{
  head -c 2 "$out/colour.jpg"
  printf '\377\341\000\042Exif\000\000II*\000\010\000\000\000\001\000\022\001\003\000\001\000\000\000\006\000\000\000\000\000\000\000'
  tail -c +3 "$out/colour.jpg"
} > "$out/turned.jpg"

for file in "$out"/*; do
  head -c $(($(stat -c %s "$file") / 2)) "$file" > "$out/cut-$(basename "$file")"
done
