#!/usr/bin/env bash
# Runs the sample host on a model: demo.sh [MODEL.gml...]. Needs no set-up: it installs what is
# missing. Without a model it takes one of ours.
set -euo pipefail

here=$PWD
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/scripts/steps.sh"

models=()
for model in "$@"; do
    case "$model" in
        /*) models+=("$model") ;;
        *) models+=("$here/$model") ;;
    esac
    [ -f "${models[-1]}" ] || { echo "demo.sh: there is no file $model" >&2; exit 2; }
done
[ ${#models[@]} -gt 0 ] || models=("$root/host/models/order.gml")
cd "$root"

output=$root/demo-output
display=$(mktemp -d)
stop() {
    cmake/wine-down >/dev/null 2>&1 || true
    rm -rf "$display"
}
trap stop EXIT

step "Installing missing packages" scripts/install-packages.sh demo
step "Building dependencies" scripts/build-deps.sh
step "Building the library and the host" scripts/build.sh cross-release -DZBASIC_TESTS=OFF
step "Starting Wine" cmake/wine-up
rm -rf "$output"
mkdir -p "$output"
step "Exporting, and taking a picture of the window" \
    xvfb-run -a -s "-screen 0 1280x800x24 -fbdir $display" \
    scripts/show-host.sh "$output" "$display" "${models[@]}" -runfigures || exit
mkdir "$output/filtered"
step "Doing so with the nodes that match *order*" \
    xvfb-run -a -s "-screen 0 1280x800x24 -fbdir $display" \
    scripts/show-host.sh "$output/filtered" "$display" "${models[@]}" '-match*order*' || exit
show() { sed -e 's/Z:\\/\//' -e 's/\\/\//g' -e "s|$root/||" "$1"; }
show "$output/summary.txt"
show "$output/filtered/summary.txt"
echo "Picture of the window: ${output#"$root"/}/window.png"
echo "The log ends (${output#"$root"/}/zelhost.log):"
tail -n 3 "$output/zelhost.log" | sed -e 's/\r$//' -e 's/^/  /'
