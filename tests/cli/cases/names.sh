# Names from a file stay in the folder that is asked for, and command no terminal.
image names in.exr
try in.exr --list-elements
try in.exr --info | cut -c 1-40 | head -32
mkdir out
try in.exr -o out/shot.png --element '*' --progress always 2>&1 | tr '\r\033' '\n#'
ls . out
