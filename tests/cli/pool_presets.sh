#!/bin/bash
# tavlo-cli pool list / rename / duplicate / delete on a pool of its own.
source "$(dirname "$0")/lib/common.sh"
command -v sqlite3 >/dev/null || { echo "sqlite3 shell missing"; exit 77; }
POOL="$dir/Tavlo.mdb"
expect_lines() {  # expect_lines "what" "actual" "expected"
    [ "$2" == "$3" ] || { printf 'FAIL: %s\n--- got:\n%s\n--- expected:\n%s\n' "$1" "$2" "$3"; exit 1; }
}

"$cli" pool init --pool "$POOL" >/dev/null || fail "pool init"
# Two presets with a device, one with a scene that the other's button sends.
sqlite3 "$POOL" <<'SQL' || fail "seed rows"
INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES
  ('Bass Rig', '2020-01-02 03:04:05', '2020-01-02 03:04:05', zeroblob(64)),
  ('Alpha', '2020-01-02 03:04:05', '2020-01-02 03:04:05', zeroblob(64));
INSERT INTO FaderRec (PresetREF, "Index", Name, Function) SELECT ID, 0, 'Vol', 1 FROM PresetRec WHERE Name = 'Alpha';
INSERT INTO SceneRec (PresetREF, Name) SELECT ID, 'Verse' FROM PresetRec WHERE Name = 'Alpha';
INSERT INTO ButtonRec (PresetREF, "Index", Function, Scene, ScenePreset)
  SELECT b.ID, 0, 9, 'Verse', a.ID FROM PresetRec a, PresetRec b WHERE a.Name = 'Alpha' AND b.Name = 'Bass Rig';
INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) SELECT ID, 'Korg', 'M1' FROM PresetRec WHERE Name = 'Alpha';
SQL

expect_lines "name order" "$("$cli" pool list --pool "$POOL")" "--Initialized--
Alpha
Bass Rig"
expect_lines "device order" "$("$cli" pool list --order device --pool "$POOL")" "> UNASSOCIATED 
          --Initialized--
          Bass Rig
> Korg M1
          Alpha"
"$cli" pool list --order size --pool "$POOL" >/dev/null 2>&1 && fail "unknown order accepted"
expect_lines "size" "$("$cli" pool size Alpha --pool "$POOL")" "8"

# Rename: a clash is refused and changes nothing; a free name keeps references.
"$cli" pool rename Alpha "bass rig" --pool "$POOL" 2>"$dir/err" && fail "clashing rename accepted"
grep -q "Cannot Rename: That name 'bass rig' is already in use in the database." "$dir/err" || fail "clash message: $(cat "$dir/err")"
# The name printed is the one stored, blanks trimmed.
out=$("$cli" pool rename Alpha "  Al's Pad " --pool "$POOL") || fail "rename"
expect_lines "rename" "$out" "renamed: Alpha -> Al's Pad"
[ "$(sqlite3 "$POOL" "SELECT COUNT(*) FROM ButtonRec b, PresetRec p WHERE b.ScenePreset = p.ID AND p.Name = 'Al' || char(732) || 's Pad'")" == 1 ] \
    || fail "rename lost the reference"
"$cli" pool list --pool "$POOL" | grep -qx "Al's Pad" || fail "renamed preset not listed"
"$cli" pool rename Nobody Else --pool "$POOL" 2>/dev/null && fail "rename of a missing preset"

# Duplicate goes through the editor: the copy has all companion rows.
out=$("$cli" pool duplicate "Al's Pad" "Copy " --pool "$POOL") || fail "duplicate"
expect_lines "duplicate" "$out" "duplicated: Al's Pad -> Copy"
[ "$(sqlite3 "$POOL" "SELECT COUNT(*) FROM FaderRec f, PresetRec p WHERE f.PresetREF = p.ID AND p.Name = 'Copy'")" == 18 ] \
    || fail "copy without its faders"
[ "$(sqlite3 "$POOL" "SELECT COUNT(*) FROM SceneRec s, PresetRec p WHERE s.PresetREF = p.ID AND p.Name = 'Copy'")" == 1 ] \
    || fail "copy without its scene"
"$cli" pool duplicate Copy "Much Too Long Name" --pool "$POOL" 2>"$dir/err" && fail "long name accepted"
grep -q "Cannot Duplicate Preset: A Preset's Name can only be a maximum of 16 characters long" "$dir/err" || fail "length message"

# Export writes the preset's dump through the editor.
"$cli" pool export Copy -o "$dir/copy.syx" --pool "$POOL" >/dev/null || fail "export"
[ "$(head -c 5 "$dir/copy.syx" | od -An -tx1 | tr -d ' \n')" == "f000001b0b" ] || fail "export header"
[ "$(tail -c 1 "$dir/copy.syx" | od -An -tx1 | tr -d ' \n')" == "f7" ] || fail "export end"
"$cli" pool export Copy --pool "$POOL" >/dev/null 2>&1 && fail "export without -o"
"$cli" pool export Nobody -o "$dir/x.syx" --pool "$POOL" 2>/dev/null && fail "export of a missing preset"
[ -e "$dir/x.syx" ] && fail "a file for a missing preset"

# Delete asks first: without --yes nothing changes.
"$cli" pool delete "Al's Pad" --pool "$POOL" 2>"$dir/err" && fail "delete without an answer"
grep -q "question not answered: About to Delete Preset" "$dir/err" || fail "unanswered message: $(cat "$dir/err")"
[ "$(sqlite3 "$POOL" "SELECT COUNT(*) FROM PresetRec")" == 4 ] || fail "unanswered delete changed the pool"
"$cli" pool delete "Al's Pad" --yes --pool "$POOL" >/dev/null || fail "delete"
[ "$(sqlite3 "$POOL" "SELECT Function || ':' || ScenePreset FROM ButtonRec b, PresetRec p WHERE b.PresetREF = p.ID AND p.Name = 'Bass Rig'")" == "0:-1" ] \
    || fail "the sending button was not turned off"

# Command lines that are refused change nothing; "--" lets a name begin with "--".
before=$(sqlite3 "$POOL" "SELECT group_concat(Name, '|') FROM PresetRec")
expect_statuses <<CASES
64|pool list --bogus --pool "$POOL"
64|pool show --Initialized-- --pool "$POOL"
0|pool show --pool "$POOL" -- --Initialized--
64|pool delete Copy --yes=no --pool "$POOL"
2|pool rename Copy "" --pool "$POOL"
2|pool duplicate Copy "  " --pool "$POOL"
2|pool list --pool "$dir/Tavlo-typo.mdb"
2|pool duplicate Copy Other --pool "$dir/Tavlo-typo.mdb"
2|pool size Nobody --pool "$POOL"
CASES
[ "$(sqlite3 "$POOL" "SELECT group_concat(Name, '|') FROM PresetRec")" == "$before" ] || fail "a refusal changed the pool"
[ ! -e "$dir/Tavlo-typo.mdb" ] || fail "a mistyped --pool made a pool"
[[ $("$cli" pool list --help --pool "$dir/Tavlo-typo.mdb") == "usage: tavlo-cli pool list "* ]] || fail "pool list --help"
"$cli" pool check --pool "$POOL" >/dev/null || fail "pool not sound afterwards"
echo "ok"
