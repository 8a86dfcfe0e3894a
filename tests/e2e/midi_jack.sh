#!/usr/bin/env bash
# End to end on a JACK dummy server: tavlo-cli's RtMidi ports against
# tavlo-vdevice. A 40+ KB ALL PRESETS goes to the device and comes back
# byte for byte; the channel search finds the device on its identifier; a
# device that doesn't answer gives the flow's message and exit status 3.
set -u
source "$TAVLO_SOURCE_DIR/tests/e2e/jack_common.bash"

start_jack
start_vdevice vdev --device-id 5 --save-on-exit "$work/saved.syx"
in="vdev-out:out"
out="vdev:in"

ports=$("$cli" midi ports --api jack) || fail "midi ports"
grep -qx "in:  $in" <<<"$ports" || fail "the device's output is not listed as an input: $ports"
grep -qx "out: $out" <<<"$ports" || fail "the device's input is not listed as an output: $ports"
grep -qx "in:  Tavlo Virtual PC1600" <<<"$ports" || fail "the virtual device is not listed: $ports"

sample_all_presets 5 400 >"$work/presets.syx"
size=$(stat -c %s "$work/presets.syx")
(( size > 40000 )) || fail "the sample is only $size bytes"

# To the device...
timeout 60 "$cli" midi send "$work/presets.syx" --out "$out" --api jack --no-pacing >/dev/null ||
    fail "midi send"
# ...and back.
timeout 60 "$cli" midi get all-presets --in "$in" --out "$out" --device-id 5 --api jack --no-pacing \
    --timeout 20 -o "$work/back.syx" >/dev/null || fail "midi get all-presets"
cmp "$work/presets.syx" "$work/back.syx" || fail "ALL PRESETS came back changed"

# The other dumps answer too.
for kind in all-scenes all-globals edit-buffer; do
    timeout 60 "$cli" midi get $kind --in "$in" --out "$out" --device-id 5 --api jack --no-pacing \
        --timeout 10 -o "$work/$kind.syx" >/dev/null || fail "midi get $kind"
done
[[ $(stat -c %s "$work/all-scenes.syx") == 4409 ]] || fail "ALL SCENES is not 4409 bytes"
[[ $(stat -c %s "$work/all-globals.syx") == 420 ]] || fail "ALL GLOBALS is not 420 bytes"

# Channel search: identifier 5 is MIDI channel 6.
found=$(timeout 120 "$cli" midi search --in "$in" --out "$out" --api jack) || fail "search: $found"
grep -q "Received Response: Your PC1600(x) was found on MIDI In Channel 06!" <<<"$found" || fail "search said: $found"

# Another identifier: nobody answers, the flow's message and status 3.
set +e
msg=$(timeout 60 "$cli" midi get all-globals --in "$in" --out "$out" --device-id 2 --api jack --timeout 1 \
    -o "$work/none.syx" 2>&1)
status=$?
set -u
[[ $status == 3 ]] || fail "a silent device gave status $status: $msg"
grep -q "Cannot Communicate with PC1600(x): There is no response from the PC1600(x) while waiting for ALL GLOBALS." \
    <<<"$msg" || fail "time-out message: $msg"
[[ ! -e "$work/none.syx" ]] || fail "a file was written without a dump"

# The device keeps what it was sent: its saved memory starts with it.
stop_vdevices
[[ -s "$work/saved.syx" ]] || fail "no memory saved on exit"
cmp -n "$size" "$work/presets.syx" "$work/saved.syx" || fail "the saved memory lacks the presets"

echo "midi over JACK: all passed"
