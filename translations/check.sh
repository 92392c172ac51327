#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Fails when a catalogue has other texts than the sources, or one that isn't translated.
#   check.sh <scratch folder> <catalogue>... -- <command that updates the catalogue named after it>

set -euo pipefail
scratch=$1
shift
catalogues=()
while [ "$1" != -- ]; do
    catalogues+=("$1")
    shift
done
shift

status=0
for catalogue in "${catalogues[@]}"; do
    updated=$scratch/$(basename "$catalogue")
    cp "$catalogue" "$updated"
    "$@" "$updated"
    diff -u "$catalogue" "$updated" || status=1
    grep -q '<translation>..*</translation>' "$catalogue"
    if grep -n -B1 -E 'type="unfinished"|<translation></translation>' "$catalogue"; then
        status=1
    fi
done
exit $status
