#!/bin/sh
# A whole installation under a prefix of its own. Arguments: cmake, the build tree, the folders of
# programs, libraries and data below a prefix, and something when a browser engine was built.
set -eu

cmake=$1
build=$2
bin=$3
lib=$4
share=$5
engine=${6:-}

root=$(mktemp -d)
trap 'rm -rf -- "$root"' EXIT
prefix="$root/prefix"
"$cmake" --install "$build" --prefix "$prefix" >"$root/log" || { cat "$root/log"; exit 1; }

for file in "$bin/qinghe" "$lib/qinghe/qinghe" "$bin/qinghe-portal" "$share/qinghe/DATA.MDB" \
  "$share/applications/qinghe.desktop" "$share/metainfo/cn.qinghe.client.metainfo.xml" \
  "$share/icons/hicolor/scalable/apps/qinghe.svg" lib/systemd/system/qinghe-portal.service; do
  [ -s "$prefix/$file" ] || { echo "missing: $file"; exit 1; }
done
# The client looks for its browser engine beside itself.
if [ -n "$engine" ] && [ ! -s "$prefix/$lib/qinghe/qinghe-browser-engine.so" ]; then
  echo "missing: the browser engine"
  exit 1
fi
for program in "$bin/qinghe" "$lib/qinghe/qinghe" "$bin/qinghe-portal"; do
  [ -x "$prefix/$program" ] || { echo "not executable: $program"; exit 1; }
done
grep -qF "ExecStart=$prefix/$bin/qinghe-portal " "$prefix/lib/systemd/system/qinghe-portal.service" ||
  { echo "the unit starts another portal"; exit 1; }
if grep -rn '@[A-Z_]*@' "$prefix/$bin/qinghe" "$prefix/lib/systemd/system"; then
  echo "a path was not filled in"
  exit 1
fi
# What the starter needs is where the starter looks for it.
HOME="$root/home"
export HOME
mkdir -p "$HOME"
echo '#!/bin/sh
echo started "$0"' >"$prefix/$lib/qinghe/qinghe"
said=$(XDG_DATA_HOME="$root/data" "$prefix/$bin/qinghe")
[ "$said" = "started $root/data/qinghe/qinghe" ] || { echo "the starter said: $said"; exit 1; }
cmp "$prefix/$share/qinghe/DATA.MDB" "$root/data/qinghe/DATA.MDB"
