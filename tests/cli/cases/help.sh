try --version
try --help
try --list-formats
