# One sentence that names the file, exit code 1, and nothing left behind.
image layers layers.exr
image parts parts.exr
image metadata metadata.exr
image render whole.exr
head -c 700 whole.exr >truncated.exr
: >empty.exr
printf 'This is not an image, whatever its name says.' >text.exr
mkdir folder
for file in layers.exr parts.exr metadata.exr truncated.exr empty.exr text.exr folder missing.exr; do
    try "$file" -o out.png
    try "$file" -o out.txr
    try "$file" --list-elements
done
ls
