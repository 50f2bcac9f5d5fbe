#!/bin/sh
# Annotates the example data with the program of a finished build.
#
#     examples/demo.sh BUILD_DIR OUT_DIR
set -u

if [ $# -ne 2 ]; then
    echo "usage: examples/demo.sh BUILD_DIR OUT_DIR" >&2
    exit 2
fi
pelgrin=$1/apps/pelgrin/pelgrin
out=$2
data=$(dirname "$0")/data
if [ ! -x "$pelgrin" ]; then
    echo "demo: $pelgrin is missing; build the target pelgrin first" >&2
    exit 1
fi

echo "Looking for the b and y ions of identified peptides in their spectra."
echo "Here b ions hold the peptide's beginning and y ions its end."
echo
"$pelgrin" annotate \
    --spectra "$data/demo.mgf" --psms "$data/demo_psms.txt" --format "Calvex (.txt)" \
    --tolerance 20ppm --ions b,y \
    --mod "Oxidation (M)=15.994915" --mod "Carbamidomethyl (C)=57.021464" \
    --out "$out"
status=$?

# Three rows of the table have no spectrum on purpose: that is status 3.
if [ "$status" -eq 3 ]; then
    echo
    echo "The three matches without spectrum are there on purpose: pelgrin names what it"
    echo "cannot use, and says so with exit status 3."
    exit 0
fi
exit "$status"
