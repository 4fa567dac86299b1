#!/bin/bash
# with-xserver.sh COMMAND...: runs it under an X server of its own. The server picks its number itself, so any number of
# these run at once.
set -u
work=$(mktemp -d)
mkfifo "$work/number"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$work/number" >/dev/null 2>"$work/log" &
server=$!
trap 'kill $server 2>/dev/null; wait $server 2>/dev/null; rm -rf "$work"' EXIT
if ! read -r number <"$work/number"; then
  echo "with-xserver.sh: Xvfb did not start" >&2
  cat "$work/log" >&2
  exit 1
fi
DISPLAY=:$number "$@"
