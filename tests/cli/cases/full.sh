# What cannot be written whole is not written at all.
image large in.exr
for extension in txr exr png tif jpg jp2 hdr tga bmp; do
    echo precious >"out.$extension"
    (
        ulimit -f 8
        try in.exr -o "out.$extension"
    )
    cat "out.$extension"
done
ls -A
