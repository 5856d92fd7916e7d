# Wrong command lines: one sentence and exit code 2, before any file is opened.
image render in.exr
try
try in.exr
try --no-such-option
try in.exr second.exr --info
try --info
try in.exr --json
try in.exr --json --info --list-properties
try in.exr --element BEAUTY
try in.exr --element '' -o out.png
try in.exr --format-option quality=90 --info
try in.exr -o out
try in.exr -o out.xyz
try in.exr -o ''
try in.exr -o out.png --threads 0
try in.exr -o out.png --threads many
try in.exr -o out.png --progress sometimes
try in.exr -o out.png --format-option bitdepth=7
try in.exr -o out.png --format-option shine=1
try in.exr -o out.png --format-option bitdepth
try in.exr -o out.txr --format-option bitdepth=16
try in.exr -o out.txr --save-settings out.txr
try in.exr -o out.png --set 'lightMixIntensity=1,nan'
try in.exr -o out.png --set 'lightMixColor=1 inf 1'
try in.exr -o in.exr
try in.exr -o ./in.exr
ls
