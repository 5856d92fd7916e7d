# One element, all of them, and the whole image.
image render in.exr
try in.exr -o beauty.png
try in.exr -o key.tif --element Key
try in.exr -o alpha.png --element Alpha
try in.exr -o depth.exr --element ZDepth
try in.exr -o none.png --element Nothing
mkdir all
try in.exr -o all/shot.png --element '*'
try in.exr -o copy.txr
try copy.txr --list-elements
try copy.txr -o again.png
cmp beauty.png again.png
try in.exr -o key.txr --element Key
try key.txr --list-elements
try in.exr -o none.txr --element Nothing
image clash clash.exr
try clash.exr -o all/clash.png --element '*'
ls . all

# Progress only where it is wanted.
try in.exr -o beauty.png --progress always 2>&1 | tr '\r\033' '\n#'
try in.exr -o beauty.png --progress always --quiet
