#!/usr/bin/env bash
# tavlo-cli midi commands against the virtual PC1600 inside tavlo-cli itself:
# no MIDI server needed. Dumps come whole, a silent identifier times out with
# the flow's message and status 3, bad arguments and files are refused.
source "$(dirname "$0")/lib/common.sh"
v="Tavlo Virtual PC1600"

ports=$("$cli" midi ports 2>"$dir/ports.err") || fail "midi ports"
grep -qx "in:  $v" <<<"$ports" || fail "no virtual input: $ports"
grep -qx "out: $v" <<<"$ports" || fail "no virtual output: $ports"
# With or without a MIDI server, the list is all there is to read.
[[ ! -s "$dir/ports.err" ]] || fail "midi ports wrote to stderr: $(head -3 "$dir/ports.err")"

# A cleared device: 51 "--Initialized--" entries of 72 raw bytes.
"$cli" midi get all-presets --in "$v" --out "$v" -o "$dir/p.syx" >/dev/null 2>&1 || fail "get all-presets"
[[ $(stat -c %s "$dir/p.syx") == $((1849 + 51 * 144 + 1)) ]] || fail "ALL PRESETS has $(stat -c %s "$dir/p.syx") bytes"
"$cli" midi get all-scenes --in "$v" --out "$v" -o "$dir/s.syx" >/dev/null 2>&1 || fail "get all-scenes"
[[ $(stat -c %s "$dir/s.syx") == 4409 ]] || fail "ALL SCENES size"
"$cli" midi get all-globals --in "$v" --out "$v" -o "$dir/g.syx" >/dev/null 2>&1 || fail "get all-globals"
[[ $(stat -c %s "$dir/g.syx") == 420 ]] || fail "ALL GLOBALS size"
"$cli" midi get edit-buffer --in "$v" --out "$v" -o "$dir/e.syx" >/dev/null 2>&1 || fail "get edit-buffer"
[[ $(stat -c %s "$dir/e.syx") == 188 ]] || fail "edit buffer size"
[[ $(head -c 7 "$dir/e.syx" | od -An -tx1 | tr -d ' \n') == "f000001b0b0004" ]] || fail "edit buffer header"

# The device answers on identifier 0 only.
msg=$("$cli" midi get edit-buffer --in "$v" --out "$v" --device-id 4 --timeout 0.2 -o "$dir/none.syx" 2>&1)
status=$?
[[ $status == 3 ]] || fail "silent device: status $status ($msg)"
grep -q "Cannot Get Preset Edit Buffer: There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup." \
    <<<"$msg" || fail "time-out message: $msg"
[[ ! -e "$dir/none.syx" ]] || fail "a file was written without a dump"

found=$("$cli" midi search --in "$v" --out "$v" 2>/dev/null) || fail "search"
grep -q "Your PC1600(x) was found on MIDI In Channel 01!" <<<"$found" || fail "search said: $found"

# Sending a file of dumps to the device (it is gone when tavlo-cli ends).
"$cli" midi send "$dir/p.syx" --out "$v" --pause 0 >/dev/null 2>&1 || fail "send"

# Refusals.
echo "no sysex here" >"$dir/text.syx"
expect_statuses <<CASES
2|midi send "$dir/text.syx" --out "$v"
2|midi send "$dir/missing.syx" --out "$v"
1|midi send "$dir/p.syx" --out "No Such Device"
1|midi get all-presets --in "No Such Device" --out "$v" -o "$dir/x.syx"
64|midi get everything --in "$v" --out "$v" -o "$dir/x.syx"
64|midi get all-presets --in "$v" --out "$v"
64|midi get all-presets --in "$v" --out "$v" --device-id 16 -o "$dir/x.syx"
64|midi get all-presets --in "$v" --out "$v" --device-id 0zz -o "$dir/x.syx"
64|midi get all-presets --in "$v" --out "$v" --device-id -0 -o "$dir/x.syx"
64|midi get all-presets --in "$v" --out "$v" --timeout soon -o "$dir/x.syx"
64|midi get all-presets --in "$v" --out "$v" --timeout 1s -o "$dir/x.syx"
64|midi send "$dir/p.syx" --out "$v" --pause 10ms
64|midi ports --api coremidi
64|midi ports --bogus
0|midi ports --help --bogus
CASES
[[ ! -e "$dir/x.syx" ]] || fail "a refused command wrote a file"
echo "midi commands: all passed"
