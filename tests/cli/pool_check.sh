#!/usr/bin/env bash
# tavlo-cli pool init / pool check on a new, a damaged and a foreign file.
source "$(dirname "$0")/lib/common.sh"

"$cli" pool init --pool "$dir/new/Tavlo.mdb" >/dev/null || fail "pool init"
out=$("$cli" pool check --pool "$dir/new/Tavlo.mdb") || fail "a new pool is not sound: $out"
grep -q '^sound$' <<<"$out" || fail "no verdict line: $out"

cp "$dir/new/Tavlo.mdb" "$dir/damaged.mdb"
sqlite3 "$dir/damaged.mdb" "DELETE FROM PresetRec WHERE Name = '--Initialized--'" || fail "sqlite3"
if out=$("$cli" pool check --pool "$dir/damaged.mdb"); then fail "a pool without its initialized preset passed"; fi
grep -q 'NOT SOUND' <<<"$out" || fail "verdict missing: $out"

echo "not a database" > "$dir/notes.txt"
before=$(sha1sum "$dir/notes.txt")
if "$cli" pool check --pool "$dir/notes.txt" >/dev/null; then fail "a text file passed"; fi
if "$cli" pool init --pool "$dir/notes.txt" >/dev/null 2>&1; then fail "init over a text file succeeded"; fi
[[ "$(sha1sum "$dir/notes.txt")" == "$before" ]] || fail "the text file was changed"

expect_statuses <<CASES
2|pool check --pool "$dir/missing.mdb"
64|pool check --pool "$dir/new/Tavlo.mdb" --repair
CASES
echo "pool check: all passed"
