#!/bin/bash
# Try the Debian packages in a Debian 12 that has nothing else: install them, run both programs, make a film of
# an example, remove them, and see that nothing is left.
#   tools/check_deb.sh [FOLDER]    with the packages; default build/deb. As root; needs debootstrap and a network.
set -euo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.."

packages=$(realpath "${1:-build/deb}")
root=$(mktemp -d)
clean_up() {
  umount "$root/proc" 2> /dev/null || true
  rm -rf --one-file-system "$root"
}
trap clean_up EXIT
debootstrap --variant=minbase bookworm "$root" > /dev/null
mount -t proc proc "$root/proc"
inside() { env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"; }

mkdir "$root/packages"
cp "$packages"/morentis_*.deb "$packages"/morentis-doc_*.deb "$root/packages/"
files() { (cd "$root" && find usr etc var/lib -path var/lib/dpkg -prune -o -type f -print | sort); }

inside apt-get update > /dev/null
inside sh -c 'apt-get install -y --no-install-recommends --no-install-suggests /packages/*.deb' \
  > "$root/install.log" 2>&1 || { tail -20 "$root/install.log"; exit 1; }
inside dpkg -V morentis morentis-doc
inside morentis --version
inside morentis-film --version
inside morentis-import --version
printf 'id,x,y,z\n2,1,1,1\n1,0,0,0\n' > "$root/tmp/table.csv"
inside morentis-import /tmp/table.csv --output /tmp/table
[[ -s $root/tmp/table/snap0000.bin && -s $root/tmp/table/table.mrp ]] || { echo "The import is missing."; exit 1; }

# A film, without any display.
inside morentis-film --frames 0-0 --size 320x240 --output /tmp/f%04d.png \
  /usr/share/doc/morentis/examples/lj_melt_bin/melt_shadows.mrp
[[ $(find "$root/tmp" -name 'f*.png' -size +1k | wc -l) -ge 3 ]] || { echo "The film is missing."; exit 1; }

# The window, on a display of its own.
inside sh -c 'Xvfb :7 -screen 0 1024x768x24 > /dev/null 2>&1 & X=$!; sleep 2
  DISPLAY=:7 timeout 10 morentis /usr/share/doc/morentis/examples/lj_melt_bin/lj_melt_bin.mrp > /tmp/words 2>&1
  status=$?; kill $X; test $status = 124 || { cat /tmp/words; echo "The window closed with $status."; exit 1; }'

inside apt-get purge -y morentis morentis-doc > /dev/null 2>&1
left=$(files | grep -i morentis || true)
[[ -z $left ]] || { printf 'Left behind:\n%s\n' "$left"; exit 1; }
echo "The packages install, run and go."
