# A list of jobs runs, each by itself.
image render in.exr
mkdir shots
image render shots/passes.exr
cat >shots/jobs.json <<'JSON'
{
  "defaults": {"no-tone-mapping": true, "set": {"bloomIntensity": 2}},
  "jobs": [
    {"inputs": "../in.exr", "output": "a.png", "format-option": {"bitdepth": 16}},
    {"name": "gone", "inputs": ["none.exr"], "output": "none.png"},
    {"name": "merged", "inputs": ["../in.exr", "../in.exr"], "output": "b.txr", "weights": [1, "A"],
     "save-settings": "b.tvpost", "no-tone-mapping": false,
     "set": {"lightMixEnabled": [true, false], "sharpenAmount": 0.5}},
    {"inputs": "passes.exr", "output": "passes.png", "element": "*", "set": null},
    {"name": "two", "inputs": "../in.exr", "output": "c.png", "element": "No Such"}
  ]
}
JSON
try batch shots/jobs.json
try in.exr -o alone.png --no-tone-mapping --format-option bitdepth=16 --set bloomIntensity=2
cmp shots/a.png alone.png && echo "the same as on its own"
grep -E '^(lightMixEnabled|sharpenAmount|bloomIntensity)' shots/b.tvpost
ls shots

# What is newer than all it comes from is not done again.
touch -d '-1 minute' in.exr
try batch shots/jobs.json --resume
touch -d '+1 minute' in.exr
try batch shots/jobs.json --resume --slice 1/2
touch -d '+2 minutes' shots/b.txr shots/a.png
try batch shots/jobs.json --resume --slice 1/2 --quiet
touch -d '+3 minutes' shots/b.tvpost
try batch shots/jobs.json --resume --slice 1/2 --jobs 3 --threads 2
rm shots/a.png
try batch shots/jobs.json --resume --slice 1/5
rm shots/passes_Key.png
try batch shots/jobs.json --resume --slice 4/5
try batch shots/jobs.json --resume --slice 4/5
try batch shots/jobs.json --slice 5/5 --progress always 2>&1 | tr '\r\033' '\n#'
try batch shots/jobs.json --slice 9/9

# Jobs that would disturb each other: none runs.
jobs() {
    printf '%s' "$1" >jobs.json
    try batch jobs.json
}
jobs '{"jobs": [{"inputs": "in.exr", "output": "x.png"}, {"inputs": "in.exr", "output": "shots/../x.png"}]}'
jobs '{"jobs": [{"inputs": "x.exr", "output": "y.txr"}, {"inputs": "in.exr", "output": "y.png"}, {"inputs": "./y.txr", "output": "z.png"}]}'
jobs '{"jobs": [{"save-settings": "s.tvpost"}, {"inputs": "in.exr", "output": "x.png", "settings": "s.tvpost"}]}'
jobs '{"jobs": [{"inputs": "in.exr", "output": "x.png", "element": "*"}, {"inputs": "in.exr", "output": "x_Key.png"}]}'
jobs '{"jobs": [{"aperture": "x.png"}, {"name": "b", "inputs": "in.exr", "output": "x_psf.png"}]}'

# Jobs that make no sense.
jobs '{"jobs": [1, {"colour": 1}, {"threads": 2}, {"help": true}, {"output": 5}, {"inputs": 5},
    {"inputs": ["in.exr", 1]}, {"no-tone-mapping": 1}, {"set": 1}, {"set": {"a": {}}},
    {"set": {"a": [[1]]}}, {"weights": {}}, {"name": 1}, {"name": "zero", "inputs": "in\u0000.exr"},
    {}, {"element": "Key"}, {"inputs": "in.exr", "output": "x.png", "denoise": "very"},
    {"inputs": "in.exr", "output": "y.png", "set": "bloomIntensity"},
    {"inputs": "-x.exr", "output": "z.png"}, {"name": "good", "inputs": "in.exr", "output": "-x.png"}]}'
for file in '' '[]' '{}' '{"jobs": [{"output": "a.png", "output": "b.png"}]}' '{"jobs": []}' '{"jobs": {}}' '{"jobs": [{}], "job": 1}' '{"jobs": [{}], "defaults": 1}'; do
    jobs "$file"
done
try batch none.json
try batch
try batch jobs.json more.json
try batch jobs.json --jobs 0
for slice in '' 1 0/2 3/2 1/2/3 a/b -1/2; do
    try batch jobs.json --slice "$slice"
done
ls
try batch --help
