#!/bin/bash
# ./demo.sh [FILE...]: builds the viewer and shows a VRML 2.0 file, or the showpiece without one. Where there is no display,
# the picture goes to out/demo.png.
set -eu
top=$(cd "$(dirname "$0")" && pwd)
"$top/scripts/setup.sh"
"$top/scripts/build.sh" release ozview
[ $# -gt 0 ] || set -- "$top/examples/models/showpiece.wrl"
if [ -n "${DISPLAY:-}" ]; then exec "$top/build/release/ozview" "$@"; fi
mkdir -p "$top/out"
"$top/build/release/ozview" "$1" --output "$top/out/demo.png"
echo "There is no display: the picture is in $top/out/demo.png"
