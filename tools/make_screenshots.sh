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

source tools/display_common.sh

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

# open_dialog KEYS TITLE
open_dialog() {
  focus "$MAIN"
  key "$1"
  wait_window "^$2\$"
  DIALOG=$(window "^$2\$")
  focus "$DIALOG"
}

# dialog KEYS TITLE NAME: open it, take its picture.
dialog() {
  open_dialog "$1" "$2"
  shoot "$DIALOG" "$3"
}

{ cat "$STAGE/examples/lj_melt_text/lj_melt_text.mrp"
  echo 'DataExportLastSavedFile=/data/thinned/melt%04d.dat'; } >"$STAGE/lj_melt_text.mrp"
mv "$STAGE/lj_melt_text.mrp" "$STAGE/examples/lj_melt_text/"
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
leave "$DIALOG"
leave "$LOADER"
dialog ctrl+alt+p Preference preference
key Right
shoot "$DIALOG" preference_performance
leave "$DIALOG"
dialog ctrl+b 'Periodic Boundary' periodic
leave "$DIALOG"
# It has no key of its own: the menu "File", its part "Export".
focus "$MAIN"
key alt+f
key e
key p
wait_window '^Data Exporter$'
DIALOG=$(window '^Data Exporter$')
focus "$DIALOG"
shoot "$DIALOG" exporter
leave "$DIALOG"
open_project lj_unsorted_text
steps 6
key alt+4
shoot "$MAIN" four_views
key alt+1
open_project lj_melt_bin melt_shadows
dialog ctrl+l 'Light Source Editor' lights
leave "$DIALOG"
open_project lj_melt_bin
open_dialog ctrl+u 'View and Camera Config'
settle "$DIALOG"
xdotool mousemove --window "$DIALOG" 90 209 click 1 # unfolds "View Advanced Setting"
shoot "$DIALOG" camera_dialog
leave "$DIALOG"
open_project public_pyscal_ni500 nickel_stereo
dialog ctrl+m 'Stereogram Configure' stereo_dialog
leave "$DIALOG"
open_project galaxy_small_bin
steps 5
for i in 1 2 3 4 5 6 7 8 9; do click 500 400 5; done
shoot "$MAIN" main

# Of 16:9, as software centres want them; tools/make_metainfo.py names them.
WIDTH=1280
HEIGHT=720
wait_for 90 set_size || fail "The window does not take its size."
open_project galaxy_small_bin
steps 5
for i in 1 2 3 4 5 6; do click 400 250 5; done
key alt+4
shoot "$MAIN" store_galaxies
key alt+1
open_project lj_melt_bin melt_shadows
steps 6
shoot "$MAIN" store_melt
open_project public_pyscal_ni500 nickel_bonds
steps 5
shoot "$MAIN" store_bonds
WIDTH=1320
HEIGHT=900
wait_for 90 set_size || fail "The window does not take its size."

# variant EXAMPLE NAME LINES...: the staged example with these lines behind its own; the last of a key counts.
variant() {
  local example=$1 name=$2
  shift 2
  { cat "$STAGE/examples/$example/$example.mrp"; printf '%s\n' "$@"; } >"$STAGE/examples/$example/$name.mrp"
}

wide_lines() {
  local view
  printf 'PreviewPanelType=3\nBGColorConstantColor=0.03 0.05 0.1 1\nOverLayShowLegend=0 0 0 0\n'
  for view in 0 1 2 3; do
    printf "Panel$view%s\\n" DisplayMode=0 GLPersAngle=180 ShowMessage=0 ShowItems=0 ShowData=1 ShowGrid=1
  done
  printf 'Panel0GLGeometry=2\nPanel0FisheyeGrid1\nPanel1GLGeometry=2\nPanel1FisheyeGrid0\n'
  printf 'Panel2GLGeometry=2\nPanel2FisheyeGrid1\nPanel2Distortion1\nPanel3GLGeometry=3\n'
}
variant lj_melt_bin wide "$(wide_lines)"
open_project lj_melt_bin wide
for place in '730 250' '230 600' '730 600'; do # the first view is near already
  for i in 1 2 3 4 5 6 7 8; do click $place 5; done
done
shoot "$MAIN" views_wide

# The last snapshots come while the window is open.
FOLLOWED=$STAGE/examples/galaxy_small_bin
mkdir "$STAGE/later"
mv "$FOLLOWED"/galaxy001[01].bin "$STAGE/later/"
variant galaxy_small_bin running 'TimeMaxFrame=9' 'TimeWorkAreaMax=9' 'TImeActiveAreaMax=9' 'FollowRun=10' \
  'FollowNewest=1'
open_project galaxy_small_bin running
for i in 1 2 3 4 5 6 7 8 9; do click 500 400 5; done
mv "$STAGE"/later/* "$FOLLOWED"
sleep 2 # two of the program's looks at the folder
shoot "$MAIN" follow

variant galaxy_small_bin film 'ImgSequenceFile=/home/you/films/galaxy%04d.png' 'ImgSequenceOutW=1920' \
  'ImgSequenceOutH=1080' 'ImgSequenceVideo=1' 'TimeUseMotionBlur=1'
open_project galaxy_small_bin film
dialog F8 'Save Image Sequence' image_sequence
leave "$DIALOG"

variant galaxy_small_bin overlay 'OverLayTimePos=2' 'OverLayTimeTag=t / Myr = ' 'OverLayShowLegend=1 0 0 0' \
  'SEQ0TYPE0ColUseColorCurve=1' 'SEQ0TYPE0ColDependType=6' 'SEQ0TYPE0ColScalingMin=0' 'SEQ0TYPE0ColScalingMax=2' \
  'ExposureLevel=0 2' 'ExposureGamma=1.4' 'Panel0ShowMessage=0' 'Panel0ShowItems=0' 'Panel0ShowGrid=0'
open_project galaxy_small_bin overlay
steps 5
dialog ctrl+j 'Color Curve Editor - .*' color_editor
leave "$DIALOG"
click 1203 344 # the tab "Exposure"
shoot "$MAIN" views_pages
alive

# In a window of its own: what is picked here stays picked.
kill "$PROGRAM_PID"
wait "$PROGRAM_PID" 2>/dev/null
start_program
open_project lj_melt_bin
click 500 400 5
click 500 400 5
xdotool keydown shift
click 470 494 3 # the second light
xdotool keyup shift
key r
key alt+4
shoot "$MAIN" picking
key alt+1
alive

# film_picture EXAMPLE PROJECT FRAME NAME: a frame of a film, the first of its steps, without a window.
film_picture() {
  is_wanted "$4" || return 0
  local pictures
  build/release/morentis-film --quiet --size 900x506 --frames "$3-$3" --output "$STAGE/$4%04d.png" \
    "examples/$1/$2.mrp" || fail "No picture of $4."
  pictures=("$STAGE/$4"[0-9]*.png)
  convert "${pictures[0]}" -dither FloydSteinberg -colors 256 -strip -define png:compression-level=9 \
    "PNG8:$IMAGES/$4.png"
  printf '%s\n' "$IMAGES/$4.png"
}
film_picture lj_melt_text melt_cut 15 filter_cut
film_picture public_pyscal_ni500 nickel_bonds 5 filter_bonds
film_picture deposit_text deposit_mesh 30 filter_mesh
film_picture lj_melt_bin melt_shadows 6 shadows
film_picture public_pyscal_ni500 nickel_stereo 5 stereo
