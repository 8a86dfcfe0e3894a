#!/usr/bin/env bash
# tavlo-cli contents: the "Sysex File Contents" listing of a file.
source "$(dirname "$0")/lib/common.sh"

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

# Files without F0 and the 200-entry limit are covered by the core tests.
"$cli" contents "$dir/missing.syx" >/dev/null 2>&1
[[ $? -eq 2 ]] || fail "a missing file is no bad input"
echo "contents: all passed"
