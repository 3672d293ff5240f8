#!/usr/bin/env bash
# Sets up Tomewise on Debian 12: installs the packages it lacks, builds, then
# either starts the app (run) or runs the whole test suite (test).
set -euo pipefail

mode=${1:-}
case "$mode" in
  run|test) shift ;;
  *) echo "usage: scripts/setup.sh run|test [app options]" >&2; exit 2 ;;
esac

cd "$(dirname "$0")/.."

packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
  qml6-module-qtquick-window qml6-module-qtquick-templates qml6-module-qtqml-workerscript
  qml6-module-qtquick-dialogs qml6-module-qtqml qml6-module-qttest qml6-module-qtcore
  qml6-module-qt-labs-platform qml6-module-qt-labs-folderlistmodel qml6-module-qtquick-pdf qt6-pdf-dev
  qt6-multimedia-dev qml6-module-qtmultimedia
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good
  libqt6sql6-sqlite libsqlite3-dev libicu-dev libjpeg-dev libzxing-dev zint libcsv-dev
  fonts-liberation2 fonts-material-design-icons-iconfont fonts-noto-color-emoji fonts-noto-cjk
  sqlite3 libjpeg-turbo-progs xdg-utils poppler-utils
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -eq 0 ]; then
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -y -q "${missing[@]}"
  else
    echo "Tomewise needs these Debian packages; install them as root with:" >&2
    echo "  sudo apt-get install -y ${missing[*]}" >&2
    exit 1
  fi
fi

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build

if [ "$mode" = run ]; then
  exec build/tomewise "$@"
fi

cd build
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
ctest --output-on-failure
