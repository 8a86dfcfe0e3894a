#!/usr/bin/env bash
# tavlo-cli preset build / preset show: the single preset dump from JSON and back.
source "$(dirname "$0")/lib/common.sh"
hexof() { od -An -tx1 -v "$1" | tr -s ' \n' ' ' | sed 's/^ //; s/ $//'; }
has() { grep -qF -- "$2" <<<"$1" || fail "missing $2"; }

# A new preset: 188 bytes, Size 72 (nibbles 00 00 04 08 at offset 39).
echo '{}' > "$dir/empty.json"
"$cli" preset build "$dir/empty.json" -o "$dir/empty.syx" >/dev/null || fail "build of {}"
[[ $(stat -c %s "$dir/empty.syx") -eq 188 ]] || fail "{} gave $(stat -c %s "$dir/empty.syx") bytes"
hex=$(hexof "$dir/empty.syx")
[[ "${hex:0:20}" == "f0 00 00 1b 0b 00 04" ]] || fail "header: ${hex:0:20}"
[[ "${hex:117:11}" == "00 00 04 08" ]] || fail "size field: ${hex:117:11}"
[[ "${hex: -2}" == "f7" ]] || fail "no F7 at the end"

# Show gives back the fields it was given, and building its output gives the same bytes
# (which catches any number show drops); the texts are checked as shown.
cat > "$dir/live.json" <<'JSON'
{
  "Name": "Live>Set",
  "Faders": [
    {"Name": "Vol", "Function": 1, "Min": 10, "Max": 100, "Channel": 3, "CCNum": 7, "ReplaceMode": 2},
    {"Name": "Master", "Function": 2, "MasterOf": "X X               "},
    {"Name": "Cutoff", "Function": 3, "Min": -200, "Max": 16000, "ParamFormat": 1, "MIDIString": "b0 07 pr"}
  ],
  "Buttons": [
    {"Name": "Prog", "Function": 3, "Channel": 16, "ProgChange": 42},
    {"Name": "Roland", "Function": 5, "String1": "f0 41 10 42 12 40 00 7f 00 cs f7"},
    {"Name": "Flip", "Function": 7, "String1": "90 3C rv", "String2": "80 3C 00 F6"},
    {"Name": "Note", "Function": 4, "Channel": 9, "Note": 61, "Velocity": 99}
  ],
  "DataWheelLink": 19,
  "SetupChannels": [{"Bank": 3, "BankIsMSB": 1, "ProgChange": 5, "Volume": 101}],
  "SetupString": "C0 05"
}
JSON
"$cli" preset build "$dir/live.json" --device-id 3 -o "$dir/live.syx" >/dev/null || fail "build of live.json"
hex=$(hexof "$dir/live.syx")
[[ "${hex:15:2}" == "03" ]] || fail "device identifier: ${hex:15:2}"
out=$("$cli" preset show "$dir/live.syx") || fail "show of live.syx"
has "$out" '  "Name": "Live>Set",'
has "$out" '"MasterOf": "X X               ",'
has "$out" '"MIDIString": "B0 07 pr",'
has "$out" '"ListItem": "B0 07 pr  (ctrlch)",'
has "$out" '"String1": "F0 41 10 42 12 40 00 7F 00 41 F7",'
has "$out" '"String1": "90 3C rv",'
has "$out" '"String2": "80 3C 00 F6",'
has "$out" '"ListItem": "F6  (tunerq)",'
has "$out" '"SetupString": "C0 05",'
echo "$out" > "$dir/shown.json"
"$cli" preset build "$dir/shown.json" --device-id 3 -o "$dir/again.syx" >/dev/null || fail "build of show's output"
cmp -s "$dir/live.syx" "$dir/again.syx" || fail "show's output builds other bytes"

# The PC1600 model: no Send Fader, no "rv" in strings.
echo '{"Buttons": [{}, {"Function": 8}]}' > "$dir/sendfader.json"
err=$("$cli" preset build "$dir/sendfader.json" --model pc1600 -o "$dir/x.syx" 2>&1); status=$?
[[ $status -eq 2 ]] || fail "Send Fader on PC1600: status $status"
has "$err" "Buttons[1].Function: The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE"
"$cli" preset build "$dir/sendfader.json" -o "$dir/x.syx" >/dev/null || fail "Send Fader on PC1600X refused"
echo '{"Buttons": [{"Function": 5, "String1": "90 3C rv"}]}' > "$dir/rv.json"
"$cli" preset build "$dir/rv.json" --model pc1600 -o "$dir/x.syx" >/dev/null 2>&1
[[ $? -eq 2 ]] || fail "rv on PC1600 not refused with status 2"

# A setup scene read on the PC1600 model is dropped with the program's message.
echo '{"SetupScene": "--Empty--", "SetupScenePreset": -1}' > "$dir/scene.json"
"$cli" preset build "$dir/scene.json" -o "$dir/scene.syx" >/dev/null || fail "build with a setup scene"
out=$("$cli" preset show "$dir/scene.syx" --model pc1600 2>"$dir/scene.err") || fail "show on PC1600"
has "$(cat "$dir/scene.err")" "Incompatibility to PC1600: This Preset has a Setup Scene, which is incompatible with your PC1600 (non-X) model."
has "$out" '"SetupScene": "<none>",'
out=$("$cli" preset show "$dir/scene.syx" 2>"$dir/scene.err") || fail "show on PC1600X"
[[ ! -s "$dir/scene.err" ]] || fail "a message on the PC1600X"
has "$out" '"SetupScene": "--Empty--",'

# Refusals name the control and exit 2.
expect_refusal() {  # file, text in the message
  local err status
  err=$("$cli" preset build "$1" -o "$dir/refused.syx" 2>&1 >/dev/null); status=$?
  [[ $status -eq 2 ]] || fail "$1: status $status, $err"
  has "$err" "$2"
  [[ ! -e "$dir/refused.syx" ]] || fail "$1: a file was written"
}
echo '{"Faders": [{}, {}, {"Function": 3, "MIDIString": "b0 07 rv"}]}' > "$dir/badstring.json"
expect_refusal "$dir/badstring.json" 'Faders[2].MIDIString: the MIDI string "b0 07 rv" is not valid.'
echo '{"Faders": [{"Function": 4}]}' > "$dir/badfunction.json"
expect_refusal "$dir/badfunction.json" "Faders[0].Function: 4 is outside 0 to 3"
echo '{"Faders": [{"Min": "low"}]}' > "$dir/badtype.json"
expect_refusal "$dir/badtype.json" "Faders[0].Min: is no whole number"
echo '{"Buttons": [{"Function": 9, "Scene": "Nowhere", "ScenePreset": 5}]}' > "$dir/badscene.json"
expect_refusal "$dir/badscene.json" "Buttons[0].Scene"
echo '{"Faders": [' > "$dir/broken.json"
expect_refusal "$dir/broken.json" "is no JSON object"

# Show refuses what is no preset dump, and damaged dumps, with status 2.
printf '\xf0\x41\x10\x42\x12\x40\x00\x7f\x00\x41\xf7' > "$dir/roland.syx"
err=$("$cli" preset show "$dir/roland.syx" 2>&1 >/dev/null); status=$?
[[ $status -eq 2 ]] || fail "show of a foreign dump: status $status"
has "$err" "Cannot Import Preset Sysex: The Sysex file you selected appears not to be PC1600(x) Preset dump data."
head -c 100 "$dir/live.syx" > "$dir/cut.syx"
printf '\xf7' >> "$dir/cut.syx"
err=$("$cli" preset show "$dir/cut.syx" 2>&1 >/dev/null); status=$?
[[ $status -eq 2 ]] || fail "show of a cut dump: status $status"
has "$err" "The preset dump is damaged:"
expect_statuses <<CASES
64|preset build "$dir/live.json" --device-id " 3" -o "$dir/refused.syx"
64|preset show "$dir/live.syx" --json
CASES
echo "preset build/show: all passed"
