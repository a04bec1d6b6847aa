#!/bin/bash
# One picture of all ways to draw: draw types, qualities, shaders, geometries, sort orders, blending,
# downsizing. Opens variants of an example in the built program and puts its views side by side.
#   tools/make_contact_sheet.sh [example] [picture]    docs/images/contact_sheet.png of lj_melt_bin by default
set -uo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

PROGRAM=build/release/morentis
STAGE=/tmp/morentis-sheet-$$
WIDTH=1100
HEIGHT=760
TILE=300
EXAMPLE=${1:-lj_melt_bin}
SHEET=${2:-docs/images/contact_sheet.png}

source tools/display_common.sh

[[ -f examples/$EXAMPLE/$EXAMPLE.mrp ]] || fail "There is no examples/$EXAMPLE/$EXAMPLE.mrp."

# all KEY=VALUE...: for the four attributes.
all() {
  local item type
  for item in "$@"; do
    for type in 0 1 2 3; do printf 'SEQ0TYPE%d%s\n' $type "$item"; done
  done
}

# What a project doesn't say stays as the one before left it: here is all that the tiles change.
PLAIN=$(all BlendType=0 AlphaType=0 AlphaDependBase=1 RadiusFactor=1 ColUseColorCurve=0 'AmbientConstantColor=0.15 0.2 0.25 1' \
  'DiffuseConstantColor=0.5 0.75 1 1' 'SpecularConstantColor=1 1 1 1')
SPHERES=$(all DrawType=2 DrawQuality=2 ShaderType=2)
# By height, from green to red: shows which one is in front.
SPRITES=$(all DrawType=1 RadiusFactor=1.6 ColUseColorCurve=1 ColDependType=5 ColScalingMin=-1 ColScalingMax=1)
CLEAR=$(all 'DiffuseConstantColor=0.5 0.75 1 0.35')

# tile LABEL LINES...: the example with these lines behind its own; the last of a key counts.
tiles=()
tile() {
  local name
  name=$(printf 'tile%02d' ${#tiles[@]})
  tiles+=("$1")
  shift
  {
    cat "$STAGE/examples/$EXAMPLE/$EXAMPLE.mrp"
    printf 'DownSizing=1\nSortOrder=0\nClassify=1\n%s\n' "$PLAIN"
    printf 'Panel0ShowMessage=0\nPanel0ShowItems=0\nPanel0ShowGrid=0\nOverLayShowLegend=0 0 0 0\nPanel0DisplayMode=0\nPanel0GLGeometry=0\n'
    printf '%s\n' "$@"
  } >"$STAGE/examples/$EXAMPLE/$name.mrp"
}

make_tiles() {
  tile 'Point' "$(all DrawType=0 PointSize=6)"
  tile 'Billboard' "$SPRITES"
  tile 'Billboard, additive' "$SPRITES" "$(all BlendType=1)"
  tile 'Sphere, Low' "$SPHERES" "$(all DrawQuality=0)"
  tile 'Sphere, Middle' "$SPHERES" "$(all DrawQuality=1)"
  tile 'Sphere, High' "$SPHERES"
  tile 'Sphere, Exact' "$SPHERES" "$(all DrawQuality=3)"
  tile 'Hide' "$(all DrawType=4)"
  tile 'original' "$SPHERES" "$(all ShaderType=0)"
  tile 'Gouroud' "$SPHERES" "$(all ShaderType=1)"
  tile 'Phong' "$SPHERES"
  tile 'Toon' "$SPHERES" "$(all ShaderType=3)"
  tile 'Exact, original' "$SPHERES" "$(all DrawQuality=3 ShaderType=0)"
  tile 'Exact, Gouroud' "$SPHERES" "$(all DrawQuality=3 ShaderType=1)"
  tile 'Exact, Phong' "$SPHERES" "$(all DrawQuality=3)"
  tile 'Exact, Toon' "$SPHERES" "$(all DrawQuality=3 ShaderType=3)"
  local order
  for order in 0 1 2; do
    local label=('No Sort' 'Zsort, transparency' 'Zsort, solid')
    tile "${label[order]}, clear spheres" "$SPHERES" "$CLEAR" "SortOrder=$order"
  done
  tile 'Zsort, clear Exact' "$SPHERES" "$CLEAR" "$(all DrawQuality=3)" 'SortOrder=1'
  for order in 0 1 2; do
    tile "${label[order]}, sprites" "$SPRITES" "SortOrder=$order"
  done
  tile 'Depend on R' "$SPRITES" "$(all AlphaType=1 AlphaDependBase=0.02)"
  tile 'Point of View' "$SPHERES" 'Panel0GLGeometry=0'
  tile 'Orthographic' "$SPHERES" 'Panel0GLGeometry=1'
  tile 'Fisheye' "$SPHERES" 'Panel0GLGeometry=2'
  tile 'Panoramic' "$SPHERES" 'Panel0GLGeometry=3'
  tile 'Fisheye, Exact' "$SPHERES" "$(all DrawQuality=3)" 'Panel0GLGeometry=2'
  tile 'Downsize 4' "$SPHERES" 'DownSizing=4'
  tile 'Downsize 4, sprites' "$SPRITES" 'DownSizing=4'
  tile 'Attrib0 only' "$SPHERES" 'Classify=0'
}

# Where the picture of the first view stands in the window: the largest square in its middle.
shoot_tile() {
  xdotool mousemove 1590 1190
  settle "$MAIN"
  import -silent -window "$MAIN" "$STAGE/shot.png" || fail 'No picture.'
  convert "$STAGE/shot.png" -crop "$CROP" +repage -resize ${TILE}x${TILE} "$STAGE/$1.png"
}

mkdir -p "$STAGE/examples" "$(dirname "$SHEET")"
cp -r "examples/$EXAMPLE" "$STAGE/examples/" || exit 1
start_display
make_tiles
start_program
CROP=${CROP:-450x445+151+72}
for i in "${!tiles[@]}"; do
  name=$(printf 'tile%02d' "$i")
  open_project "$EXAMPLE" "$name"
  shoot_tile "$name"
  labels+=(-label "${tiles[i]}" "$STAGE/$name.png")
done
montage -background '#202020' -fill white -pointsize 13 "${labels[@]}" -tile 8x -geometry +4+4 "$STAGE/sheet.png" ||
  fail 'No sheet.'
convert "$STAGE/sheet.png" -resize 60% -dither None -colors 256 -strip -define png:compression-level=9 "PNG8:$SHEET"
printf '%s\n' "$SHEET"
alive
