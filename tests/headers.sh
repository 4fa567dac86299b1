#!/bin/bash
# headers.sh INCLUDE_DIR COMPILER...: every public header compiles alone with each compiler, is in the umbrella header, and
# includes neither standard containers nor the headers of OpenGL and the window system.
set -u
include=$1
shift
failed=0

check() { # compiler header
  echo "#include \"$2\"" | "$1" -x c++ -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I . - ||
    { echo "$2 does not compile alone with $1"; return 1; }
}
export -f check

cd "$include" || exit 1
headers=$(ls oz/*.h) || exit 1
for compiler in "$@"; do
  xargs -P "$(nproc)" -I{} bash -c "check '$compiler' {}" <<<"$headers" || failed=1
done
brought=$(echo '#include "oz/OzScene3D.h"' | "$1" -x c++ -std=c++17 -I . -MM -) || failed=1
for header in $headers; do
  grep -qw "$header" <<<"$brought" || { echo "oz/OzScene3D.h does not bring $header"; failed=1; }
done
if grep -nE '#include <(GL|X11|EGL|(string|vector|map|set|list|deque|unordered_map|array|memory)>)' $headers; then
  echo "public headers include what they must not"
  failed=1
fi
[ $failed = 0 ] && echo "$(wc -w <<<"$headers") headers are good"
exit $failed
