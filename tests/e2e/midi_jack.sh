#!/usr/bin/env bash
# End to end on a JACK dummy server: tavlo-cli's RtMidi ports against
# tavlo-vdevice. A 40+ KB ALL PRESETS goes to the device and comes back
# byte for byte; the channel search finds the device on its identifier; a
# device that doesn't answer gives the flow's message and exit status 3; a
# device that sends clock, notes and broken dumps around its answer gets
# exactly its dump taken, or nothing; Ctrl-C ends a wait.
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

# A device that sends as a real MIDI line can: what is taken is exactly the
# dump the device sent, or nothing.
perl -e 'binmode STDOUT; print "\xF0\x00\x00\x1B\x0B\x00\x03", (map { chr($_ % 128) } 1 .. 412), "\xF7"' \
    >"$work/globals.syx"
head -c 200 "$work/globals.syx" >"$work/globals.head"
tail -c +201 "$work/globals.syx" >"$work/globals.tail"
for n in 4408 4410 4409; do
    perl -e 'binmode STDOUT; print "\xF0\x00\x00\x1B\x0B\x00\x02", chr($ARGV[0] % 100) x ($ARGV[0] - 8), "\xF7"' $n \
        >"$work/scenes$n.syx"
done

# raw_get NAME KIND SECONDS [PEER ARGS...]: midi get against a raw peer;
# leaves the exit status in $status, stderr in $msg, the dump in $work/NAME.syx.
raw_get() {
    local name=$1 kind=$2 seconds=$3
    shift 3
    start_rawpeer "$name" "$@"
    msg=$(timeout 60 "$cli" midi get "$kind" --in "$name-out:out" --out "$name:in" --api jack --timeout "$seconds" \
        -o "$work/$name.syx" 2>&1 >/dev/null)
    status=$?
    stop_vdevices
}

raw_get clock all-globals 10 "@$work/globals.head" F8 "@$work/globals.tail"
[[ $status == 0 ]] || fail "a clock byte inside a dump: status $status: $msg"
cmp "$work/globals.syx" "$work/clock.syx" || fail "a clock byte inside a dump was kept in it"

raw_get note all-globals 2 "@$work/globals.head" 903C40 "@$work/globals.tail"
[[ $status == 3 ]] || fail "a note inside a dump: status $status: $msg"
[[ ! -e "$work/note.syx" ]] || fail "a dump broken by a note was taken"

raw_get cut all-globals 10 "@$work/globals.head" "@$work/globals.syx"
[[ $status == 0 ]] || fail "a dump cut off and sent again: status $status: $msg"
cmp "$work/globals.syx" "$work/cut.syx" || fail "a dump cut off was joined to the one sent again"

raw_get scenes all-scenes 10 "@$work/scenes4408.syx" "@$work/scenes4410.syx" "@$work/scenes4409.syx"
[[ $status == 0 ]] || fail "ALL SCENES: status $status: $msg"
cmp "$work/scenes4409.syx" "$work/scenes.syx" || fail "an ALL SCENES of another length than 4409 was taken"

# Clock and notes for 20 s do not stretch a time-out of 2 s.
started=$(date +%s%N)
raw_get flood all-globals 2 --flood 20000
elapsed=$(( ($(date +%s%N) - started) / 1000000 ))
[[ $status == 3 ]] || fail "a flood: status $status: $msg"
(( elapsed < 8000 )) || fail "a flood stretched a 2 s time-out to $elapsed ms"

# Ctrl-C ends a wait with status 4; a wait of more than a second says what
# it waits for.
start_rawpeer silent
"$cli" midi get all-globals --in silent-out:out --out silent:in --api jack --timeout 60 -o "$work/silent.syx" \
    >/dev/null 2>"$work/silent.err" &
cli_pid=$!
# Once the wait has said what it waits for, it is a wait.
for _ in $(seq 200); do
    grep -q "Waiting for ALL GLOBALS" "$work/silent.err" && break
    sleep 0.1
done
kill -INT "$cli_pid"
wait "$cli_pid"
status=$?
stop_vdevices
[[ $status == 4 ]] || fail "Ctrl-C gave status $status: $(cat "$work/silent.err")"
grep -q "^tavlo-cli: Getting data from PC1600(x): Waiting for ALL GLOBALS from PC1600(x)...$" "$work/silent.err" ||
    fail "no progress on stderr: $(cat "$work/silent.err")"
grep -q "^tavlo-cli: cancelled$" "$work/silent.err" || fail "Ctrl-C said: $(cat "$work/silent.err")"

echo "midi over JACK: all passed"
