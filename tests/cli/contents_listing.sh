#!/usr/bin/env bash
# tavlo-cli contents: the "Sysex File Contents" listing of a file.
set -u
cli="$TAVLO_BUILD_DIR/tools/tavlo-cli"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

# A request, a preset dump, a Roland message and a family message with command 05.
printf '\xf0\x00\x00\x1b\x0b\x00\x10\xf7' > "$dir/mixed.syx"
echo '{}' > "$dir/empty.json"
"$cli" preset build "$dir/empty.json" --device-id 2 -o "$dir/preset.syx" >/dev/null || fail "preset build"
cat "$dir/preset.syx" >> "$dir/mixed.syx"
printf '\xf0\x41\x10\x42\x12\x40\x00\x7f\x00\x41\xf7\xf0\x00\x00\x1b\x0b\x00\x05\xf7\xf0\x00\x00\x1b\x0b\x00\x01' >> "$dir/mixed.syx"
out=$("$cli" contents "$dir/mixed.syx") || fail "contents"
expected="The Sysex messages found in the file:

   $dir/mixed.syx

 Are....

       F0 00 00 1B 0B 00 10 , (offset 1)
       PC1600(x) CURRENT EDIT BUFFER Data (offset 9)
       F0 41 10 42 12 40 00 , (offset 197)
       F0 00 00 1B 0B 00 05 , (offset 208)
       PC1600(x) ALL PRESETS Data (offset 216)"
[[ "$out" == "$expected" ]] || fail "listing:
$out"

# No F0: the heading and nothing under it.
printf 'plain text' > "$dir/none.syx"
out=$("$cli" contents "$dir/none.syx") || fail "contents of a file without F0"
[[ $(grep -c 'offset' <<<"$out") -eq 0 ]] || fail "lines under a file without F0"
grep -qF ' Are....' <<<"$out" || fail "heading missing"

# At most 200 entries.
for i in $(seq 1 205); do printf '\xf0\x00\x00\x1b\x0b\x00\x02\xf7'; done > "$dir/many.syx"
out=$("$cli" contents "$dir/many.syx") || fail "contents of many"
[[ $(grep -c 'ALL SCENES Data' <<<"$out") -eq 200 ]] || fail "not 200 entries"
grep -qF "ALL SCENES Data (offset 1593)" <<<"$out" || fail "offset of the 200th entry"

"$cli" contents "$dir/missing.syx" >/dev/null 2>&1
[[ $? -eq 2 ]] || fail "a missing file is no bad input"
echo "contents: all passed"
