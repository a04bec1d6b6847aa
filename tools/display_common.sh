# Sourced by the tools that take pictures of the built program: starts it on a display of its own and works
# it with mouse and keys as a user would. Needs xvfb, openbox, xdotool, imagemagick and x11-utils. Expects PROGRAM,
# WIDTH and HEIGHT of the window, and STAGE, a folder that is made and removed.

fail() { printf '%s\n' "$*" >&2; exit 1; }

[[ -x $PROGRAM ]] || fail "Build the program first: ./run"
for tool in Xvfb openbox xdotool xprop import convert; do
  command -v $tool >/dev/null || fail "$tool is missing: apt-get install xvfb openbox xdotool imagemagick x11-utils"
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
  wait_for 90 test -s "$STAGE/display" || fail "The X server did not start."
  mkdir -m 700 "$STAGE/runtime" "$STAGE/config" "$STAGE/home"
  unset WAYLAND_DISPLAY LC_ALL XAUTHORITY
  DISPLAY=:$(<"$STAGE/display")
  export DISPLAY HOME=$STAGE/home XDG_RUNTIME_DIR=$STAGE/runtime XDG_CONFIG_HOME=$STAGE/config \
    DBUS_SESSION_BUS_ADDRESS=disabled: NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory LIBGL_ALWAYS_SOFTWARE=1 LANG=C.UTF-8
  openbox --sm-disable >"$STAGE/openbox.log" 2>&1 &
  children+=($!)
  wait_for 90 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' || fail "openbox did not start."
}

# window TITLE: the id of the newest visible window whose title matches.
window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1; }
wait_window() { wait_for 90 sh -c "xdotool search --onlyvisible --name '$1' | grep -q ." || fail "No window \"$1\"."; }

# leave WINDOW: by Escape; keys that come before it is gone would be its own.
leave() {
  focus "$1"
  key Escape
  wait_for 90 sh -c "! xwininfo -id $1 | grep -q IsViewable" || fail "Escape leaves it open: $(xdotool getwindowname "$1")"
}

focus() { xdotool windowactivate --sync "$1" 2>/dev/null; }
key() { xdotool key --clearmodifiers --delay 60 "$@"; }

# click X Y [BUTTON]: in the main window.
click() { xdotool mousemove --window "$MAIN" "$1" "$2" click "${3:-1}"; }

# settle WINDOW: until its picture stays the same for half a second.
settle() {
  local i now before='' same=0
  for ((i = 0; i < 100; ++i)); do
    now=$(import -silent -window "$1" rgb:- 2>/dev/null | md5sum)
    if [[ $now == "$before" ]]; then ((++same >= 3)) && return; else same=0; fi
    before=$now
    sleep 0.2
  done
  printf 'still changing: %s\n' "$(xdotool getwindowname "$1")" >&2
}

set_size() {
  xdotool windowsize "$MAIN" $WIDTH $HEIGHT windowmove "$MAIN" 60 60
  sleep 0.3
  xdotool getwindowgeometry "$MAIN" | grep -q "Geometry: ${WIDTH}x$HEIGHT"
}

# drag X1 Y1 X2 Y2: in the main window.
drag() {
  local i
  xdotool mousemove --window "$MAIN" "$1" "$2" mousedown 1
  for i in 1 2 3 4; do
    sleep 0.1
    xdotool mousemove --window "$MAIN" $(($1 + ($3 - $1) * i / 4)) $(($2 + ($4 - $2) * i / 4))
  done
  sleep 0.1
  xdotool mouseup 1
  sleep 0.3
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
  settle "$MAIN"
  wait_for 90 set_size || fail "The window does not take its size."
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

# Steps taken meanwhile needn't be saved: the leftmost button, where the question comes.
dont_save() {
  local query w h
  query=$(window '^Query$')
  [[ $query ]] || return 0
  read -r w h < <(xdotool getwindowgeometry --shell "$query" | awk -F= '/WIDTH|HEIGHT/{printf "%s ", $2}')
  xdotool mousemove --window "$query" $((w / 6)) $((h - 12)) click 1
}

# open_project EXAMPLE [NAME]: of the staged examples.
open_project() {
  focus "$MAIN"
  key ctrl+o
  wait_window 'Select a project file'
  focus "$(window 'Select a project file')"
  type_path "$STAGE/examples/$1/${2:-$1}.mrp"
  wait_for 90 sh -c "xdotool search --onlyvisible --name '^Query$|^Morentis3.*/${2:-$1}.mrp' | grep -q ."
  dont_save
  wait_window "^Morentis3.*/${2:-$1}.mrp" # without the star of unsaved steps
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

