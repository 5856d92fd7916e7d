# Settings come from the image, files and the command line, show in the picture, and are saved.
image render in.exr
pipeline='{"version":1,"operators":[{"type":"Exposure","enabled":true,"stops":-2.0}]}'
printf '%s\n' "$pipeline" >dark.ttm
printf 'Tavrin settings 1\ncolorMap.pipeline = %s\n' "$pipeline" >dark.tvpost
printf 'Tavrin settings 1\ncolorMap.enabled = false\n' >off.tvpost
same() {
    cmp -s "$1" "$2" && echo "$1 is the same as $2" || echo "$1 is not the same as $2"
}
try in.exr -o default.png
try in.exr -o preset.png --preset dark.ttm
try in.exr -o file.png --settings dark.tvpost
try in.exr -o off.png --settings off.tvpost
try in.exr -o none.png --no-tone-mapping --preset dark.ttm
same preset.png default.png
same file.png preset.png
same off.png default.png
same none.png off.png

# The camera takes part where the tone mapping asks for it; a LUT that is missing is left out.
printf '{"version":1,"operators":[{"type":"PhotographicExposure","enabled":true}]}' >camera.ttm
try in.exr -o camera.png --preset camera.ttm
try in.exr -o camera2.png --preset camera.ttm --set cameraIso=25
same camera.png off.png
same camera2.png preset.png
printf '{"version":1,"operators":[{"type":"Lut","enabled":true,"path":"none.cube"}]}' >lut.ttm
try in.exr -o lut.png --preset lut.ttm
same lut.png off.png

# A preset by its name; a LUT beside its preset.
try in.exr -o look.png --preset 'Black and White'
mkdir looks
printf 'LUT_3D_SIZE 2\n' >looks/invert.cube
for b in 1 0; do for g in 1 0; do for r in 1 0; do echo "$r $g $b"; done; done; done >>looks/invert.cube
printf '{"version":1,"operators":[{"type":"Lut","path":"invert.cube"}]}' >looks/invert.ttm
try in.exr -o invert.png --preset looks/invert.ttm
same invert.png off.png

# What is saved in an image comes back from there.
try in.exr -o saved.txr --preset dark.ttm --set lightMixColor='1 1 1, 0.5 1 1' --set 355=3
try saved.txr -o saved.png
same saved.png preset.png
try saved.txr --save-settings saved.tvpost --set bloomIntensity=0.1
grep -E '^(Tavrin|lightMix|bloomIntensity|glareStreakCount|colorMap)' saved.tvpost

# Later sources come before earlier ones; each file gives only what it is asked for.
printf 'Tavrin settings 1\nbloomIntensity = 7\nlightMixIntensity = 3\n' >seven.tvpost
try --save-settings a.tvpost --settings seven.tvpost
try --save-settings b.tvpost --lightmix seven.tvpost
try --save-settings c.tvpost --settings seven.tvpost --set bloomIntensity=8
grep -E '^(bloomIntensity|lightMixIntensity)' [abc].tvpost
try --save-settings all.tvpost --settings saved.tvpost
same all.tvpost saved.tvpost

# What cannot be used in a file is told, the rest is taken.
printf 'Tavrin settings 1\nbloomIntensity = much\nno sense\nglareIntensity = 9\n' >partly.tvpost
try --save-settings d.tvpost --settings partly.tvpost
grep glareIntensity d.tvpost
try --save-settings d.tvpost --settings partly.tvpost --quiet

# In an image too; when several are merged, the first one counts.
image settings broken.exr
try broken.exr -o e.png
try broken.exr in.exr -o f.png --weights 1

# Wrong ones: one sentence, and nothing is saved.
rm d.tvpost
for file in dark.ttm in.exr missing.tvpost .; do
    try --save-settings d.tvpost --settings "$file"
    try --save-settings d.tvpost --lightmix "$file"
done
try in.exr -o d.png --preset dark.tvpost
try in.exr -o d.png --preset 'No Such Look'
for value in bloomIntensity nothing=1 9999=1 bloomIntensity=much glareStreakCount=99 '=1'; do
    try --save-settings d.tvpost --set "$value"
done
try in.exr --save-settings in.exr
try in.exr --save-settings dark.ttm
try --save-settings ''
try in.exr --info --set bloomIntensity=1
ls
