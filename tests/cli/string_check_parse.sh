#!/usr/bin/env bash
# tavlo-cli string check / string parse: the notation from outside.
source "$(dirname "$0")/lib/common.sh"

# context, model, text, expected output (entered | rendered | bytes), or "error".
# The notation itself is covered by the core tests; these cases check that
# each context and model reaches it and how the answer is printed.
while IFS='|' read -r context model text entered rendered bytes; do
  [[ -z "$context" ]] && continue
  out=$("$cli" string check --context "$context" --model "$model" "$text" 2>&1); status=$?
  if [[ "$entered" == "error" ]]; then
    [[ $status -eq 2 ]] || fail "$context/$model \"$text\": status $status, $out"
    grep -qF "MIDI Message Error needs corrected: There is an error in your entered Message." <<<"$out" ||
      fail "$context \"$text\": no error box: $out"
    continue
  fi
  [[ $status -eq 0 ]] || fail "$context/$model \"$text\": status $status, $out"
  expected=$(printf 'entered: %s\nrendered: %s\nbytes: %s' "$entered" "$rendered" "$bytes")
  [[ "$out" == "$expected" ]] || fail "$context/$model \"$text\": got
$out
expected
$expected"
done <<'CASES'
fader|pc1600x|f0  41   f7|F0 41 F7|F0 41 F7|3
button|pc1600x|240 065 247|240 065 247|F0 41 F7|3
button|pc1600x|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 41 F7|11
setup|pc1600x|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 41 F7|11
fader|pc1600x|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 cs F7|11
button|pc1600|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 cs F7|F0 41 10 42 12 40 00 7F 00 41 F7|11
button|pc1600|90 3C rv|error
fader|pc1600x|90 3C rv|error
fader|pc1600x|256|error
CASES

out=$("$cli" string parse "90 3C 7F 3E 7F C0 80") || fail "string parse"
expected=$'90 3C 7F  (noteon)\n90 3E 7F  (noteon)\nC0  (freebyte)\n80  (freebyte)'
[[ "$out" == "$expected" ]] || fail "string parse gave: $out"
out=$("$cli" string parse B0 07 40 08 50) || fail "string parse of words"
[[ "$out" == $'B0 07 40  (ctrlch)\nB0 08 50  (ctrlch)' ]] || fail "running status: $out"
out=$("$cli" string parse --json "B0-gc 07 pr") || fail "string parse --json"
grep -qF '"CommandChannel": 16,' <<<"$out" || fail "json: $out"
grep -qF '"Value2": 128,' <<<"$out" || fail "json: $out"
"$cli" string check --context knob "90" >/dev/null 2>&1
[[ $? -eq 64 ]] || fail "an unknown context is no usage error"
echo "string check/parse: all passed"
