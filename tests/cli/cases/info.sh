# What is in a file, for people and for programs; also of a file that cannot be loaded.
image render in.exr
try in.exr --info
try in.exr --info --json
try in.exr --list-elements
image layers layers.exr
try layers.exr --info
image metadata metadata.exr
try metadata.exr --info
