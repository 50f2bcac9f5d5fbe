#!/bin/sh
# Does the run of examples/data/demo.ini with the program of a finished build.
#
#     examples/demo.sh BUILD_DIR OUT_DIR
#
# The results go to OUT_DIR; the file itself says build/demo.
set -u

if [ $# -ne 2 ]; then
    echo "usage: examples/demo.sh BUILD_DIR OUT_DIR" >&2
    exit 2
fi
pelgrin=$1/apps/pelgrin/pelgrin
if [ ! -x "$pelgrin" ]; then
    echo "demo: $pelgrin is missing; build the target pelgrin first" >&2
    exit 1
fi
pelgrin=$(cd "$(dirname "$pelgrin")" && pwd)/pelgrin
mkdir -p "$2" || exit 1
out=$(cd "$2" && pwd)

# The paths of demo.ini begin in the folder above examples.
cd "$(dirname "$0")/.." || exit 1
parameters=examples/data/demo.ini
if [ "$out" != "$(pwd)/build/demo" ]; then
    parameters=$out/demo.ini
    sed "s|^output = .*|output = $out|" examples/data/demo.ini >"$parameters" || exit 1
fi

echo "Looking for the b and y ions of identified peptides in their spectra."
echo "Here b ions hold the peptide's beginning and y ions its end. The proteins are"
echo "read, too, so that modified sites are told by their places in them."
echo
echo "    pelgrin run $parameters --fasta examples/data/demo.fasta"
echo
"$pelgrin" run "$parameters" --fasta examples/data/demo.fasta
status=$?

# Three rows of the table have no spectrum on purpose: that is status 3.
if [ "$status" -eq 3 ]; then
    echo
    echo "The three matches without spectrum are there on purpose: pelgrin names what it"
    echo "cannot use, and says so with exit status 3."
    exit 0
fi
exit "$status"
