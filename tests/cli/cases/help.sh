try --version
try --help
try --list-formats
try --list-properties
try --list-properties --json | sed -n 1,12p
