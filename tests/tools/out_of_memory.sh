#!/usr/bin/env bash
# Runs the tool on a text that is larger than the memory it may take, once as a file and once as standard input; it has
# to say so and end with 2, for every command that reads texts.
set -euo pipefail
tool=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
head -c 64M /dev/zero > "$folder/large.cfg"
: > "$folder/empty.cfg"
ulimit -v 100000 # kB
for arguments in "check large.cfg" "show large.cfg" "explain verbosity large.cfg" "sections large.cfg" \
    "diff large.cfg empty.cfg" "diff empty.cfg large.cfg" "check -"; do
    status=0
    # shellcheck disable=SC2086 # the words are arguments
    said=$(cd "$folder" && "$tool" $arguments 2>&1 < large.cfg) || status=$?
    if [ "$status $said" != "2 dalvo-config: out of memory" ]; then
        echo "dalvo-config $arguments: status $status, says: $said"
        exit 1
    fi
done
