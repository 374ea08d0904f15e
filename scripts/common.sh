# Shared by run, test and the checks of the project: where it stands, what it needs, how it builds.
# shellcheck shell=bash

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export top

# So that a fresh clone elsewhere finds what was compiled here.
export CCACHE_BASEDIR=$top CCACHE_NOHASHDIR=1

# The superuser, as in a container, cannot have the sandbox of the pages' engine.
[ "$(id -u)" != 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1

# What passes says so in one line, so that a failure is seen.
export GTEST_BRIEF=1

say() { printf '== %s\n' "$*"; }

# Installs what the named groups of scripts/packages.txt lack. Asks for rights only then, and needs
# no network once all is there.
need() {
  local group package missing=()
  for group in "$@"; do
    while read -r package; do
      dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
        missing+=("$package")
    done < <(awk -v group="$group" '$1 == group { print $2 }' "$top/scripts/packages.txt")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  local as_root=()
  [ "$(id -u)" = 0 ] || as_root=(sudo)
  say "installing from Debian: ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
    "${missing[@]}"
}

# Configures and builds a preset: build PRESET [target ...]
build() {
  local preset=$1
  shift
  local targets=()
  [ "$#" -eq 0 ] || targets=(--target "$@")
  say "building ($preset)"
  cmake --preset "$preset" -S "$top" >"$top/build/$preset-configure.log" 2>&1 || {
    cat "$top/build/$preset-configure.log"
    return 1
  }
  cmake --build "$top/build/$preset" "${targets[@]}"
}

# Runs the tests of a built preset: check PRESET [option of ctest ...]
# Two programs share the cores with whatever else the machine does, so what failed is run once more,
# alone. What passes only then is named: it has a race that is to be found.
check() {
  local preset=$1
  shift
  local failed
  say "testing ($preset)"
  ctest --test-dir "$top/build/$preset" --output-on-failure -j 2 "$@" && return
  failed=$(cut -d: -f2 "$top/build/$preset/Testing/Temporary/LastTestsFailed.log" | xargs)
  say "failed: $failed; once more, alone"
  ctest --test-dir "$top/build/$preset" --rerun-failed --output-on-failure || return
  say "PASSED ONLY WHEN RUN AGAIN, ALONE ($preset): $failed"
}

mkdir -p "$top/build"
