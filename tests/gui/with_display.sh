#!/bin/bash
# Run a test program on an X server of its own, under a window manager and with
# settings that no other run shares. All of it is gone afterwards.
#   tests/gui/with_display.sh build/release/tests/gui/morentis_gui_tests --gtest_filter='Menus.*'
set -uo pipefail

fail() { printf 'with_display: %s\n' "$1" >&2; exit 1; }

(($# > 0)) || fail "name a program"
command -v Xvfb >/dev/null && command -v openbox >/dev/null || fail "Xvfb or openbox is missing (Debian packages xvfb and openbox)"
manager_settings=$(cd -P "$(dirname "${BASH_SOURCE[0]}")" && pwd)/openbox.xml
private=$(mktemp -d -t morentis-test.XXXXXX) || exit 1
mkdir -m 700 "$private/bin" "$private/runtime" "$private/config" "$private/data"
mkfifo "$private/ready"

# Whoever kills this script, even without a warning, closes the pipe: then the
# folder goes. The others end with their parent.
exec {alive}> >(setsid bash -c 'trap "" INT TERM HUP; read -r; rm -rf "$1"' _ "$private" <&0 >/dev/null 2>&1 &)
owned() { exec setpriv --pdeathsig "$@" {alive}>&-; } # in the background alone

children=()
clean_up() {
  ((${#children[@]} == 0)) || kill "${children[@]}" 2>/dev/null
  wait 2>/dev/null
}
trap clean_up EXIT
trap 'exit 130' INT TERM HUP

start_server() { # success: its number is known
  local server pipe
  owned TERM Xvfb -displayfd 3 -screen 0 1600x1200x24 -dpi 96 -nolisten tcp -noreset +extension GLX \
    3>"$private/ready" >"$private/Xvfb.log" 2>&1 &
  server=$!
  exec {pipe}<"$private/ready" # no one else writes: one that ends is noticed
  if read -r -t 30 display <&$pipe; then
    children+=("$server")
  else
    kill "$server" 2>/dev/null
    display=
  fi
  exec {pipe}<&-
  [[ $display ]]
}
# Servers that start at the same moment can choose the same number; then one of
# them ends, and another is started a moment later.
for start in {1..6}; do
  start_server && break
  ((start < 6)) || { cat "$private/Xvfb.log" >&2; fail "the X server did not start"; }
  sleep "0.$((RANDOM % 3))$((RANDOM % 10))"
done
exec {ready}<>"$private/ready"

# Nothing moves by itself: buttons that fade and carets that blink draw sixty times a second.
mkdir "$private/config/gtk-3.0"
printf '%s\n' '[Settings]' gtk-enable-animations=false gtk-cursor-blink=false >"$private/config/gtk-3.0/settings.ini"

# The program meets no session, settings or bus of the user.
unset WAYLAND_DISPLAY LC_ALL XAUTHORITY
export DISPLAY=:$display XDG_RUNTIME_DIR=$private/runtime XDG_CONFIG_HOME=$private/config \
  XDG_DATA_HOME=$private/data DBUS_SESSION_BUS_ADDRESS=disabled: NO_AT_BRIDGE=1 \
  GSETTINGS_BACKEND=memory GDK_BACKEND=x11 LIBGL_ALWAYS_SOFTWARE=1 LANG=C.UTF-8 LANGUAGE=${MORENTIS_TEST_LANGUAGE:-en}
READY=$private/ready owned TERM openbox --sm-disable --config-file "$manager_settings" \
  --startup 'sh -c "echo openbox >\"$READY\""' >"$private/openbox.log" 2>&1 &
children+=($!)
read -r -t 30 _ <&$ready || { cat "$private/openbox.log" >&2; fail "the window manager did not start"; }

# The program keeps its settings and recovery projects beside itself.
program=$private/bin/$(basename "$1")
ln "$1" "$program" 2>/dev/null || cp "$1" "$program" || exit 1
for catalogues in locale ../../locale; do # beside the program or two folders above
  [[ -d $(dirname "$1")/$catalogues ]] && ln -sfn "$(realpath "$(dirname "$1")/$catalogues")" "$private/bin/locale"
done
shift
owned KILL "$program" "$@" &
children+=($!)
wait $!
