# Lights glow in the picture when the settings say so; the aperture can be looked at on its own.
image noisy in.exr
same() {
    cmp -s "$1" "$2" && echo "$1 is the same as $2" || echo "$1 is not the same as $2"
}
layer() {
    try in.exr --element 'Bloom and Glare Interactive' "$@"
}
on() {
    try in.exr --set bloomGlareEnabled=true "$@"
}
try in.exr -o plain.png
on -o both.png
on -o bloom.png --set glareIntensity=0
on -o none.png --set glareIntensity=0 --set bloomIntensity=0
on -o dark.png --set bloomGlareThreshold=100
same both.png plain.png
same bloom.png both.png
same none.png plain.png
same dark.png plain.png
# The layer of the beauty is an element.
layer -o off.png
layer -o layer.png --set bloomGlareEnabled=true
layer -o black.png --set bloomGlareEnabled=true --set bloomGlareThreshold=100
same off.png black.png
same off.png layer.png

# The mix has a layer of its own.
image render render.exr
mix() {
    try render.exr --element 'LightMix Interactive' --set lightMixIntensity=4 "$@"
}
mix -o mix.png
mix -o glowing.png --set bloomGlareEnabled=true
same glowing.png mix.png

try --aperture aperture.png
try --aperture round.tif --set apertureCustom=true --set apertureBladed=false
try --aperture other.png --set glareStreakCount=8
same other.png aperture.png
same other_psf.png aperture_psf.png
try --aperture aperture.what
try --aperture ''
try --aperture nowhere/aperture.png
cp in.exr in_psf.exr
try in.exr --aperture in.exr
try in_psf.exr --aperture in.exr
cmp in.exr in_psf.exr
try in.exr -o out_psf.png --aperture out.png
ls
