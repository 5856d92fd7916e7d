# Several images of the same frame become one, by weights.
image clash a.exr
image render b.exr
try a.exr -o single.png --no-tone-mapping
try a.exr a.exr -o same.png --no-tone-mapping --weights 2
cmp same.png single.png && echo "an image merged with itself is the image"
try a.exr b.exr -o first.png --no-tone-mapping --weights 3,0
cmp first.png single.png && echo "weight 0 leaves an image out"
try a.exr b.exr -o both.png --no-tone-mapping --weights 1,%A
cmp -s both.png single.png || echo "a channel of weights counts"
try a.exr b.exr -o merged.txr --weights 1
try merged.txr --list-elements

try a.exr b.exr -o x.png
try a.exr b.exr -o x.png --weights 1,2,3
try a.exr b.exr -o x.png --weights A,1
try a.exr none.exr -o x.png --weights 1
try b.exr a.exr none.exr -o x.png --weights 1
try a.exr b.exr -o x.png --weights 1,
try a.exr b.exr -o x.png --weights -1
try a.exr b.exr -o x.png --weights nan
try a.exr b.exr -o x.png --weights 0
try a.exr b.exr -o x.png --weights 1e39
try a.exr b.exr -o x.png --weights R
try a.exr none.exr --save-settings x.tvpost --weights 1
try a.exr b.exr --list-elements --weights 1
try a.exr -o x.png --weights 1
try a.exr b.exr -o b.exr --weights 1
try a.exr b.exr -o x.png --weights 1 --progress always 2>&1 | tr '\r\033' '\n#'
ls
