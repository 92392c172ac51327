#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# The tools of the test of the binary contract.
#   contract.sh <readelf> <library> <list> <actual> names <pattern>
#     Writes the mangled names of the exported symbols that match.
#   contract.sh <readelf> <library> <list> <actual> compare
#     Completes the text on standard input with the symbols, leaves it in <actual>, and writes how
#     it differs from the list, or "none".
export LC_ALL=C
readelf=$1 library=$2 list=$3 actual=$4

# Only a build without optimisation has the table of the codec information interface, and one with
# sanitizers has type information of Qt's classes.
elf() {
    "$readelf" -dsW "$library" |
        grep -vE '_ZTV33QFLMediaServiceCodecInfoInterface|_ZTI[0-9]+(QMedia|QObject)'
}

# The variants of a constructor become one, as not every compiler makes all for an abstract class.
symbols() {
    elf | sed -nE 's/.*(soname: .*|NODELETE).*/\1/p
        s/.* LOCAL .* (_ZTI[0-9].*)/internal \1/p
        s/.* [0-9]+ ([^ ]+)@@(.*)/\2 \1/p' | c++filt | sort -u
}

case $5 in
names)
    elf | sed -nE "s/.* ($6)@@.*/\1/p" | sort
    ;;
compare)
    { grep '^#' "$list"; c++filt | sed 's, $,,'; printf '\nSymbols\n'; symbols; } > "$actual"
    diff "$list" "$actual" && echo none
    ;;
esac
