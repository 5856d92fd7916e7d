# Denoising needs what the renderer stores for it; what it makes comes back from a TXR file.
image noisy in.exr
same() {
    cmp -s "$1" "$2" && echo "$1 is the same as $2" || echo "$1 is not the same as $2"
}
try in.exr -o plain.png
try in.exr -o fireflies.png --denoise fireflies
try in.exr -o amount.png --denoise fireflies --set denoiseAmount=0
same fireflies.png plain.png
same amount.png plain.png
try in.exr -o saved.txr --denoise fireflies
try saved.txr -o again.png
same again.png fireflies.png

try in.exr -o x.png --denoise quality
try in.exr -o x.png --denoise fireflies --element Plain
try in.exr -o x.png --denoise best
try in.exr --info --denoise auto
image render render.exr
try render.exr -o x.png --denoise auto
ls
