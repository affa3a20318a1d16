#!/usr/bin/env bash
# Measures the product against other ways of doing the same and prints one table of ratios, in some minutes:
# ./bench.sh [section...]; ./bench.sh --write puts the table of a whole run into docs/performance.md.
# Sections: calls bus add add-in-memory html bodies digests accounts snapshots loading header.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/scripts/setup.sh"

build release bench_table bench_host bundles
export LC_ALL=C.UTF-8
table=$root/build/release/bin/bench_table
page=$root/docs/performance.md

machine() {
    local model
    model=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n 1)
    echo "Measured on $(date +%Y-%m-%d): $(nproc) cores of ${model:-unknown}, $(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release), $(c++ --version | head -n 1)."
}

if [ "${1:-}" != --write ]; then
    machine
    exec "$table" "$@"
fi
result=$(machine; echo; "$table")
{
    sed '/<!-- table -->/q' "$page"
    printf '\n%s\n\n' "$result"
    sed -n '/<!-- end of table -->/,$p' "$page"
} > "$page.new"
mv "$page.new" "$page"
