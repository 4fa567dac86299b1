#!/bin/bash
# Installs the Debian packages that building, testing and showing need: the one place that names them. Does nothing where
# they are all there. Run by demo.sh and test.sh; also fine by hand. With the word "bench" it also installs what bench/
# needs.
set -eu

packages=(
  g++ cmake ninja-build pkg-config
  libgl-dev libglu1-mesa-dev libegl-dev freeglut3-dev libx11-dev # OpenGL, GLU, EGL, the window toolkit
  libgl1-mesa-dri libegl-mesa0 libglx-mesa0                      # their drivers, which the above do not ask for
  libpng-dev libjpeg62-turbo-dev                                 # pictures
  libsndfile1-dev libopenal-dev                                  # sounds
  libfreetype-dev libfontconfig-dev fonts-dejavu-core            # screen text
  libgtest-dev libgmock-dev xvfb                                 # tests
)
[ "${1-}" != bench ] || packages+=(libbenchmark-dev python3)

if ! command -v dpkg-query >/dev/null; then
  echo "setup: this is no Debian system; what is needed goes by these names there: ${packages[*]}" >&2
  exit 0
fi

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || state=
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" != 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: as root, install: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
