# What is there stays when it cannot be replaced, and links stay links.
image render in.exr
cp in.exr shot_Key.png
try shot_Key.png -o shot.png --element '*'
cmp in.exr shot_Key.png
try in.exr -o nowhere/out.png
try in.exr -o nowhere/out.txr
mkdir folder.png
try in.exr -o folder.png
ln -s real.png link.png
try in.exr -o link.png
readlink link.png
ls
