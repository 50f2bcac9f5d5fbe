#!/bin/sh
# A whole run: invented spectra, a search by Comet, and pelgrin on its results.
#
#     examples/search.sh BUILD_DIR OUT_DIR
#
# Ends with status 1 when less comes out than went in, see search/check_search.cpp.
set -eu

fail() {
    echo "search: $*" >&2
    exit 1
}

# The program BUILD_DIR/$1, as a path from the root.
program() {
    [ -x "$build/$1" ] || fail "$build/$1 is missing; build the target $(basename "$1") first"
    echo "$build/$1"
}

# The parameter file that Comet writes, with the lines of $1 in the place of its own.
comet_parameters() {
    awk '
        !/=/ || /^#/ { if (NR != FNR) print; next }
        { key = $1 }
        NR == FNR { line[key] = $0; next }
        key in line { print line[key]; delete line[key]; next }
        { print }
        END {
            for (key in line) {
                print "search: Comet has no parameter " key > "/dev/stderr"
                bad = 1
            }
            exit bad
        }' "$1" comet.params.new
}

if [ $# -ne 2 ]; then
    echo "usage: examples/search.sh BUILD_DIR OUT_DIR" >&2
    exit 2
fi
[ -d "$1" ] || fail "there is no folder $1"
build=$(cd "$1" && pwd)
make_data=$(program examples/search/make_search_data)
check=$(program examples/search/check_search)
pelgrin=$(program apps/pelgrin/pelgrin)
# Debian calls it comet-ms.
comet=$(command -v comet-ms) || fail "comet-ms is missing; install the Debian package comet-ms"

files=$(cd "$(dirname "$0")/search" && pwd)
mkdir -p "$2"
cd "$2"
rm -rf closed open
mkdir closed open
cp "$files"/*.ini "$files/modifications.txt" .
"$make_data" .
"$comet" -p >comet.log

for search in closed open; do
    echo "==> $search search"
    comet_parameters "$files/comet_$search.changes" >"comet_$search.params"
    echo "    comet-ms -Pcomet_$search.params -N$search/search search.mgf"
    "$comet" "-Pcomet_$search.params" "-N$search/search" search.mgf >>comet.log || {
        cat comet.log >&2
        fail "comet-ms failed, see above"
    }
    echo "    pelgrin run $search.ini"
    "$pelgrin" run "$search.ini"
    echo
    "$check" "$search"
done
