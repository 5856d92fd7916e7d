# What is there stays when it cannot be replaced.
image render in.exr
cp in.exr shot_Key.png
try shot_Key.png -o shot.png --element '*'
cmp in.exr shot_Key.png
image clash clash.exr
try clash.exr -o clash.png --element '*'
try in.exr -o nowhere/out.png
try in.exr -o nowhere/out.txr
mkdir folder.png
try in.exr -o folder.png
ls
