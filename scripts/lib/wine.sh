# A display, a wine prefix and sound that belong to these scripts alone. Nothing of the user's own
# wine or sound set-up is touched.

# What the logs of these surroundings are told apart by, where there are several at a time.
SURROUNDINGS=

# start_display [SIZE]: a virtual screen of its own. Sets DISPLAY. A server that resets itself when
# its last client goes turns away one that comes in that moment: wine then goes without a screen.
start_display() {
  local number_file tries
  number_file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${1:-1600x1200}x24" -nolisten tcp -noreset \
    3>"$number_file" >"$LOGS/xvfb$SURROUNDINGS.log" 2>&1 </dev/null &
  local server=$!
  at_exit "kill $server 2>/dev/null; wait $server 2>/dev/null"
  for tries in $(seq 1 200); do
    [ -s "$number_file" ] && break
    kill -0 "$server" 2>/dev/null || break
    sleep 0.1
  done
  [ -s "$number_file" ] || die "no virtual display: $(tail -n 3 "$LOGS/xvfb$SURROUNDINGS.log")"
  DISPLAY=:$(tr -d '[:space:]' <"$number_file")
  export DISPLAY
  rm -f "$number_file"
}

# display_usable: whether $DISPLAY answers.
display_usable() {
  [ -n "${DISPLAY:-}" ] && command -v xdpyinfo >/dev/null && xdpyinfo >/dev/null 2>&1
}

# use_wine_prefix NAME MANAGED: the prefix build/NAME on the display in use, made when it is not
# there. MANAGED is N where no window manager runs: wine would wait for one at every window.
use_wine_prefix() {
  export WINEPREFIX=$BUILD/$1 WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
  export WINELOADER=/usr/lib/wine/wine64
  # In a plain C locale wine can make no file whose name has other letters than those of ASCII.
  export LC_ALL=C.UTF-8
  [ -x "$WINELOADER" ] || die "wine64 is not installed"
  mkdir -p "$WINEPREFIX"
  [ -O "$WINEPREFIX" ] || die "$WINEPREFIX belongs to another user: remove it"
  at_exit "wineserver_here -k"
  if [ ! -f "$WINEPREFIX/corvane-ready" ]; then
    say "making a wine prefix in ${WINEPREFIX#"$ROOT"/}"
    run_logged "wine-prefix$SURROUNDINGS" make_wine_prefix "$2" || die "wine could not be set up"
    touch "$WINEPREFIX/corvane-ready"
  fi
}

make_wine_prefix() {
  wine_here wineboot -i
  wine_here reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$1" /f
  # A program that fails ends at once with its exit code; no box waits for a click.
  wine_here reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
  wineserver_here -w
  # This wine looks for its own fonts (Tahoma, MS Sans Serif, Marlett) in a folder that is not
  # there.
  cp /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon "$WINEPREFIX/drive_c/windows/Fonts/"
}

# keep_to_one_core NUMBER: this process and what it starts, the cores taken in turn. Each call of
# the system under wine is a question to another process: on one core it costs a third of what it
# costs where another core has to be woken for the answer.
keep_to_one_core() {
  local cores
  read -ra cores <<<"$(python3 -c 'import os; print(*sorted(os.sched_getaffinity(0)))')"
  taskset -cp "${cores[$1 % ${#cores[@]}]}" "$BASHPID" >/dev/null 2>&1 || true
}

# use_every_core: what is started from here on may run anywhere again.
use_every_core() { taskset -cp "0-$(($(nproc --all) - 1))" "$BASHPID" >/dev/null 2>&1 || true; }

# be_nice N: of what is started from here on, where it may be. Cases that hold a program to times
# go before whatever else the machine does.
be_nice() { renice -n "$1" -p "$BASHPID" >/dev/null 2>&1 || true; }

wine_here() { "$WINELOADER" "$@"; }
wineserver_here() { "$(dirname "$WINELOADER")/wineserver" "$@"; }

# start_sound: a sound server with one silent output whose monitor is what programs record. Sets
# PULSE_SERVER. Fails when there is none after a while. Without "norewinds" the output works in
# steps of two seconds, and recordings begin that late. CORVANE_SOUND_SOURCE is the tool that takes
# the device away, makes it silent or slow, and puts it right again.
start_sound() {
  local folder server tries
  folder=$(mktemp -d)
  HOME=$folder XDG_RUNTIME_DIR=$folder PULSE_RUNTIME_PATH=$folder PULSE_STATE_PATH=$folder \
    pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --high-priority=no \
    --realtime=no --log-target=stderr \
    -L "module-native-protocol-unix auth-anonymous=1 socket=$folder/native" \
    -L "module-null-sink sink_name=corvane rate=44100 norewinds=1" \
    >"$LOGS/pulseaudio$SURROUNDINGS.log" 2>&1 </dev/null &
  server=$!
  at_exit "kill -CONT $server 2>/dev/null; kill $server 2>/dev/null; wait $server 2>/dev/null
    rm -rf '$folder'"
  export PULSE_SERVER=unix:$folder/native
  for tries in $(seq 1 100); do
    if pactl set-default-source corvane.monitor 2>/dev/null; then
      pactl set-default-sink corvane
      # The server gives up what niceness it was started with.
      # shellcheck disable=SC2046
      renice -n "$(nice)" -p $(ls "/proc/$server/task") >/dev/null 2>&1 || true
      cp "$ROOT/scripts/lib/sound_source.sh" "$folder/sound-source"
      echo "$server" >"$folder/server"
      CORVANE_SOUND_SOURCE=$(windows_path "$folder/sound-source")
      export CORVANE_SOUND_SOURCE
      return 0
    fi
    sleep 0.1
  done
  say "no sound server: $(tail -n 3 "$LOGS/pulseaudio$SURROUNDINGS.log")"
  return 1
}

# windows_path PATH: as a program under wine names it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
