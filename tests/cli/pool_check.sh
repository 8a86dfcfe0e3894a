#!/usr/bin/env bash
# tavlo-cli pool init / pool check on a new, a damaged and a foreign file.
source "$(dirname "$0")/lib/common.sh"
command -v sqlite3 >/dev/null || { echo "sqlite3 shell missing"; exit 77; }

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

# A pool init killed half-way leaves no half-made pool that is refused for ever.
for delay in 0.005 0.01 0.02 0.04; do
    rm -rf "$dir/killed"
    "$cli" pool init --pool "$dir/killed/Tavlo.mdb" >/dev/null &
    sleep $delay; kill -9 $! 2>/dev/null; wait $! 2>/dev/null
    "$cli" pool init --pool "$dir/killed/Tavlo.mdb" >/dev/null || fail "after a kill at ${delay}s"
    "$cli" pool check --pool "$dir/killed/Tavlo.mdb" >/dev/null || fail "not sound after a kill at ${delay}s"
done

# Pools Tavlo can't work on: every command refuses them with exit 2, naming
# why, and leaves the file as it was; pool check says what it found.
#   name | damage | refusal | pool check line (and verdict)
ro_folder() {  # runs a command with the folder of the pool read-only
    if [ "$(id -u)" = 0 ]; then
        unshare -m sh -c 'd=$1; shift; mount --bind -o ro "$d" "$d" && exec "$@"' sh "$(dirname "$POOL")" "$@"
    else
        chmod a-w "$(dirname "$POOL")"; "$@"; local rc=$?; chmod u+w "$(dirname "$POOL")"; return $rc
    fi
}
plain() { "$@"; }
while IFS='|' read -r name damage run refusal line verdict; do
    mkdir -p "$dir/$name"; POOL="$dir/$name/Tavlo.mdb"
    cp "$dir/new/Tavlo.mdb" "$POOL"
    [ -z "$damage" ] || sqlite3 "$POOL" "$damage" || fail "$name: damage"
    if [ "$run" = ro_folder ] && ! ro_folder true 2>/dev/null; then echo "skipped $name: no read-only folder here"; continue; fi
    before=$(sha1sum <"$POOL")
    for command in "pool list" "pool import $dir/notes.txt" "pool show Lead"; do
        $run "$cli" $command --pool "$POOL" >/dev/null 2>"$dir/err"; rc=$?
        [ $rc == 2 ] || fail "$name: $command exit $rc: $(cat "$dir/err")"
        grep -qF "$refusal" "$dir/err" || fail "$name: $command said: $(cat "$dir/err")"
    done
    out=$($run "$cli" pool check --pool "$POOL")
    grep -qxF "  $line" <<<"$out" || fail "$name: pool check: $out"
    grep -qx "$verdict" <<<"$out" || fail "$name: pool check verdict: $out"
    [ "$(sha1sum <"$POOL")" == "$before" ] || fail "$name: the pool was changed"
done <<'TABLE'
no-scenes|DROP TABLE SceneRec|plain|lacks what Tavlo needs: table SceneRec.  It has not been changed.|missing table: SceneRec|NOT SOUND
no-master|ALTER TABLE FaderRec DROP COLUMN MasterOf|plain|lacks what Tavlo needs: column FaderRec.MasterOf.  It has not been changed.|missing column: FaderRec.MasterOf|NOT SOUND
read-only||ro_folder|is in a read-only folder: Tavlo must write beside it.  It has not been changed.|folder: read-only (Tavlo can read this pool but not work on it there)|sound
TABLE
echo "pool check: all passed"
