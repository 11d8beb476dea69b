#!/bin/sh
# Takes the sound server's only device away ("take") or brings it back ("bring"), makes it silent as
# a privacy switch does ("mute", "unmute"), lets whoever asks it wait ("freeze", "thaw"), or plays a
# tone into it ("play", "hush"). Programs under wine start this; the result is in the file "answer"
# beside the name that it was started by, the server's number in the file "server".
case $1 in
  take) pactl unload-module module-null-sink ;;
  bring)
    pactl load-module module-null-sink sink_name=corvane rate=44100 norewinds=1 &&
      pactl set-default-source corvane.monitor && pactl set-default-sink corvane
    ;;
  mute) pactl set-source-mute corvane.monitor 1 ;;
  unmute) pactl set-source-mute corvane.monitor 0 ;;
  play) pactl load-module module-sine sink=corvane frequency=440 ;;
  hush) pactl unload-module module-sine ;;
  freeze) kill -STOP "$(cat "$(dirname "$0")/server")" ;;
  thaw) kill -CONT "$(cat "$(dirname "$0")/server")" ;;
  *) false ;;
esac >/dev/null 2>&1
code=$?
echo "$1 $code" >"$(dirname "$0")/answer"
