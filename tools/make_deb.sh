#!/bin/bash
# Make the Debian packages of the committed tree: morentis, morentis-doc and morentis-dbgsym.
#   tools/make_deb.sh [FOLDER]     where they go; default build/deb
# DEBFULLNAME and DEBEMAIL name who made them. Needs debhelper, and lintian to look at what came out.
set -euo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.."

out=$(realpath -m "${1:-build/deb}")
maintainer="${DEBFULLNAME:-The Morentis developers} <${DEBEMAIL:-packages@morentis.org}>"
version=$(sed -n 's/^project(morentis VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
# Two runs of one commit make the same bytes.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
source="$work/morentis-$version"
mkdir "$source"
git archive HEAD | tar -x -C "$source"
cp -r packaging/debian "$source/debian"
sed -i "s|@MAINTAINER@|$maintainer|" "$source/debian/control"
cat > "$source/debian/changelog" <<EOF
morentis ($version) bookworm; urgency=medium

  * Version $version; CHANGELOG.md tells what is new.

 -- $maintainer  $(date -R -u -d "@$SOURCE_DATE_EPOCH")
EOF

# The build has a home folder of its own; the cache stays where it is.
if command -v ccache > /dev/null; then
  CCACHE_DIR=$(ccache -k cache_dir)
  export CCACHE_DIR
fi
(cd "$source" && dpkg-buildpackage -b -us -uc)
mkdir -p "$out"
cp "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$out/"
if command -v lintian > /dev/null; then
  lintian --fail-on error,warning "$out/morentis_${version}_$(dpkg --print-architecture).changes"
fi
ls -l "$out"/*.deb
