#!/usr/bin/env bash
# The voice as it is installed, without devices: it finds its files, says a sentence, and understands it when it
# hears it; a file's name may have any letters.
#   try_voice.sh PROGRAM [COMMAND-IN-FRONT...]
set -euo pipefail
program=$1
shift
folder=$(mktemp -d)/Änderung
mkdir "$folder"
trap 'rm -rf "${folder%/*}"' EXIT
program=$(cd "$(dirname "$program")" && pwd)/${program##*/}
cd "$folder"

printf 'say>Before start checklist.\n' | "$@" "$program" --loudspeaker said.wav
"$@" "$program" --check --microphone said.wav --loudspeaker check.wav | tee told.txt
grep -q '^understood *"before start checklist"' told.txt

printf 'gear up\nflaps five\nbefore start checklist\n' >phrases.txt
understood=$("$@" "$program" --recognise phrases.txt said.wav | tr -d '\r')
echo "recognised: $understood"
[ "$understood" = "before start checklist" ]
