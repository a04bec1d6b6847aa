#!/bin/bash
# How much of a film's time is drawing? Makes snapshots of 100,000 points, or of Exact spheres, a film of them
# with software rendering, and tells the share of the wall time, start and end included, and how long each part
# took on whichever thread; then the same film with the particles hidden, and so the time of a frame that is
# fixed and the time of the particles.
#   tools/time_film.sh [--spheres COUNT] [frames [WIDTHxHEIGHT]]     300 and 1280x720 without them
set -euo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.."

points=100000
look='SEQ0TYPE0DrawType=0\nSEQ0TYPE0PointSize=2'
if [[ ${1:-} == --spheres ]]; then
  points=${2:?how many}
  # About 8 pixels across in a picture of 1024, a million of them 4.
  radius=$(awk -v n="$points" 'BEGIN { print n < 500000 ? 0.008 : 0.004 }')
  look="SEQ0TYPE0DrawType=2\nSEQ0TYPE0DrawQuality=3\nSEQ0TYPE0RadiusType=1\nSEQ0TYPE0RadiusFactorForConst=$radius"
  shift 2
fi
frames=${1:-300}
size=${2:-1280x720}
program=build/release/morentis-film
[[ -x $program ]] || { echo "Build the program first: ./run" >&2; exit 1; }
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT

# A few snapshots, each under many names: as many files to read and unpack as there are frames.
python3 - "$stage" "$frames" "$points" "$look" <<'PY'
import array, math, os, random, sys
stage, frames, points, look = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), sys.argv[4]
kinds = 10 if points <= 100_000 else 3
random.seed(1)
stars = [(random.gauss(0, 0.5), random.random() * 2 * math.pi, random.gauss(0, 0.05)) for _ in range(points)]
for k in range(min(kinds, frames)):
    words = array.array("f", bytes(40 * points))
    turned = [(radius, angle + 0.05 * k / (abs(radius) + 0.1)) for radius, angle, _ in stars]
    words[0::10] = array.array("f", (radius * math.cos(turn) for radius, turn in turned))
    words[1::10] = array.array("f", (radius * math.sin(turn) for radius, turn in turned))
    words[2::10] = array.array("f", (height for _, _, height in stars))
    with open(f"{stage}/kind{k}", "wb") as file:
        array.array("f", [float(k)]).tofile(file)
        array.array("i", [points]).tofile(file)
        words.tofile(file)
for frame in range(frames):
    os.link(f"{stage}/kind{frame % kinds}", f"{stage}/points{frame:04d}.bin")
last = frames - 1
with open(f"{stage}/points.mrp", "w") as file:
    file.write("DataLoadDataType=0\nDataLoadGrammerHead=0 1\nDataLoadGrammerBody=0 1 5 6 7 8\n"
               "LoaderTranslate=0 0 0\nLoaderScale=1\nPanel0ShowGrid=0\n"
               f"TimeMaxFrame={last}\nTimeWorkAreaMin=0\nTimeWorkAreaMax={last}\nTimeAnimStep=1\nTimeAnimInterp=1\n"
               "Classify=0\nDataSequence0=0\npoints0000.bin\n" + look.replace("\\n", "\n") + "\n")
PY

sed 's/^Panel0ShowGrid=0$/&\nPanel0ShowData=0/' "$stage/points.mrp" >"$stage/hidden.mrp"

make_film() { # NAME: its pictures in $stage/NAME_out, its timing and wall time in $stage/NAME
  local start end count
  mkdir "$stage/$1_out"
  start=$(date +%s.%N)
  env -u DISPLAY LIBGL_ALWAYS_SOFTWARE=1 "$program" --quiet --timing --size "$size" \
    --output "$stage/$1_out/f%04d.png" "$stage/$1.mrp" 2>"$stage/err" || { cat "$stage/err" >&2; exit 1; }
  end=$(date +%s.%N)
  count=$(find "$stage/$1_out" -name 'f*.png' | wc -l)
  ((count == frames)) || { echo "$count of $frames pictures were written" >&2; exit 1; }
  { grep timing: "$stage/err"; echo "timing: wall=$(echo "$end $start" | awk '{print $1 - $2}')"; } >"$stage/$1"
}
make_film points
make_film hidden
awk 'function per(part) { return 1000 * value[1, part] / value[1, "frames"] }
{ for (i = 1; i <= NF; ++i) if (split($i, part, "=") == 2) value[FILENAME == ARGV[1], part[1]] = part[2] }
END {
  wall = value[1, "wall"]
  printf "%d frames in %.1f s (%.1f a second): drawing %.1f s, waiting for data %.1f s, for files %.1f s, start and end %.1f s\n",
    value[1, "frames"], wall, value[1, "frames"] / wall, value[1, "draw"], value[1, "data"], value[1, "files"], wall - value[1, "loop"]
  printf "worked on, a frame, in ms: read %.1f, evaluate %.1f, sort %.1f, particles %.1f, fetch %.1f, convert %.1f, pack %.1f, write %.1f\n",
    per("read"), per("evaluate"), per("sort"), per("particles"), per("fetch"), per("convert"), per("pack"), per("write")
  printf "drawing: %.0f %% of the wall time\n", 100 * value[1, "draw"] / wall
  all = 1000 * value[1, "loop"] / value[1, "frames"]
  fixed = 1000 * value[0, "loop"] / value[0, "frames"]
  printf "a frame: %.1f ms, of which fixed %.1f ms, particles %.1f ms\n", all, fixed, all - fixed }' "$stage/points" "$stage/hidden"
