#!/bin/sh
# The client itself brings no browser engine, neither directly nor through a library of its own.
set -eu
libraries=$(ldd "$1")
case $libraries in
  *libQt6Widgets*) ;;
  *) echo "not the client: $1"; exit 1 ;;
esac
if echo "$libraries" | grep -E 'WebEngine|Qt6Quick|Qt6Qml'; then
  echo "the client loads a browser engine at its start"
  exit 1
fi
