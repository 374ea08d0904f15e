#!/bin/sh
# The starter in a made-up installation. Arguments: the starter, and the folders of programs,
# libraries and data below a prefix. Prints one line a case; ends with 1 when one failed.
set -u

starter=$1
bin=$2
lib=$3
share=$4

root=$(mktemp -d)
trap 'rm -rf -- "$root"' EXIT
failures=0

check() { # words, command...
  words=$1
  shift
  if "$@"; then
    printf 'ok      %s: %s\n' "$case_name" "$words"
  else
    printf 'FAILED  %s: %s\n' "$case_name" "$words"
    failures=$((failures + 1))
  fi
}

# A fresh prefix and a fresh user. The made-up client says by which path it was started and with
# what, as the real one goes by that path; both names hold blanks and Chinese on purpose.
new_case() {
  case_name=$1
  prefix="$root/$case_name/安装 前缀"
  HOME="$root/$case_name/用户 家"
  export HOME
  unset XDG_DATA_HOME
  folder="$HOME/.local/share/qinghe"
  mkdir -p "$prefix/$bin" "$prefix/$lib/qinghe" "$prefix/$share/qinghe" "$HOME"
  cp "$starter" "$prefix/$bin/qinghe"
  printf 'delivered' >"$prefix/$share/qinghe/DATA.MDB"
  cat >"$prefix/$lib/qinghe/qinghe" <<'CLIENT'
#!/bin/sh
printf '%s\n' "$0"
for argument; do printf '<%s>' "$argument"; done
CLIENT
  chmod 755 "$prefix/$lib/qinghe/qinghe"
  PATH=$base_path
}
base_path=$PATH

start() { sh "$prefix/$bin/qinghe" "$@" >"$root/out" 2>"$root/err"; }
fails() { ! "$@"; }
says() { [ "$(cat "$root/out")" = "$1" ]; }
complains() { grep -q -- "$1" "$root/err"; }
data_is() { [ "$(cat "$folder/DATA.MDB")" = "$1" ]; }
is_absent() { [ ! -e "$1" ] && [ ! -L "$1" ]; }
holds_only() { [ "$(ls -A "$folder" | sort | tr '\n' ' ')" = "$1" ]; }
mode_is() { [ "$(stat -c %a "$1")" = "$2" ]; }
stub() { # name; the body comes in; found before the real one
  mkdir -p "$root/$case_name/stubs"
  cat >"$root/$case_name/stubs/$1"
  chmod 755 "$root/$case_name/stubs/$1"
  PATH="$root/$case_name/stubs:$base_path"
}

new_case FirstStartMakesAFolderWithALinkAndOwnData
check 'starts' start
check 'through the link' says "$folder/qinghe"
check 'link leads to the client' [ "$(readlink "$folder/qinghe")" = "$prefix/$lib/qinghe/qinghe" ]
check 'data is the delivered' data_is delivered
check 'data is a file of its own' [ ! -L "$folder/DATA.MDB" ]
check 'data belongs to the user alone' mode_is "$folder/DATA.MDB" 600
check 'folder belongs to the user alone' mode_is "$folder" 700
check 'nothing else is left' holds_only 'DATA.MDB qinghe '

new_case ArgumentsReachTheClientUnchanged
check 'starts' start 'a b' '*' ''
check 'three arguments' says "$folder/qinghe
<a b><*><>"

new_case ASecondStartKeepsTheUsersData
check 'starts' start
printf 'mine' >"$folder/DATA.MDB"
printf 'newer delivered' >"$prefix/$share/qinghe/DATA.MDB"
check 'starts again' start
check 'data is the user'\''s' data_is mine

new_case AnEmptyDataFileIsTheUsersToo
mkdir -p "$folder"
: >"$folder/DATA.MDB"
check 'starts' start
check 'data stays empty' data_is ''

new_case ALinkToDataElsewhereStays
mkdir -p "$folder"
ln -s "$root/not mounted/DATA.MDB" "$folder/DATA.MDB"
check 'starts' start
check 'still the link' [ "$(readlink "$folder/DATA.MDB")" = "$root/not mounted/DATA.MDB" ]

new_case AReadOnlyDeliveredFileGivesAWritableCopy
chmod 444 "$prefix/$share/qinghe/DATA.MDB"
check 'starts' start
check 'data is writable' mode_is "$folder/DATA.MDB" 600

new_case ALinkToAnOldInstallationIsRenewed
mkdir -p "$folder"
ln -s /gone/qinghe "$folder/qinghe"
check 'starts' start
check 'link leads to this client' \
  [ "$(readlink "$folder/qinghe")" = "$prefix/$lib/qinghe/qinghe" ]

new_case SomethingElseInTheLinksPlaceIsLeftAlone
mkdir -p "$folder/qinghe"
check 'does not start' fails start
check 'says so' complains '不是指向客户端程序的链接'
check 'it is still there' [ -d "$folder/qinghe" ]

new_case TheDataFolderOfTheUserIsTaken
XDG_DATA_HOME="$root/$case_name/另 外"
export XDG_DATA_HOME
folder="$XDG_DATA_HOME/qinghe"
check 'starts' start
check 'there' data_is delivered

new_case ARelativeDataFolderIsIgnored
XDG_DATA_HOME=relative
export XDG_DATA_HOME
check 'starts' start
check 'in the usual place' data_is delivered

new_case AStarterReachedByALinkFindsItsInstallation
mkdir -p "$HOME/bin"
ln -s "$prefix/$bin/qinghe" "$HOME/bin/trade"
start_by_link() { sh "$HOME/bin/trade" >"$root/out"; }
check 'starts' start_by_link
check 'data' data_is delivered

new_case WithoutADeliveredFileItSaysSo
rm "$prefix/$share/qinghe/DATA.MDB"
check 'does not start' fails start
check 'says so' complains '找不到随程序提供的 DATA.MDB'
check 'no data' is_absent "$folder/DATA.MDB"
check 'own data needs none' sh -c 'printf mine >"$1/DATA.MDB" && sh "$2" >/dev/null' - \
  "$folder" "$prefix/$bin/qinghe"

new_case WithoutAClientItSaysSo
rm "$prefix/$lib/qinghe/qinghe"
check 'does not start' fails start
check 'says so' complains '找不到已安装的客户端程序'
check 'no folder' is_absent "$folder"

new_case AFolderThatCannotBeMadeIsSaid
printf 'a file' >"$HOME/.local"
check 'does not start' fails start
check 'says so' complains '无法创建程序文件夹'

new_case ACopyThatBreaksOffLeavesNoHalfFile
stub cp <<'CP'
#!/bin/sh
for last; do :; done
printf 'deli' >"$last"
exit 1
CP
check 'does not start' fails start
check 'says so' complains '建立 DATA.MDB'
check 'no half data and nothing else' holds_only 'qinghe '
PATH=$base_path
check 'starts when there is room' start
check 'whole data' data_is delivered

# The other start wins between this one's look and its renaming.
new_case DataThatAppearsMeanwhileStays
stub cp <<CP
#!/bin/sh
printf 'the other start' >"$folder/DATA.MDB"
exec env PATH="$base_path" cp "\$@"
CP
check 'starts' start
check 'the other start'\''s data' data_is 'the other start'
check 'nothing else is left' holds_only 'DATA.MDB qinghe '

new_case WithoutHardLinksDataThatAppearsMeanwhileStays
stub cp <<CP
#!/bin/sh
printf 'the other start' >"$folder/DATA.MDB"
exec env PATH="$base_path" cp "\$@"
CP
stub ln <<LN
#!/bin/sh
[ "\$1" = -T ] && exit 1
exec env PATH="$base_path" ln "\$@"
LN
check 'starts' start
check 'the other start'\''s data' data_is 'the other start'

new_case WithoutHardLinksTheCopyIsStillMade
stub ln <<LN
#!/bin/sh
[ "\$1" = -T ] && exit 1
exec env PATH="$base_path" ln "\$@"
LN
check 'starts' start
check 'data' data_is delivered
check 'nothing else is left' holds_only 'DATA.MDB qinghe '

# Every client writes its mark behind the data that it finds: a file replaced later loses marks.
new_case ManyStartsAtOnceShareOneFile
cat >"$prefix/$lib/qinghe/qinghe" <<'CLIENT'
#!/bin/sh
printf '+' >>"$(dirname "$0")/DATA.MDB"
CLIENT
all_start() {
  pids=
  for _ in 1 2 3 4 5 6 7 8 9 10 11 12; do
    sh "$prefix/$bin/qinghe" &
    pids="$pids $!"
  done
  for pid in $pids; do wait "$pid" || return 1; done
}
check 'all start' all_start
check 'no mark is lost' data_is 'delivered++++++++++++'
check 'nothing else is left' holds_only 'DATA.MDB qinghe '

if [ "$failures" -gt 0 ]; then
  printf '%s failed\n' "$failures"
  exit 1
fi
