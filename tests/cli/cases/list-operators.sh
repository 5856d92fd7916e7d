# The list of operators: headings in order, a parameter with its default and range.
"$cli" --list-operators >operators.txt
grep -v '^ ' operators.txt
grep -A2 '^  Exposure (' operators.txt
grep -A1 '^  Lut (' operators.txt
