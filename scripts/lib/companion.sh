# The companion for the command line under Windows: the same bytes as natively.

# Its replay prints what the native tests expect, byte by byte, wherever it goes.
replay_gives_the_same_bytes() {
  local format day=tests/scenarios/busy_hour/following/20261115 expected code=0
  local out=$BUILD/logs/contract/tools-output
  local replay=("$WINELOADER" "$BUILD/mingw/tools/corvane-tools.exe" replay "$day/TETRA_cc.log"
    --events "$day/TETRA_event.log" --lists tests/golden/replay)
  for format in text json csv; do
    expected=tests/golden/replay/following.$format
    "${replay[@]}" -F "$format" >"$out" || return 1
    cmp "$out" "$expected" || return 1
    "${replay[@]}" -F "$format" -q -o "$(windows_path "$out-file")" || return 1
    cmp "$out-file" "$expected" || return 1
    "${replay[@]}" -F "$format" -q --expect "$expected" | cmp - "$expected" || return 1
  done
  "${replay[@]}" -F csv -q --expect tests/golden/replay/following.json >/dev/null || code=$?
  [ "$code" -eq 1 ] || return 1
  code=0
  "${replay[@]}" --nothing || code=$?
  [ "$code" -eq 2 ]
}

# What its other commands print and write, beside what the native program makes of the same input:
# records and pages of the busy hour, labels taken from and given to other programs, calls shared.
other_commands_give_the_same_files() {
  local native=$BUILD/sanitize/tools/corvane-tools out=$BUILD/companion side form list
  local days=tests/scenarios/busy_hour/following
  configure_and_build sanitize corvane-tools || return 1
  rm -rf "$out"
  for side in native windows; do
    mkdir -p "$out/$side/program" "$out/$side/lists"
    cp tests/golden/TETRA_GSSI.txt tests/golden/TETRA_SSI.txt "$out/$side/program"
  done
  make_recorded_day "$out/Daily/20261115" || return 1
  for side in native windows; do
    local tools=("$native") to=$out/$side
    [ "$side" = native ] || tools=("$WINELOADER" "$BUILD/mingw/tools/corvane-tools.exe")
    for form in json csv; do
      "${tools[@]}" report "$days/20261115" "$days/20261116" -F "$form" -q >"$to/report.$form" ||
        return 1
      cmp "$to/report.$form" "tests/golden/report/following.$form" || return 1
    done
    "${tools[@]}" report "${out#"$ROOT"/}/Daily/20261115" -q -o "${to#"$ROOT"/}/day.html" ||
      return 1
    while read -r form list; do
      "${tools[@]}" lists import "$form" "tests/golden/lists/$list" --network 262/42 \
        --folder "${to#"$ROOT"/}/program" --write >"$to/lists/$list.txt" || return 1
    done <<'LISTS'
trunk-recorder trunk-recorder.csv
trunk-recorder-units trunk-recorder-units.csv
radioreference radioreference.csv
dsdplus-groups DSDPlus.groups
dsdplus-radios DSDPlus.radios
op25 op25.tsv
telive telive.txt
dsd-fme dsd-fme.csv
LISTS
    # The copies that were kept have the time in their names, and dates are written as each system's
    # regional settings say.
    cut -d ';' -f 1-5 "$to/program/TETRA_SSI.txt" >"$to/radios"
    for form in trunk-recorder trunk-recorder-units dsdplus-radios op25 telive rdio-scanner; do
      "${tools[@]}" lists export "$form" --network 262/42 --folder "${to#"$ROOT"/}/program" \
        >"$to/lists/export-$form" || return 1
    done
    find "$to/program" -type f ! -name TETRA_GSSI.txt -delete
    # What is started for each call reads the sidecar, which has other letters than those of ASCII
    # in its path.
    "${tools[@]}" share "${out#"$ROOT"/}/Daily/20261115" \
      --outbox "${to#"$ROOT"/}/outbox $LETTERS" --exec "$(hook_of "${tools[-1]}") lists import \
      op25 JSON --network 262/42 --folder \"${to#"$ROOT"/}\"" >"$to/said" || return 1
    [ "$(grep -c '\.json' "$to/said")" -eq 2 ] || return 1
    rm "$to/said"
  done
  diff -r "$out/native" "$out/windows"
}

# "Öl €": letters that every code page has at another place or not at all.
LETTERS=$'\xc3\x96l \xe2\x82\xac'

# hook_of PROGRAM: how --exec names it.
hook_of() {
  case $1 in
    *.exe) printf '"%s"' "$(windows_path "$1")" ;;
    *) printf '"%s"' "$1" ;;
  esac
}

# make_recorded_day FOLDER: two calls with their recordings, one of them with two talkers.
make_recorded_day() {
  mkdir -p "$1/Record"
  printf '%s\r\n' \
    '15/11/2026 14:23:05 - Call ID: 7 - On carrier: 2610 - Group: 9001 [Fire & Rescue]' \
    '15/11/2026 14:23:05 - Call ID: 7 - Calling SSI: 5010 [Car 3]' \
    '15/11/2026 14:23:07 - Call ID: 7 - VC D-TX-Granted SSI: 5011' \
    '15/11/2026 14:23:09 - Call ID: 7 - VC D-Released' \
    '15/11/2026 14:24:00 - Call ID: 8 - On carrier: 2611 - Group: 9002' \
    '15/11/2026 14:24:00 - Call ID: 8 - Calling SSI: 5020' \
    '15/11/2026 14:24:03 - Call ID: 8 - VC D-Released' >"$1/TETRA_event.log"
  python3 - "$1/Record/142305_7_9001.wav" 4 "$1/Record/142400_8_9002 $LETTERS.wav" 3 <<'PYTHON'
import sys
import wave

for name, seconds in zip(sys.argv[1::2], sys.argv[2::2]):
    with wave.open(name, "wb") as sound:
        sound.setparams((1, 2, 8000, 0, "NONE", ""))
        sound.writeframes(b"\x00\x10\x00\xf0" * (4000 * int(seconds)))
PYTHON
}
