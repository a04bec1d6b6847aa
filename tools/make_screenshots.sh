#!/bin/bash
# Take the pictures of the documents: docs/images/*.png. Starts the built program on a display of its own
# and works it with mouse and keys as a user would; needs xvfb, openbox, xdotool and imagemagick.
#   tools/make_screenshots.sh [picture...]     all pictures, or the named ones (without .png)
set -uo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

PROGRAM=build/release/morentis
IMAGES=docs/images
# The pictures show paths, so the examples lie in the same place for everybody.
STAGE=/tmp/morentis
WIDTH=1320
HEIGHT=900

fail() { printf '%s\n' "$*" >&2; exit 1; }

[[ -x $PROGRAM ]] || fail "Build the program first: ./run"
for tool in Xvfb openbox xdotool import convert; do
  command -v $tool >/dev/null || fail "$tool is missing: apt-get install xvfb openbox xdotool imagemagick"
done
mkdir -m 700 "$STAGE" || fail "$STAGE is in the way."

children=()
clean_up() {
  local pid
  for pid in "${children[@]}"; do kill "$pid" 2>/dev/null; done
  wait 2>/dev/null
  rm -rf "$STAGE"
}
trap clean_up EXIT
trap 'exit 130' INT TERM HUP

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
  local end=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    ((SECONDS < end)) || return 1
    sleep 0.05
  done
}

start_display() {
  Xvfb -displayfd 3 -screen 0 1600x1200x24 -dpi 96 -nolisten tcp -noreset +extension GLX \
    3>"$STAGE/display" >"$STAGE/Xvfb.log" 2>&1 &
  children+=($!)
  wait_for 20 test -s "$STAGE/display" || fail "The X server did not start."
  mkdir -m 700 "$STAGE/runtime" "$STAGE/config" "$STAGE/home"
  unset WAYLAND_DISPLAY LC_ALL XAUTHORITY
  DISPLAY=:$(<"$STAGE/display")
  export DISPLAY HOME=$STAGE/home XDG_RUNTIME_DIR=$STAGE/runtime XDG_CONFIG_HOME=$STAGE/config \
    DBUS_SESSION_BUS_ADDRESS=disabled: NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory LIBGL_ALWAYS_SOFTWARE=1 LANG=C.UTF-8
  openbox --sm-disable >"$STAGE/openbox.log" 2>&1 &
  children+=($!)
  wait_for 20 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' || fail "openbox did not start."
}

# window TITLE: the id of the newest visible window whose title matches.
window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1; }
wait_window() { wait_for 20 sh -c "xdotool search --onlyvisible --name '$1' | grep -q ." || fail "No window \"$1\"."; }

focus() { xdotool windowactivate --sync "$1" 2>/dev/null; }
key() { xdotool key --clearmodifiers --delay 60 "$@"; }

# click X Y [BUTTON]: in the main window.
click() { xdotool mousemove --window "$MAIN" "$1" "$2" click "${3:-1}"; }

# settle WINDOW: until its picture stays the same for half a second.
settle() {
  local now before='' same=0
  for ((i = 0; i < 100; ++i)); do
    now=$(import -silent -window "$1" rgb:- 2>/dev/null | md5sum)
    if [[ $now == "$before" ]]; then ((++same >= 3)) && return; else same=0; fi
    before=$now
    sleep 0.2
  done
  printf 'still changing: %s\n' "$(xdotool getwindowname "$1")" >&2
}

# The program is copied: it keeps its configure file beside itself.
start_program() {
  rm -rf "${STAGE:?}/bin"
  mkdir "$STAGE/bin"
  cp $PROGRAM "$STAGE/bin/"
  "$STAGE/bin/morentis" >"$STAGE/program.log" 2>&1 &
  PROGRAM_PID=$!
  children+=("$PROGRAM_PID")
  wait_window '^Morentis 3'
  MAIN=$(window '^Morentis 3')
  xdotool windowsize --sync "$MAIN" $WIDTH $HEIGHT windowmove "$MAIN" 60 60
  focus "$MAIN"
  settle "$MAIN"
}

alive() { kill -0 "$PROGRAM_PID" 2>/dev/null || { cat "$STAGE/program.log" >&2; fail "The program ended."; }; }

# type_path PATH: into the file dialog that is open.
type_path() {
  key ctrl+a
  xdotool type --delay 8 "$1"
  sleep 0.3
  key Return
}

open_project() {
  focus "$MAIN"
  key ctrl+o
  wait_window 'Select a project file'
  focus "$(window 'Select a project file')"
  type_path "$STAGE/examples/$1/$1.mrp"
  wait_window "$1.mrp"
  focus "$MAIN"
  settle "$MAIN"
  alive
}

# steps N: N frames forward.
steps() {
  local i
  for ((i = 0; i < $1; ++i)); do key Right; sleep 0.15; done
  settle "$MAIN"
}

wanted=("$@")
is_wanted() {
  ((${#wanted[@]} == 0)) && return 0
  local name
  for name in "${wanted[@]}"; do [[ $name == "$1" ]] && return 0; done
  return 1
}

# shoot WINDOW NAME
shoot() {
  is_wanted "$2" || return 0
  xdotool mousemove 1590 1190 # no tool tips
  settle "$1"
  import -silent -window "$1" "$STAGE/$2.png" || fail "No picture of $2."
  convert "$STAGE/$2.png" -dither None -colors 256 -strip -define png:compression-level=9 "PNG8:$IMAGES/$2.png"
  printf '%s\n' "$IMAGES/$2.png"
}

cp -r examples "$STAGE/examples" || exit 1
mkdir -p $IMAGES
start_display
start_program

for example in examples/*/; do
  example=$(basename "$example")
  is_wanted "$example" || continue
  open_project "$example"
  steps 4
  shoot "$MAIN" "$example"
done

# dialog KEYS TITLE NAME: open it, take its picture.
dialog() {
  focus "$MAIN"
  key "$1"
  wait_window "^$2\$"
  DIALOG=$(window "^$2\$")
  focus "$DIALOG"
  shoot "$DIALOG" "$3"
}

open_project lj_melt_text
steps 6
dialog ctrl+alt+o 'Data Loader' loader
LOADER=$DIALOG
# The button "Guess" has no key of its own: right half, where the lists end.
read -r loader_width loader_height < <(xdotool getwindowgeometry --shell "$LOADER" | awk -F= '/WIDTH|HEIGHT/{printf "%s ", $2}')
xdotool mousemove --window "$LOADER" $((loader_width * 3 / 4)) $((loader_height - 298)) click 1
wait_window 'Coose first file'
focus "$(window 'Coose first file')"
type_path "$STAGE/examples/lj_melt_text/melt0000.txt"
wait_window '^Guess'
DIALOG=$(window '^Guess')
shoot "$DIALOG" guess
focus "$DIALOG"
key Escape
focus "$LOADER"
key Escape
dialog ctrl+alt+p Preference preference
key Right
shoot "$DIALOG" preference_performance
key Escape
dialog ctrl+b 'Periodic Boundary' periodic
key Escape
open_project lj_unsorted_text
steps 6
key alt+4
shoot "$MAIN" four_views
key alt+1
open_project galaxy_small_bin
steps 5
for i in 1 2 3 4 5 6 7 8 9; do click 500 400 5; done
shoot "$MAIN" main
alive
