# The lights of a render are mixed by the settings; sharpening and blurring show in the picture.
image render in.exr
same() {
    cmp -s "$1" "$2" && echo "$1 is the same as $2" || echo "$1 is not the same as $2"
}
mix() {
    try in.exr --element 'LightMix Interactive' "$@"
}
mix -o mix.png
mix -o double.png --set lightMixIntensity=2
mix -o tinted.png --set 'lightMixColor=1 0.5 0.25'
mix -o off.png --set lightMixEnabled=false
mix -o black.png --set lightMixIntensity=0
same double.png mix.png
same tinted.png mix.png
same off.png black.png
same off.png mix.png

try in.exr -o plain.png
try in.exr -o sharp.png --set sharpenBlurEnabled=true
try in.exr -o blurred.png --set sharpenBlurEnabled=true --set sharpenAmount=0 --set blurRadius=2
try in.exr -o none.png --set sharpenBlurEnabled=true --set sharpenAmount=0
same sharp.png plain.png
same blurred.png sharp.png
same none.png plain.png
# Light selects are data: they are neither mapped nor sharpened.
try in.exr -o key.png --element Key
try in.exr -o key-sharp.png --element Key --set sharpenBlurEnabled=true
same key-sharp.png key.png

image clash without.exr
try without.exr -o x.png --element 'LightMix Interactive'
