#!/bin/bash
# Animate a camera value in the program as a user would, with mouse and keys on a display of its own: three keys
# in the graph, saved, opened again by a fresh program and played. Fails unless the project holds the keys, the
# second program saves the same text, and the picture moves. Takes the pictures of the manual's chapter
# "Animating" on the way: docs/images/graph.png, key_dialog.png, time_lines.png.
set -uo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

PROGRAM=build/release/morentis
STAGE=/tmp/morentis
WIDTH=1320
HEIGHT=900

source tools/display_common.sh

# shoot WINDOW NAME
shoot() {
  xdotool mousemove 1590 1190 # no tool tips
  settle "$1"
  import -silent -window "$1" "$STAGE/$2.png" || fail "No picture of $2."
  convert "$STAGE/$2.png" -dither None -colors 256 -strip -define png:compression-level=9 "PNG8:docs/images/$2.png"
  printf '%s\n' "docs/images/$2.png"
}

double_click() { xdotool mousemove --window "$MAIN" "$1" "$2" click --repeat 2 --delay 60 1; settle "$MAIN"; }

# view_hash: of the picture in the view.
view_hash() { import -silent -window "$MAIN" -crop 900x250+60+120 rgb:- | md5sum; }

save_as() {
  focus "$MAIN"
  key ctrl+shift+s
  wait_window '^Select a file'
  focus "$(window '^Select a file')"
  type_path "$1"
  wait_for 20 test -s "$1" || fail "$1 was not written."
  alive
}

# look_through_camera_path: the view's first choice, last entry.
look_through_camera_path() {
  click 60 70
  key End Return
  settle "$MAIN"
}

cp -r examples "$STAGE/examples" || exit 1
start_display
start_program
open_project galaxy_small_bin
drag 600 665 600 400 # the border above the time lines
click 87 418         # open all groups
click 80 503         # the camera's x
click 31 503         # its check box: animated from now on, with a first key
click 13 418         # the graph
settle "$MAIN"
double_click 600 600
double_click 900 520
drag 595 635 595 530
drag 899 635 899 720
click 1286 467 # Fit
shoot "$MAIN" graph

double_click 900 784 # the last key
wait_window '^Key'
DIALOG=$(window '^Key')
shoot "$DIALOG" key_dialog
focus "$DIALOG"
key Escape
focus "$MAIN"

click 13 418 # strips again
shoot "$MAIN" time_lines
look_through_camera_path
save_as "$STAGE/film.mrp"
kill "$PROGRAM_PID"
wait "$PROGRAM_PID" 2>/dev/null

text=$(grep -A4 -m1 '^Parameter_x' "$STAGE/film.mrp")
printf '%s\n' "$text"
grep -q '^itemnum 3$' <<<"$text" || fail "The project has not the three keys."

start_program
focus "$MAIN"
key ctrl+o
wait_window 'Select a project file'
focus "$(window 'Select a project file')"
type_path "$STAGE/film.mrp"
wait_window 'film.mrp'
focus "$MAIN"
settle "$MAIN"
cp "$STAGE/film.mrp" "$STAGE/before.mrp"
key ctrl+s
wait_for 20 test "$STAGE/film.mrp" -nt "$STAGE/before.mrp" || fail "Not saved again."
sleep 0.5
diff "$STAGE/before.mrp" "$STAGE/film.mrp" || fail "The fresh program saves another text."
still=$(view_hash)
click 660 200 # keys go to the view
key space
moved=0
for ((i = 0; i < 20; ++i)); do
  sleep 0.2
  now=$(view_hash)
  [[ $now != "$still" ]] && ((++moved))
  still=$now
done
key space
alive
((moved >= 5)) || fail "The film does not move: $moved of 20 pictures were new."
printf 'Three keys, saved, opened, saved the same, and played: %d of 20 pictures were new.\n' "$moved"
